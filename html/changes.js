/*
 * What a refresh has changed: a figure with another text is marked for some seconds
 * and says in its tooltip when it changed and by how much; a row that came is
 * marked, too, and the page tells how many rows went. The tooltip of a size says how
 * many pages it is exactly.
 *
 * Marks are attributes that the program knows nothing of; the style sheet draws them
 * and nothing moves. With reduced motion there are tooltips only.
 */
(() => {
  "use strict";

  /** Milliseconds that a mark is seen. */
  const Seen = 6000;

  const Mark = "data-zel-mark";
  const Changed = "data-zel-changed";
  /** Written by the program: a size in pages. */
  const Exact = "data-zel-exact";

  const bStill = matchMedia("(prefers-reduced-motion: reduce)").matches;

  /** Marked elements and the timers that end it. */
  const oTimers = new Map();

  const MarkAs = (oElement, sMark) => {
    if (bStill) return;
    clearTimeout(oTimers.get(oElement));
    oElement.setAttribute(Mark, sMark);
    const End = () => {
      oTimers.delete(oElement);
      oElement.removeAttribute(Mark);
    };
    oTimers.set(oElement, setTimeout(End, Seen));
  };

  const Setting = (sId, sDefault) => document.getElementById(sId)?.textContent || sDefault;

  /** A number and what follows it; null for any other text. */
  const Figure = (sText) => {
    const oMatch = /^\s*([-+]?\d[^a-z%]*)(.*)$/is.exec(sText);
    if (oMatch === null) return null;
    const sDecimal = Setting("LocaleDecimalSymbole", ".");
    const sPlain = oMatch[1].trim().replace(new RegExp(`[^-\\d${sDecimal === "." ? "." : `\\${sDecimal}`}]`, "g"), "").replace(sDecimal, ".");
    const dNumber = Number(sPlain);
    return Number.isNaN(dNumber) ? null : { dNumber, sUnit: oMatch[2].trim() };
  };

  /** "+12 KB", or the text before. */
  const Difference = (sOld, sNew) => {
    const [oOld, oNew] = [Figure(sOld), Figure(sNew)];
    if (oOld === null || oNew === null || oOld.sUnit !== oNew.sUnit) return `before: ${sOld.trim() || "nothing"}`;
    const dMore = oNew.dNumber - oOld.dNumber;
    const sMore = Math.abs(dMore).toLocaleString(undefined, { maximumFractionDigits: 2 });
    return `${dMore < 0 ? "\u2212" : "+"}${sMore} ${oNew.sUnit}`.trim();
  };

  const Time = () => new Date().toLocaleTimeString(undefined, { hour12: false });

  const oNote = Object.assign(document.createElement("div"), { className: "zelChanges" });
  oNote.setAttribute("role", "status");
  let iNote = 0;
  let iWent = 0;

  /** The tooltip: what a size is exactly, and what has changed last. */
  const Tell = (oElement, sChange) => {
    if (oElement.title && !oElement.hasAttribute(Changed)) return;  // the page has one of its own
    oElement.setAttribute(Changed, sChange);
    oElement.title = [oElement.dataset.zelExact, sChange].filter(Boolean).join("\n");
  };

  document.addEventListener("zelchanged", ({ target, detail }) => {
    const sNew = target.textContent;
    if (detail.trim() === "" && sNew.trim() === "") return;
    Tell(target, `${Time()}: ${Difference(detail, sNew)}`);
    MarkAs(target, "changed");
  });
  document.addEventListener("pointerover", ({ target }) => {
    const oElement = target.closest?.(`[${Exact}]`);
    if (oElement) Tell(oElement, oElement.getAttribute(Changed) ?? "");
  });
  document.addEventListener("zelcame", ({ target }) => MarkAs(target, "came"));
  document.addEventListener("zelwent", ({ detail }) => {
    iWent += Number(detail);
    queueMicrotask(() => {
      if (iWent === 0) return;
      document.body.append(oNote);
      oNote.textContent = `${iWent} ${iWent === 1 ? "row is" : "rows are"} gone since the last refresh`;
      iWent = 0;
      clearTimeout(iNote);
      iNote = setTimeout(() => oNote.remove(), Seen);
    });
  });

  document.currentScript.dataset.beginsAgain = "";
  document.addEventListener("zelwbr3reset", () => {
    for (const iTimer of oTimers.values()) clearTimeout(iTimer);
    oTimers.clear();
    clearTimeout(iNote);
    oNote.remove();
  });
})();
