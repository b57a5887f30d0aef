/*
 * Short lists with headings of their own, such as parameters and volumes: filtered by
 * a text, reduced to the rows that have something, and sorted by a click on a heading.
 *
 * A list is a table of class "zelTblTools" with a head. Rows of class "zelRowChange"
 * belong to the row above them and go where it goes. "data-zel-only" names a button
 * that leaves only the rows which have the attribute "data-zel-state"; "data-zel-sort"
 * is the column that the list is sorted by at first, counted from 0, with a minus in
 * front for the largest first. Rows are moved and marked as left out; nothing else of
 * what the program has written changes. Long lists are the matter of lists.js, which
 * has to be loaded before.
 */
(() => {
  "use strict";

  const Left = "data-zel-out";
  const Directions = ["none", "ascending", "descending"];
  const Texts = new Intl.Collator(undefined, { numeric: true, sensitivity: "base" });

  const Make = (sTag, sClass, oProperties = {}) => Object.assign(document.createElement(sTag), { className: sClass }, oProperties);

  const IsTemplate = (oRow) => oRow.style.display === "none";

  class Table {
    /** The order in which the program has added the rows. */
    iAdded = new WeakMap();
    iNext = 0;
    iColumn = -1;
    iDirection = 0;
    bOnly = false;

    constructor(oTable) {
      this.oTable = oTable;
      this.oBody = oTable.tBodies[0];
      this.oHeadings = oTable.tHead.rows[0];
      this.MakeBar();
      for (const oHeading of this.oHeadings.cells) this.MakeSortButton(oHeading);
      const sSort = oTable.dataset.zelSort;
      if (sSort !== undefined) [this.iColumn, this.iDirection] = [Math.abs(Number(sSort)), sSort.startsWith("-") ? 2 : 1];
      this.oHeadings.addEventListener("click", (oEvent) => this.OnHeading(oEvent));
      this.oObserver = new MutationObserver(() => this.Arrange());
      this.Arrange();
    }

    End() {
      this.oObserver.disconnect();
    }

    MakeBar() {
      this.oFilter = Make("input", "zelListFilter", { type: "search", placeholder: "Filter rows", spellcheck: false, autocomplete: "off" });
      this.oFilter.setAttribute("aria-label", "Filter rows");
      this.oFilter.addEventListener("input", () => this.Arrange());
      this.oCount = Make("span", "zelListCount");
      this.oCount.setAttribute("role", "status");
      const oBar = (this.oBar = Make("div", "zelListBar"));
      oBar.append(this.oFilter);
      const sOnly = this.oTable.dataset.zelOnly;
      if (sOnly !== undefined) oBar.append(this.MakeOnlyButton(sOnly));
      oBar.append(this.oCount);
      this.oTable.before(oBar);
    }

    MakeOnlyButton(sText) {
      const oButton = Make("button", "zelBtn zelListOnly", { type: "button", textContent: sText });
      oButton.setAttribute("aria-pressed", "false");
      oButton.addEventListener("click", () => {
        this.bOnly = !this.bOnly;
        oButton.setAttribute("aria-pressed", String(this.bOnly));
        this.Arrange();
      });
      return oButton;
    }

    MakeSortButton(oHeading) {
      if (oHeading.textContent.trim() === "") return;
      const oButton = Make("button", "zelListSort", { type: "button" });
      oButton.setAttribute("aria-label", `Sort by ${oHeading.textContent}`);
      oHeading.append(oButton);
    }

    /** A heading may stand above several columns; it sorts by the first. */
    ColumnOf(oHeading) {
      return [...this.oHeadings.cells].slice(0, oHeading.cellIndex).reduce((i, o) => i + o.colSpan, 0);
    }

    OnHeading(oEvent) {
      const oHeading = oEvent.target.closest("th");
      if (oHeading === null || (oEvent.detail > 0 && !getSelection().isCollapsed)) return;
      const iColumn = this.ColumnOf(oHeading);
      this.iDirection = iColumn === this.iColumn ? (this.iDirection + 1) % Directions.length : 1;
      this.iColumn = iColumn;
      this.Arrange();
    }

    /** A small bar beside each percentage of the column that has them. */
    DrawBars(oGroups) {
      const oHeading = this.oHeadings.querySelector("[data-zel-bar]");
      if (oHeading === null) return;
      const oReader = globalThis.zelNumbers.OfDocument();
      const iColumn = this.ColumnOf(oHeading);
      for (const [oRow] of oGroups) {
        const oCell = oRow.cells[iColumn];
        const dPercent = oReader.Read(oCell?.textContent.trim() ?? "");
        oCell?.querySelector(".zelSmallBar")?.remove();
        if (Number.isNaN(dPercent)) continue;
        const oBar = Make("span", "zelSmallBar");
        oBar.setAttribute("aria-hidden", "true");
        oBar.style.setProperty("--zel-percent", `${Math.min(Math.max(dPercent, 0), 100)}%`);
        oCell.append(oBar);
      }
    }

    /** A row with those that belong to it. */
    Groups() {
      const oGroups = [];
      for (const oRow of this.oBody.rows) {
        if (IsTemplate(oRow) && !oRow.classList.contains("zelRowChange")) continue;
        if (oRow.classList.contains("zelRowChange") && oGroups.length > 0) oGroups.at(-1).push(oRow);
        else oGroups.push([oRow]);
        if (!this.iAdded.has(oRow)) this.iAdded.set(oRow, this.iNext++);
      }
      return oGroups;
    }

    /** Numbers, then texts, then nothing, in both directions. */
    Compare() {
      const oReader = globalThis.zelNumbers.OfDocument();
      const iSign = Directions[this.iDirection] === "descending" ? -1 : 1;
      const KeyOf = ([oRow]) => (oRow.cells[this.iColumn]?.dataset.sort ?? oRow.cells[this.iColumn]?.textContent ?? "").trim();
      const oKeys = new Map();
      const Key = (oGroup) => {
        let oKey = oKeys.get(oGroup);
        if (oKey === undefined) {
          const sText = KeyOf(oGroup);
          const dNumber = oReader.Read(sText);
          oKey = { sText, dNumber, iKind: sText === "" ? 2 : Number.isNaN(dNumber) ? 1 : 0 };
          oKeys.set(oGroup, oKey);
        }
        return oKey;
      };
      return (oGroup, oOther) => {
        const [oKey, oNext] = [Key(oGroup), Key(oOther)];
        if (oKey.iKind !== oNext.iKind) return oKey.iKind - oNext.iKind;
        return iSign * (oKey.iKind === 0 ? oKey.dNumber - oNext.dNumber : Texts.compare(oKey.sText, oNext.sText));
      };
    }

    Arrange() {
      this.oObserver?.disconnect();
      const oGroups = this.Groups();
      const oWanted = [...oGroups].sort((a, b) => this.iAdded.get(a[0]) - this.iAdded.get(b[0]));
      if (this.iDirection !== 0) oWanted.sort(this.Compare());
      if (oWanted.some((oGroup, i) => oGroup !== oGroups[i])) {
        const oFocused = document.activeElement;
        this.oBody.append(...oWanted.flat());
        if (document.activeElement !== oFocused) oFocused.focus({ preventScroll: true });
      }
      const sText = this.oFilter.value.trim().toLowerCase();
      let iShown = 0;
      for (const oGroup of oWanted) {
        const bFound = sText === "" || oGroup.some((oRow) => Array.from(oRow.cells).some((o) => o.textContent.toLowerCase().includes(sText)));
        const bShown = bFound && (!this.bOnly || oGroup[0].hasAttribute("data-zel-state"));
        for (const oRow of oGroup) oRow.toggleAttribute(Left, !bShown);
        iShown += Number(bShown);
      }
      this.DrawBars(oWanted);
      this.oCount.textContent = iShown === oWanted.length ? "" : `${iShown} of ${oWanted.length}`;
      this.oBar.classList.toggle("zelNone", oWanted.length === 0);
      for (const oHeading of this.oHeadings.cells) {
        const bSorted = this.iDirection !== 0 && this.ColumnOf(oHeading) === this.iColumn;
        if (bSorted) oHeading.setAttribute("aria-sort", Directions[this.iDirection]);
        else oHeading.removeAttribute("aria-sort");
      }
      this.oObserver.observe(this.oBody, { childList: true });
    }
  }

  let oTables = [];

  const Begin = () => {
    for (const oTable of oTables) oTable.End();
    oTables = Array.from(document.querySelectorAll("table.zelTblTools"), (oTable) => new Table(oTable));
  };

  window.addEventListener("load", Begin);
  document.currentScript.dataset.beginsAgain = "";
  document.addEventListener("zelwbr3reset", Begin);
  document.addEventListener("keydown", (oEvent) => {
    if (oEvent.key !== "f" || !oEvent.ctrlKey || oEvent.altKey || oEvent.shiftKey) return;
    const oTable = oTables.find((o) => o.oTable.getClientRects().length > 0);
    if (oTable === undefined) return;
    oEvent.preventDefault();
    oTable.oFilter.focus({ preventScroll: true });
    oTable.oFilter.select();
  });
})();
