/*
 * What is taken out of the lists of a page: copied, written as CSV, JSON or Markdown,
 * and printed. A list is taken as it is seen, with its filter and in its order, and
 * with all of its rows, also those that are not on the screen.
 *
 * The program around the page saves files and fills the clipboard: it is told by the
 * event "zelexport" and asks the user for a file. Without a program, as in a page that
 * was sent by mail, the browser does both.
 */
(() => {
  "use strict";

  /** Characters of one piece of a long text. */
  const PieceSize = 1 << 20;
  /** The longest time in milliseconds that the page is kept from the user. */
  const SliceTime = 40;

  const OneLine = (sText) => sText.replace(/\s*[\r\n\t]+\s*/g, " ").trim();

  // ---- forms ------------------------------------------------------------------

  const Quoted = (sText) => (/[",\r\n]/.test(sText) ? `"${sText.replaceAll('"', '""')}"` : sText);
  const Piped = (sText) => OneLine(sText).replace(/[\\|`*_<>[\]#]/g, "\\$&");

  /** Each form's lines: those before the rows, one for a row, those after them. */
  const Forms = {
    copy: {
      Begin: (sColumns) => `${sColumns.map(OneLine).join("\t")}\n`,
      Row: (sTexts) => `${sTexts.map(OneLine).join("\t")}\n`,
    },
    csv: {
      sType: "text/csv",
      Begin: (sColumns) => `${sColumns.map(Quoted).join(",")}\r\n`,
      Row: (sTexts) => `${sTexts.map(Quoted).join(",")}\r\n`,
    },
    json: {
      sType: "application/json",
      Begin: () => "[",
      Row: (sTexts, sColumns, iRow) =>
        `${iRow === 0 ? "\n" : ",\n"}  {${sColumns.map((s, i) => `${JSON.stringify(s)}: ${JSON.stringify(sTexts[i] ?? "")}`).join(", ")}}`,
      End: () => "\n]\n",
    },
    md: {
      sType: "text/markdown",
      Begin: (sColumns) => `| ${sColumns.map(Piped).join(" | ")} |\n|${" --- |".repeat(sColumns.length)}\n`,
      Row: (sTexts) => `| ${sTexts.map(Piped).join(" | ")} |\n`,
    },
  };

  // ---- rows -------------------------------------------------------------------

  const IsShown = (oRow) => oRow.style.display !== "none" && !oRow.hasAttribute("data-zel-out") && oRow.closest("[hidden]") === null;
  const TextsOf = (oRow) => Array.from(oRow.cells, (oCell) => oCell.textContent);

  /** Every heading once: a JSON object cannot have two members of one name. */
  const Distinct = (sTexts) => {
    const oSeen = new Map();
    return sTexts.map((sText, i) => {
      const sName = sText.trim() || `Column ${i + 1}`;
      const iCount = (oSeen.get(sName) ?? 0) + 1;
      oSeen.set(sName, iCount);
      return iCount === 1 ? sName : `${sName} ${iCount}`;
    });
  };

  const HeadingsOf = (oRow) => Array.from(oRow.cells).flatMap((oCell) => Array(oCell.colSpan).fill(oCell.textContent));

  /** Columns and rows of a table that is all there. */
  const WholeTable = (oTable) => {
    const oHead = oTable.tHead?.rows[oTable.tHead.rows.length - 1];
    const oRows = Array.from(oTable.tBodies).flatMap((oBody) => [...oBody.rows]).filter(IsShown);
    if (oHead === undefined) {
      // Pairs of label and figure, several in a row.
      const sPairs = oRows.flatMap((oRow) => {
        const sTexts = TextsOf(oRow);
        return sTexts.flatMap((s, i) => (i % 2 === 0 && s.trim() !== "" ? [[s.trim(), sTexts[i + 1] ?? ""]] : []));
      });
      return { sColumns: ["Name", "Value"], iCount: sPairs.length, Texts: (i) => sPairs[i] };
    }
    const sHeadings = HeadingsOf(oHead);
    const sRows = oRows.map(TextsOf);
    // A column without a heading has no texts, but something to click on.
    const iKept = sHeadings.flatMap((s, i) => (s.trim() === "" && !sRows.some((sTexts) => sTexts[i]?.trim()) ? [] : [i]));
    const sColumns = Distinct(iKept.map((i) => sHeadings[i]));
    return { sColumns, iCount: sRows.length, Texts: (i) => iKept.map((iColumn) => sRows[i][iColumn] ?? "") };
  };

  const ContentOf = (oTable) => {
    const oList = oTable.zelList;
    if (oList === undefined) return WholeTable(oTable);
    return { ...oList.Shown(), sColumns: Distinct(oList.Headings()) };
  };

  /** The text of a table in pieces; null when the table is gone meanwhile. */
  const PiecesOf = async (oTable, oForm) => {
    const { sColumns, iCount, Texts } = ContentOf(oTable);
    const sPieces = [];
    let sPiece = oForm.Begin(sColumns);
    let dUntil = performance.now() + SliceTime;
    for (let i = 0; i < iCount; ++i) {
      // The program fills cells without a value with a blank.
      sPiece += oForm.Row(Texts(i).map((sText) => (sText === " " ? "" : sText)), sColumns, i);
      if (sPiece.length >= PieceSize) {
        sPieces.push(sPiece);
        sPiece = "";
      }
      if (i % 64 !== 63 || performance.now() < dUntil) continue;
      await new Promise((oDone) => setTimeout(oDone));
      if (!oTable.isConnected) return null;
      dUntil = performance.now() + SliceTime;
    }
    sPieces.push(sPiece + (oForm.End?.() ?? ""));
    return sPieces;
  };

  // ---- where it goes ------------------------------------------------------------

  const NameOf = (oTable) => {
    const sPage = document.getElementById("txtFormTitle")?.textContent ?? document.title;
    const sTable = oTable.caption?.textContent.trim() ?? oTable.getAttribute("aria-label") ?? "";
    const sName = document.querySelectorAll("table.zelTblList").length > 1 ? `${sPage} ${sTable}` : sPage;
    return OneLine(sName).replace(/[^\p{L}\p{N}._-]+/gu, "-").slice(0, 80);
  };

  const Separator = "\x7f";

  /** True if the program around the page takes it. */
  const Tell = (...sTexts) => !document.dispatchEvent(new CustomEvent("zelexport", { cancelable: true, detail: sTexts.join(Separator) }));

  /** A text in pieces, for the clipboard if it has no name. */
  const GiveToProgram = (sName, sPieces) => {
    if (!Tell("begin", sName)) return false;
    for (const sPiece of sPieces) Tell("part", sPiece);
    Tell(sName === "" ? "copy" : "save");
    return true;
  };

  const Download = (sName, sType, sPieces) => {
    const oLink = document.createElement("a");
    oLink.href = URL.createObjectURL(new Blob(sPieces, { type: `${sType};charset=utf-8` }));
    oLink.download = sName;
    oLink.click();
    setTimeout(() => URL.revokeObjectURL(oLink.href), 60000);
  };

  /** The browser's clipboard object is only there where the connection is protected. */
  const Copy = (sText) => {
    const OnCopy = (oEvent) => {
      oEvent.clipboardData.setData("text/plain", sText);
      oEvent.preventDefault();
    };
    document.addEventListener("copy", OnCopy, { once: true });
    if (document.execCommand("copy")) return;
    document.removeEventListener("copy", OnCopy);
    navigator.clipboard?.writeText(sText);
  };

  const Export = async (oTable, sForm) => {
    if (sForm === "print") {
      if (!Tell("print")) window.print();
      return;
    }
    const oForm = Forms[sForm];
    const sName = sForm === "copy" ? "" : `${NameOf(oTable)}.${sForm}`;
    const sPieces = await PiecesOf(oTable, oForm);
    if (sPieces === null || GiveToProgram(sName, sPieces)) return;
    if (sForm === "copy") Copy(sPieces.join(""));
    else Download(sName, oForm.sType, sPieces);
  };

  /** For other scripts of the page: a file out of pieces, or a picture as the text of a data URL. */
  document.zelSave = (sName, sType, sPieces) => {
    if (!GiveToProgram(sName, sPieces)) Download(sName, sType, sPieces);
  };
  document.zelSavePicture = (sName, sURL) => {
    if (!Tell("begin", sName)) return void Object.assign(document.createElement("a"), { href: sURL, download: sName }).click();
    Tell("base64", sURL.slice(sURL.indexOf(",") + 1));
    Tell("save");
  };

  // ---- the menu -------------------------------------------------------------------

  const Items = [
    ["copy", "Copy"],
    ["csv", "CSV\u2026"],
    ["json", "JSON\u2026"],
    ["md", "Markdown\u2026"],
    ["print", "Print or PDF\u2026"],
  ];

  const MakeButton = (sText, sClass, OnClick) => {
    const oButton = Object.assign(document.createElement("button"), { type: "button", className: sClass, textContent: sText });
    oButton.addEventListener("click", OnClick);
    return oButton;
  };

  let oMenu = null;

  const CloseMenu = () => {
    const oOpener = oMenu?.oOpener;
    oMenu?.remove();
    oMenu = null;
    oOpener?.setAttribute("aria-expanded", "false");
    return oOpener;
  };

  const OpenMenu = (oOpener, oTable) => {
    const bOpen = oMenu?.oOpener === oOpener;
    CloseMenu();
    if (bOpen) return;
    oMenu = Object.assign(document.createElement("div"), { className: "zelMenu", oOpener });
    oMenu.setAttribute("role", "menu");
    oMenu.setAttribute("aria-label", "Export");
    for (const [sForm, sText] of Items) {
      const oItem = MakeButton(sText, "zelMenuItem", () => {
        CloseMenu()?.focus();
        Export(oTable, sForm);
      });
      oItem.setAttribute("role", "menuitem");
      oMenu.append(oItem);
    }
    (oOpener.closest("main") ?? document.body).append(oMenu);
    oOpener.setAttribute("aria-expanded", "true");
    // Within the window, whichever side there is room at.
    const { left, bottom, right } = oOpener.getBoundingClientRect();
    const dLeft = left + oMenu.offsetWidth > innerWidth ? right - oMenu.offsetWidth : left;
    Object.assign(oMenu.style, { left: `${Math.max(dLeft, 0)}px`, top: `${bottom + 2}px` });
    oMenu.firstElementChild.focus();
  };

  const OnMenuKey = (oEvent) => {
    if (oMenu === null || !oMenu.contains(oEvent.target)) return;
    const oItems = [...oMenu.children];
    const iStep = { ArrowDown: 1, ArrowUp: -1 }[oEvent.key];
    if (iStep !== undefined) oItems.at((oItems.indexOf(oEvent.target) + iStep) % oItems.length).focus();
    else if (oEvent.key === "Escape") CloseMenu()?.focus();
    else if (oEvent.key === "Tab") CloseMenu()?.focus();
    else return;
    oEvent.preventDefault();
    oEvent.stopPropagation();
  };

  // ---- the page -------------------------------------------------------------------

  /** Where the button of a table is: in its bar, in its caption, or above it. */
  const PlaceFor = (oTable) => {
    const oBefore = oTable.previousElementSibling;
    if (oBefore?.classList.contains("zelListBar")) return oBefore;
    if (oTable.caption !== null) return oTable.caption;
    const oBar = Object.assign(document.createElement("div"), { className: "zelListBar" });
    oTable.before(oBar);
    return oBar;
  };

  const Begin = () => {
    CloseMenu();
    for (const oTable of document.querySelectorAll("table.zelTblList")) {
      const oPlace = PlaceFor(oTable);
      if (oPlace.querySelector(".zelExport") !== null) continue;
      const oButton = MakeButton("", "zelExport", () => OpenMenu(oButton, oTable));
      oButton.setAttribute("aria-label", "Export this list");
      oButton.setAttribute("aria-haspopup", "menu");
      oButton.setAttribute("aria-expanded", "false");
      oPlace.insertBefore(oButton, oPlace.querySelector(".zelListCount"));
    }
  };

  window.addEventListener("load", Begin);
  document.currentScript.dataset.beginsAgain = "";
  document.addEventListener("zelwbr3reset", Begin);
  document.addEventListener("keydown", OnMenuKey, true);
  document.addEventListener("pointerdown", (oEvent) => {
    if (oMenu !== null && !oMenu.contains(oEvent.target) && oEvent.target !== oMenu.oOpener) CloseMenu();
  }, true);
  window.addEventListener("scroll", CloseMenu, { passive: true });
})();
