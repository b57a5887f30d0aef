/*
 * What a figure means, beside its label: when the pointer rests there, and by F1 or the
 * button "?" in the header, from where the arrow keys go from figure to figure. The texts
 * are those of the help file; the build makes figures.js of them, which is loaded when
 * somebody wants to see one. Without it, as in a page that was sent by mail, there are
 * no explanations.
 *
 * All of this is the script's own: the program does not know of it.
 */
(() => {
  "use strict";

  /** Milliseconds that the pointer rests before an explanation comes, and until it goes. */
  const Rest = 450;
  const Leave = 250;

  const Labels = "th, .zelTblCellLabel";
  const Parts = ["", "Unit", "Counts for", "Normal", "What to do"];

  const sPage = decodeURIComponent(location.pathname.split("/").pop()).replace(/\.htm$/, "");

  let oLoading = null;
  const Load = () =>
    (oLoading ??= new Promise((oDone) => {
      if (globalThis.zelFigures !== undefined) return void oDone();
      const oScript = Object.assign(document.createElement("script"), { src: "figures.js", onload: oDone, onerror: oDone });
      document.head.append(oScript);
    }));

  const TextsOf = (oLabel) => globalThis.zelFigures?.[sPage]?.[oLabel.textContent.trim()];
  const AllLabels = () =>
    [...document.querySelectorAll(Labels)].filter((o) => o.getClientRects().length > 0 && TextsOf(o) !== undefined);

  /** The label of the figure that an element shows: beside it, or above it. */
  const LabelOf = (oElement) => {
    const oCell = oElement?.closest?.("th, td");
    if (!oCell) return null;
    for (let o = oCell; o !== null; o = o.previousElementSibling) {
      if (o.matches(Labels) && TextsOf(o) !== undefined) return o;
    }
    const oHead = oCell.closest("table").querySelector("tr");
    const oAbove = oHead?.cells[oCell.cellIndex];
    return oAbove !== undefined && TextsOf(oAbove) !== undefined ? oAbove : null;
  };

  // ---- the explanation ---------------------------------------------------------

  /** What is shown, and the label that it belongs to. */
  let oHint = null;
  let oShownFor = null;
  /** What has the focus inside the label while the keyboard is used. */
  let oMark = null;
  let iTimer = 0;

  const Hide = () => {
    clearTimeout(iTimer);
    oHint?.remove();
    oHint = oShownFor = null;
    const oGone = oMark;
    oMark = null;
    oGone?.remove();
  };

  const Place = () => {
    const { left, top, bottom } = oShownFor.getBoundingClientRect();
    const dBelow = bottom + 4;
    const bAbove = dBelow + oHint.offsetHeight > innerHeight && top - 4 > oHint.offsetHeight;
    oHint.style.left = `${Math.max(8, Math.min(left, document.documentElement.clientWidth - oHint.offsetWidth - 8))}px`;
    oHint.style.top = `${bAbove ? top - 4 - oHint.offsetHeight : dBelow}px`;
  };

  const Show = (oLabel) => {
    const sTexts = TextsOf(oLabel);
    if (sTexts === undefined || oLabel === oShownFor) return;
    Hide();
    oShownFor = oLabel;
    oHint = Object.assign(document.createElement("div"), { id: "zelHint", className: "zelHint" });
    oHint.setAttribute("role", "tooltip");
    const sName = oLabel.textContent.trim();
    oHint.append(Object.assign(document.createElement("strong"), { textContent: sName }));
    sTexts.forEach((sText, i) => {
      if (sText === "") return;
      const oPart = document.createElement("p");
      if (Parts[i] !== "") oPart.append(Object.assign(document.createElement("b"), { textContent: `${Parts[i]}: ` }));
      oPart.append(sText);
      oHint.append(oPart);
    });
    (oLabel.closest("main") ?? document.body).append(oHint);
    Place();
  };

  /** Goes to a label with the keyboard. */
  const Focus = (oLabel) => {
    oLabel.scrollIntoView({ block: "nearest" });
    Show(oLabel);
    oMark = Object.assign(document.createElement("button"), { type: "button", className: "zelHintMark" });
    oMark.setAttribute("aria-label", `What ${oLabel.textContent.trim()} means`);
    oMark.setAttribute("aria-describedby", "zelHint");
    oLabel.append(oMark);
    oMark.focus({ preventScroll: true });
    oMark.addEventListener("blur", Hide);
  };

  const Steps = { ArrowDown: 1, ArrowRight: 1, ArrowUp: -1, ArrowLeft: -1, Home: -Infinity, End: Infinity };

  const OnMarkKey = (oEvent) => {
    const oAll = AllLabels();
    const iAt = oAll.indexOf(oShownFor);
    if (oEvent.key in Steps) {
      Focus(oAll[Math.max(0, Math.min(oAll.length - 1, iAt + Steps[oEvent.key]))]);
    } else if (["Escape", "F1", "Enter", " "].includes(oEvent.key)) {
      Hide();
    } else {
      return;
    }
    oEvent.preventDefault();
    oEvent.stopPropagation();
  };

  // ---- the page ------------------------------------------------------------------

  /** What the pointer is on. */
  let oPointed = null;

  const Explain = async () => {
    await Load();
    const oLabel = LabelOf(document.activeElement) ?? LabelOf(oPointed) ?? AllLabels()[0];
    if (oLabel !== undefined) Focus(oLabel);
  };

  document.addEventListener("keydown", (oEvent) => {
    if (oMark !== null && oEvent.target === oMark) return OnMarkKey(oEvent);
    if (oEvent.key !== "F1" || oEvent.ctrlKey || oEvent.altKey || oEvent.shiftKey) return;
    oEvent.preventDefault();
    Explain();
  }, true);

  document.addEventListener("pointerover", ({ target }) => {
    oPointed = target;
    if (oMark !== null) return;
    clearTimeout(iTimer);
    if (oHint?.contains(target)) return;
    const oLabel = target.closest?.(Labels) ?? null;
    if (oLabel === null || oLabel !== oShownFor) {
      iTimer = setTimeout(async () => {
        if (oLabel === null) return Hide();
        await Load();
        if (oPointed?.closest?.(Labels) !== oLabel || oMark !== null) return;
        if (TextsOf(oLabel) === undefined) Hide();
        else Show(oLabel);
      }, oLabel === null ? Leave : Rest);
    }
  });
  document.addEventListener("pointerdown", ({ target }) => oHint?.contains(target) || Hide(), true);
  window.addEventListener("scroll", () => (oMark === null ? Hide() : Place()), { passive: true });

  const Begin = () => {
    Hide();
    const oHeader = document.querySelector(".zelFormHdr");
    if (oHeader === null || oHeader.querySelector(".zelHelp") !== null) return;
    const oButton = Object.assign(document.createElement("button"), { type: "button", className: "zelHelp", title: "What the figures mean (F1)" });
    oButton.setAttribute("aria-label", "What the figures mean");
    oButton.addEventListener("click", Explain);
    oHeader.append(oButton);
  };

  document.currentScript.dataset.beginsAgain = "";
  window.addEventListener("load", Begin);
  document.addEventListener("zelwbr3reset", Begin);
  document.addEventListener("zelrefreshed", () => oShownFor !== null && (oShownFor.isConnected ? Place() : Hide()));
})();
