/*
 * The lists in page files: sorted by a click on a column heading, filtered by a
 * text, and copied in a form that spreadsheets take.
 *
 * A list is a table of class "zelTblSort". The first row of its body holds the
 * headings, the second is a hidden template row. The program may append rows to
 * that body at any time.
 *
 * The program keeps its own copy of the document and never reads it back from
 * the browser, so nothing that happens here affects what it reads. The script
 * only moves rows: without sorting and filter, the document is exactly what the
 * program made it. What the script adds (the bar above the list, a button in
 * each heading, two hidden bodies) is added after the load, when the program has
 * already taken its copy.
 *
 * Laying out a row costs the browser ten times as much as creating it, in time
 * and in memory. The rows of a long list therefore wait in a hidden body and are
 * shown in steps, so that the page stays usable; the rows of a very long list
 * are shown when the user scrolls to them.
 */
(() => {
  "use strict";

  // ---- numbers --------------------------------------------------------------

  const Scale = { bytes: 1, kb: 2 ** 10, mb: 2 ** 20, gb: 2 ** 30, pages: 1, "%": 1 };
  const Unit = `(?:\\s*(${Object.keys(Scale).join("|")}))?$`;
  const Escape = (sText) => sText.replace(/[.*+?^${}()|[\]\\]/g, "\\$&");

  /** Reads numbers in the user's format, with or without groups and a unit, and in the format of programs. */
  class NumberReader {
    constructor(sDecimal, sGroup) {
      const sGroups = sGroup === "" ? "" : `\\d{1,3}(?:${Escape(sGroup)}\\d{2,3})*${Escape(sGroup)}\\d{3}|`;
      const sFraction = sDecimal === "" ? "()" : `(?:${Escape(sDecimal)}(\\d*))?`;
      this.oUsers = new RegExp(`^([-+]?)(${sGroups}\\d+)${sFraction}${Unit}`, "i");
      this.oPrograms = new RegExp(`^([-+]?)(\\d+)(?:\\.(\\d+))?(e[-+]?\\d{1,3})?${Unit}`, "i");
    }

    /** A reader with the settings that the program has written into the page. */
    static OfDocument() {
      const Setting = (sId, sDefault) => document.getElementById(sId)?.textContent || sDefault;
      return new NumberReader(Setting("LocaleDecimalSymbole", "."), Setting("LocaleThousendGroupingSymbole", ""));
    }

    /** The number in a text; NaN if there is none. */
    Read(sText) {
      if (sText.length > 64) return NaN;
      let oMatch = this.oUsers.exec(sText);
      let sExponent = "";
      let sUnit = oMatch?.[4];
      if (oMatch === null) {
        oMatch = this.oPrograms.exec(sText);
        if (oMatch === null) return NaN;
        sExponent = oMatch[4] ?? "";
        sUnit = oMatch[5];
      }
      const dNumber = Number(`${oMatch[1]}${oMatch[2].replace(/\D/g, "")}.${oMatch[3] || "0"}${sExponent}`);
      return dNumber * Scale[(sUnit ?? "bytes").toLowerCase()];
    }
  }

  // The user's language, but never a variant that sorts all capital letters before all small ones.
  const sLanguage = new Intl.Locale(new Intl.Collator().resolvedOptions().locale).baseName;
  const Texts = new Intl.Collator(sLanguage, { numeric: true, sensitivity: "base" });

  /** Numbers sort before texts, and empty cells last, in both directions. */
  const Rank = (oKey) => (oKey.sText === "" ? 2 : Number.isNaN(oKey.dNumber) ? 1 : 0);

  const Compare = (oKey, oOther, iDirection) => {
    const iRank = Rank(oKey);
    if (iRank !== Rank(oOther)) return iRank - Rank(oOther);
    if (iRank === 2) return 0;
    return iDirection * (iRank === 0 ? oKey.dNumber - oOther.dNumber : Texts.compare(oKey.sText, oOther.sText));
  };

  // ---- lists ----------------------------------------------------------------

  const Make = (sTag, sClass, oProperties = {}) => Object.assign(document.createElement(sTag), { className: sClass }, oProperties);

  const IsHidden = (oRow) => oRow.style.display === "none";

  const SelectedRange = () => (getSelection().rangeCount > 0 ? getSelection().getRangeAt(0).cloneRange() : null);

  const SameRange = (oRange, oOther) =>
    oOther !== null &&
    oRange.compareBoundaryPoints(Range.START_TO_START, oOther) === 0 &&
    oRange.compareBoundaryPoints(Range.END_TO_END, oOther) === 0;

  const Directions = ["none", "ascending", "descending"];

  /** Rows laid out at once, and the minimum of each further step. */
  const RowsAtOnce = 1000;
  /** The maximum of each further step. */
  const RowsAtMost = 5000;
  /** The longest pause between two steps, in milliseconds. */
  const LongestRest = 2000;
  /** Rows laid out without scrolling there. */
  const RowsUnasked = 5000;

  class List {
    constructor(oTable) {
      this.oTable = oTable;
      this.oBody = oTable.tBodies[0];
      this.oHeadings = this.oBody.rows[0];
      /** The rows still to be shown, and those that do not match the filter. */
      this.oLater = Make("tbody", "zelListLater", { hidden: true });
      this.oOut = Make("tbody", "zelListOut", { hidden: true });
      /** All rows except headings and template, in the order in which they were added. */
      this.oRows = [];
      this.iColumn = -1;
      this.iDirection = 0;
      this.sFilter = "";
      /** How many rows may be shown, and how many are shown. */
      this.iAllowed = RowsAtOnce;
      this.iShown = 0;
      this.iShowTimer = 0;
      this.iKnown = 0;
      /** What was selected before the mouse was pressed on a heading. */
      this.oSelectedBefore = null;
      /** The user has scrolled close to the end of the rows shown. */
      this.bNearEnd = false;
      /** The earliest time for arranging the rows again, and the timer for it. */
      this.dNext = 0;
      this.iTimer = 0;

      this.MakeBar();
      oTable.append(this.oLater, this.oOut);
      this.WatchEnd();
      this.Add([...this.oBody.rows]);
      this.Decorate();
      this.Tell();
      this.oHeadings.addEventListener("click", (oEvent) => this.OnHeading(oEvent));
      this.oHeadings.addEventListener("mousedown", (oEvent) => {
        // Two clicks in a row sort twice; they do not select the heading's text.
        if (oEvent.detail > 1) oEvent.preventDefault();
        this.oSelectedBefore = SelectedRange();
      });

      this.oObserver = new MutationObserver((oRecords) => this.OnRows(oRecords));
      this.oObserver.observe(this.oBody, { childList: true });
      new MutationObserver(() => this.Decorate()).observe(this.oHeadings, { childList: true, subtree: true });
    }

    // ---- the bar and the headings

    MakeBar() {
      this.oFilter = Make("input", "zelListFilter", { type: "search", placeholder: "Filter rows", spellcheck: false, autocomplete: "off" });
      this.oFilter.setAttribute("aria-label", "Filter rows");
      this.oFilter.addEventListener("input", () => {
        this.sFilter = this.oFilter.value.trim().toLowerCase();
        this.iAllowed = RowsAtOnce;
        this.Schedule(100);
      });
      this.oCount = Make("span", "zelListCount");
      this.oCount.setAttribute("role", "status");
      this.oBar = Make("div", "zelListBar");
      this.oBar.append(this.oFilter);
      if (this.oTable.classList.contains("zelTblGrid")) this.oBar.append(this.MakeWrapButton());
      this.oBar.append(this.oCount);
      this.oTable.before(this.oBar);
    }

    /** Shows more rows once the page is scrolled to less than two of its heights above the list's end. */
    WatchEnd() {
      const oEnd = Make("div", "zelListEnd");
      this.oTable.after(oEnd);
      const OnScroll = (oEntries) => {
        this.bNearEnd = oEntries.at(-1).isIntersecting;
        if (this.bNearEnd) this.Tell();
      };
      new IntersectionObserver(OnScroll, { rootMargin: "0px 0px 200% 0px" }).observe(oEnd);
    }

    // Long texts are cut to one line unless the user wants them wrapped.
    MakeWrapButton() {
      const oButton = Make("button", "zelBtn zelListWrap", { type: "button", textContent: "Wrap long texts" });
      oButton.setAttribute("aria-pressed", "false");
      oButton.addEventListener("click", () => {
        oButton.setAttribute("aria-pressed", String(this.oBar.classList.toggle("zelWrap")));
      });
      return oButton;
    }

    /** Gives every heading a button for sorting by keyboard; it is lost when the program writes the heading. */
    Decorate() {
      for (const oHeading of this.oHeadings.cells) {
        if (oHeading.lastElementChild?.className === "zelListSort") continue;
        const oButton = Make("button", "zelListSort", { type: "button" });
        // Isolated, because a column's name may hold bidirectional controls.
        oButton.setAttribute("aria-label", `Sort by \u2068${oHeading.textContent}\u2069`);
        oHeading.append(oButton);
      }
    }

    OnHeading(oEvent) {
      const oHeading = oEvent.target.closest("th");
      if (oHeading === null) return;
      // A mouse that has just selected text does not sort. A click by key has no detail.
      if (oEvent.detail > 0 && !getSelection().isCollapsed && !SameRange(SelectedRange(), this.oSelectedBefore)) return;
      this.iAllowed = RowsAtOnce;
      const iColumn = oHeading.cellIndex;
      this.iDirection = iColumn === this.iColumn ? (this.iDirection + 1) % Directions.length : 1;
      this.iColumn = iColumn;
      for (const oOther of this.oHeadings.cells) oOther.removeAttribute("aria-sort");
      if (this.iDirection !== 0) oHeading.setAttribute("aria-sort", Directions[this.iDirection]);
      this.Arrange();
    }

    // ---- the rows

    get bArranged() {
      return this.iDirection !== 0 || this.sFilter !== "";
    }

    OnRows(oRecords) {
      for (const oRecord of oRecords) this.Add(oRecord.addedNodes);
      if (this.bArranged) this.Schedule(100);
      else this.Tell();
    }

    /** Registers rows added at the end of the body, and moves those beyond the limit to the hidden body. */
    Add(oNodes) {
      for (const oNode of oNodes) {
        if (!(oNode instanceof HTMLTableRowElement) || oNode === this.oHeadings || IsHidden(oNode)) continue;
        this.oRows.push(oNode);
        if (this.iShown < this.iAllowed) ++this.iShown;
        else this.oLater.append(oNode);
      }
    }

    /** Shows the number of rows unless all are visible, and schedules the next step. */
    Tell() {
      const iAll = this.oRows.length;
      this.oCount.textContent = iAll === 0 ? "No rows" : this.iShown === iAll ? "" : `${this.iShown} of ${iAll}`;
      if (this.bWantsMore && this.iShowTimer === 0) this.iShowTimer = setTimeout(() => this.ShowMore(), this.bNearEnd ? 0 : 200);
    }

    get bWantsMore() {
      return this.oLater.firstElementChild !== null && (this.iShown < RowsUnasked || this.bNearEnd);
    }

    ShowMore() {
      const dBegin = performance.now();
      this.Show(Math.min(Math.max(RowsAtOnce, this.iShown >> 1), RowsAtMost));
      void this.oBody.offsetHeight;
      // Leave half of the time to the user, and most of it to the program while it adds rows.
      const iRest = this.oRows.length > this.iKnown ? 5 : 1;
      this.iKnown = this.oRows.length;
      this.iShowTimer = setTimeout(() => {
        this.iShowTimer = 0;
        if (this.bWantsMore) this.ShowMore();
      }, Math.min(iRest * (performance.now() - dBegin), LongestRest));
      this.Tell();
    }

    /** Shows this many of the waiting rows. */
    Show(iRows) {
      const oFragment = document.createDocumentFragment();
      for (let i = 0; i < iRows && this.oLater.firstElementChild !== null; ++i) {
        oFragment.append(this.oLater.firstElementChild);
        ++this.iShown;
      }
      this.oBody.append(oFragment);
      // Rows added later wait as well: a single one makes the browser lay out the whole list again.
      this.iAllowed = this.iShown;
      this.oObserver.takeRecords();
    }

    // While rows keep coming they are arranged repeatedly, but so rarely that it
    // only takes a small part of the time, however many there are.
    Schedule(dDelay) {
      clearTimeout(this.iTimer);
      this.iTimer = setTimeout(() => this.Arrange(), Math.max(dDelay, this.dNext - performance.now()));
    }

    /** Sorts and filters all rows. */
    Arrange() {
      clearTimeout(this.iTimer);
      const dBegin = performance.now();
      const oFocused = document.activeElement;

      const oIn = [];
      const oOut = [];
      for (const oRow of this.oRows) (this.Matches(oRow) ? oIn : oOut).push(oRow);
      const oOrdered = this.iDirection === 0 ? oIn : this.Sorted(oIn);
      this.Place(this.oBody, oOrdered.slice(0, this.iAllowed));
      this.Place(this.oLater, oOrdered.slice(this.iAllowed));
      this.Place(this.oOut, oOut);
      this.oObserver.takeRecords();
      this.iShown = Math.min(oOrdered.length, this.iAllowed);
      this.Tell();

      if (oFocused !== document.activeElement) oFocused?.focus({ preventScroll: true });
      const dEnd = performance.now();
      this.dNext = dEnd + 10 * (dEnd - dBegin);
    }

    Matches(oRow) {
      if (this.sFilter === "") return true;
      for (const oCell of oRow.cells) {
        if (oCell.textContent.toLowerCase().includes(this.sFilter)) return true;
      }
      return false;
    }

    Sorted(oRows) {
      const oReader = NumberReader.OfDocument();
      const oKeys = oRows.map((oRow) => {
        const oCell = oRow.cells[this.iColumn];
        const sText = (oCell?.dataset.sort ?? oCell?.textContent ?? "").trim();
        return { oRow, sText, dNumber: oReader.Read(sText) };
      });
      const iSign = Directions[this.iDirection] === "descending" ? -1 : 1;
      return oKeys.sort((oKey, oOther) => Compare(oKey, oOther, iSign)).map(({ oRow }) => oRow);
    }

    /** Makes rows the last ones of a body, in this order; does not touch those already in place. */
    Place(oBody, oRows) {
      let oAt = oBody.lastElementChild;
      for (let i = oRows.length - 1; ; --i) {
        if (i < 0) return;
        if (oAt !== oRows[i]) break;
        oAt = oAt.previousElementSibling;
      }
      const oFragment = document.createDocumentFragment();
      for (const oRow of oRows) oFragment.append(oRow);
      oBody.append(oFragment);
    }
  }

  // ---- copying --------------------------------------------------------------

  /** The part of a cell that is in a range, as one line. */
  const Selected = (oCell, oRange) => {
    const oPart = document.createRange();
    oPart.selectNodeContents(oCell);
    if (oRange.compareBoundaryPoints(Range.START_TO_START, oPart) > 0) oPart.setStart(oRange.startContainer, oRange.startOffset);
    if (oRange.compareBoundaryPoints(Range.END_TO_END, oPart) < 0) oPart.setEnd(oRange.endContainer, oRange.endOffset);
    return oPart.toString().replace(/[\t\r\n]+/g, " ");
  };

  const CaptionOf = (oTable, oRange) => {
    const oCaption = oTable.caption;
    return oCaption !== null && oRange.intersectsNode(oCaption) ? [oCaption.textContent.trim()] : [];
  };

  const RowsOf = (oTable, oRange) => {
    const oLines = [];
    for (const oRow of oTable.rows) {
      const bOut = IsHidden(oRow) || oRow.parentElement.className === "zelListOut";
      if (bOut || !oRange.intersectsNode(oRow)) continue;
      const oCells = [...oRow.cells].filter((oCell) => oRange.intersectsNode(oCell));
      if (oCells.length > 0) oLines.push(oCells.map((oCell) => Selected(oCell, oRange)).join("\t"));
    }
    return oLines;
  };

  document.addEventListener("copy", (oEvent) => {
    const oSelection = getSelection();
    if (oSelection.rangeCount === 0 || oSelection.isCollapsed || oEvent.target instanceof HTMLInputElement) return;
    const oRange = oSelection.getRangeAt(0);
    const oInside = oRange.commonAncestorContainer;
    const oAround = oInside instanceof Element ? oInside : oInside.parentElement;
    // A part of one cell, or a selection without a table, is copied as plain text.
    if (oAround.closest("td, th") !== null) return;
    const oOne = oAround.closest("table");
    const oTables = (oOne === null ? [...oAround.querySelectorAll("table")] : [oOne]).filter(
      (oTable) => oTable.getClientRects().length > 0 && oRange.intersectsNode(oTable)
    );
    const oParts = oTables.map((oTable) => [...CaptionOf(oTable, oRange), ...RowsOf(oTable, oRange)].join("\n"));
    const sText = oParts.filter((sPart) => sPart !== "").join("\n\n");
    if (sText === "") return;
    oEvent.clipboardData.setData("text/plain", sText + "\n");
    oEvent.preventDefault();
  });

  // ---- the page ---------------------------------------------------------------

  window.addEventListener("load", () => {
    const oLists = [...document.querySelectorAll("table.zelTblSort")].map((oTable) => new List(oTable));
    window.addEventListener("beforeprint", () => oLists.forEach((oList) => oList.Show(Infinity)));
    document.addEventListener("keydown", (oEvent) => {
      if (oLists.length === 0 || oEvent.key !== "f" || !oEvent.ctrlKey || oEvent.altKey || oEvent.shiftKey) return;
      oEvent.preventDefault();
      oLists[0].oFilter.focus();
      oLists[0].oFilter.select();
    });
  });
})();
