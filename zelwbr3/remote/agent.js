/*
 * The page's side of the control. It runs in every document before the page's
 * own scripts, in a script world of its own: page and agent share the document
 * but not their variables.
 *
 * It numbers the elements, sends one snapshot of them when the document has
 * loaded, carries out the changes that the control sends, and reports clicks
 * and focus by element number. Both sides count alike (document order at load,
 * clones in the order of their source), so a number never has to be asked back.
 *
 * When the control shows the same page again, the agent puts the document back to
 * what it was at the load, and all of this begins again.
 *
 * Everything on the wire, both ways, is a flat JSON list of whole numbers and
 * strings. Nothing here reads the layout or waits for a timer or a frame: a
 * hidden view slows both down.
 */
(() => {
  "use strict";

  // In front of this file the platform says what is different between browsers:
  // - Theme: the value of data-theme, "" for none
  // - IsFrame: this is a document inside a page
  // - Serial(): the number of this load
  // - Post(text): sends a message
  // - Attach(agent): takes what the platform may call
  const { Theme, IsFrame, Serial, Attach } = zelwbr3Host;

  if (Theme !== "") document.documentElement.setAttribute("data-theme", Theme);

  const Post = (...oItems) => zelwbr3Host.Post(JSON.stringify(oItems));

  // ---- no default action for the mouse -------------------------------------

  const Cancel = (oEvent) => oEvent.preventDefault();
  for (const sEvent of ["click", "auxclick", "contextmenu", "submit", "dragstart", "dragover", "drop"]) {
    window.addEventListener(sEvent, Cancel, true);
  }

  if (IsFrame) {
    Post("frame-begin");
    window.addEventListener("load", () => Post("frame-load"), true);
    return;
  }

  // ---- numbers ---------------------------------------------------------------

  // Of this load; a reset brings another one.
  let iSerial = Serial();

  const NumberKey = Symbol("number");
  let oNodes = [];
  /** The first number that no element has at the load. */
  let iLoaded = 0;

  const SetDisplay = (oElement, sText) => {
    oElement.style.display = sText;
    if (oElement.getAttribute("style") === "") oElement.removeAttribute("style");
  };

  /** Numbers all elements in document order. */
  const NumberAll = () => {
    oNodes = [null, ...document.querySelectorAll("*")];
    for (let i = 1; i < oNodes.length; ++i) oNodes[i][NumberKey] = i;
    iLoaded = oNodes.length;
  };

  /** Gives a copy and all below it the numbers from iNext on; returns the next free one. */
  const Adopt = (oSource, oCopy, iNext) => {
    oCopy[NumberKey] = iNext;
    oNodes[iNext++] = oCopy;
    let oCopyChild = oCopy.firstElementChild;
    for (let oChild = oSource.firstElementChild; oChild !== null; oChild = oChild.nextElementSibling) {
      // What the page's own scripts have added is not numbered.
      if (oChild[NumberKey] !== undefined) iNext = Adopt(oChild, oCopyChild, iNext);
      oCopyChild = oCopyChild.nextElementSibling;
    }
    return iNext;
  };

  // ---- rows ------------------------------------------------------------------

  const Separator = "\x7f";
  /** A list's row that stands for a row of a record has that row's number here. */
  const RowAttribute = "data-zel-row";

  /** Visible copies of a template row, as the control sends them: their texts only. */
  class RowRecord {
    constructor(oTemplate, sRecord) {
      this.oTemplate = oTemplate;
      this.sRecord = sRecord;
      [this.iFirst, this.iCount] = sRecord.split(Separator, 2).map(Number);
      /** Numbers of a row: its own and those of its cells. */
      this.iStep = 1 + oTemplate.cells.length;
      this.iEnd = this.iFirst + this.iCount * this.iStep;
    }

    /** Makes the element of each row from iFrom on, 0-based, and its number. */
    *Make(iFrom = 0) {
      const oPlain = this.oTemplate.cloneNode(true);
      SetDisplay(oPlain, "");
      const iColumns = this.iStep - 1;
      const sTexts = this.sRecord.split(Separator);
      let iText = 2 + iColumns + iFrom * iColumns;
      for (let i = iFrom; i < this.iCount; ++i) {
        const oRow = oPlain.cloneNode(true);
        for (const oCell of oRow.cells) {
          if (sTexts[iText] !== "") oCell.textContent = sTexts[iText];
          ++iText;
        }
        yield [oRow, this.iFirst + i * this.iStep];
      }
    }
  }

  /** The records that a list of the page shows, in the order of their numbers. */
  const oRecords = [];

  /** The record of a row or cell without an element of its own; undefined if there is none. */
  const RecordOf = (iNumber) => {
    let iLow = 0;
    for (let iHigh = oRecords.length; iLow < iHigh; ) {
      const iMiddle = (iLow + iHigh) >> 1;
      if (oRecords[iMiddle].iEnd <= iNumber) iLow = iMiddle + 1;
      else iHigh = iMiddle;
    }
    return oRecords[iLow]?.iFirst <= iNumber ? oRecords[iLow] : undefined;
  };

  /** The element with a number. That of a record's row is made now, and the list takes it. */
  const NodeAt = (iNumber) => {
    const oRecord = oNodes[iNumber] === undefined ? RecordOf(iNumber) : undefined;
    if (oRecord !== undefined) {
      const [oRow, iRow] = oRecord.Make(Math.floor((iNumber - oRecord.iFirst) / oRecord.iStep)).next().value;
      Adopt(oRecord.oTemplate, oRow, iRow);
      oRow.setAttribute(RowAttribute, iRow);
      oRecord.oTemplate.parentElement.append(oRow);
    }
    return oNodes[iNumber];
  };

  /** Shows a record's rows: as the page's list does, or as elements. */
  const AddRows = (iTemplate, sRecord) => {
    const oRecord = new RowRecord(oNodes[iTemplate], sRecord);
    // A text passes to the page's scripts as it is, without a copy.
    const oEvent = new CustomEvent("zelrows", { bubbles: true, cancelable: true, detail: sRecord });
    if (!oRecord.oTemplate.dispatchEvent(oEvent)) return void oRecords.push(oRecord);
    for (const [oRow, iRow] of oRecord.Make()) {
      Adopt(oRecord.oTemplate, oRow, iRow);
      oRecord.oTemplate.parentElement.append(oRow);
    }
  };

  /**
   * The number of an element. One in a list's row has that of the record's row. 0 for
   * what else the page's own scripts have added: the control ignores clicks and focus
   * there.
   */
  const NumberOf = (oNode) => {
    if (oNode[NumberKey] !== undefined) return oNode[NumberKey];
    const iRow = Number(oNode.closest?.(`tr[${RowAttribute}]`)?.getAttribute(RowAttribute));
    const oRecord = RecordOf(iRow);
    if (oRecord === undefined || (iRow - oRecord.iFirst) % oRecord.iStep !== 0) return 0;
    return iRow + 1 + (oNode.closest("td, th")?.cellIndex ?? -1);
  };

  // ---- snapshot --------------------------------------------------------------

  const Begin = 1;      // tag, number
  const Attribute = 2;  // name, value; of the element begun last
  const Text = 3;       // text
  const End = 4;

  /** What a list's script writes to the program's own elements. */
  const ListAttributes = ["aria-rowcount", "aria-rowindex", "aria-sort", RowAttribute];
  const IsLists = (oElement, sName) =>
    ListAttributes.includes(sName) || (sName === "tabindex" && oElement.localName === "tr");

  /**
   * The nodes in an element as the program knows them. A list's script moves the rows
   * that the program has added, within the table, and shows records in its own way.
   */
  const Original = (oElement) => {
    const oTable = oElement.localName === "tbody" ? oElement.closest("table") : null;
    if (oTable === null || [...oTable.tBodies].every((oBody) => NumberKey in oBody)) return oElement.childNodes;
    const IsAdded = (oRow) => oRow[NumberKey] >= iLoaded;
    const oAdded = [...oTable.rows].filter(IsAdded);
    for (const oRecord of oRecords) {
      if (oRecord.oTemplate.parentElement !== oElement) continue;
      for (const [oRow, iRow] of oRecord.Make()) {
        if (oNodes[iRow] !== undefined) continue;
        [oRow, ...oRow.cells].forEach((oNode, i) => (oNode[NumberKey] = iRow + i));
        oAdded.push(oRow);
      }
    }
    oAdded.sort((oRow, oOther) => oRow[NumberKey] - oOther[NumberKey]);
    return [...oElement.childNodes].filter((oNode) => !IsAdded(oNode)).concat(oAdded);
  };

  /** Appends an element and all below it to a list, without what is not numbered. */
  const Describe = (oElement, oList) => {
    const iNumber = oElement[NumberKey] ?? 0;
    if (iNumber === 0) return oList;
    oList.push(Begin, oElement.localName.toLowerCase(), iNumber);
    for (const { name, value } of oElement.attributes) {
      if (!IsLists(oElement, name)) oList.push(Attribute, name.toLowerCase(), value);
    }
    for (const oNode of Original(oElement)) {
      if (oNode.nodeType === Node.ELEMENT_NODE) {
        Describe(oNode, oList);
      } else if (oNode.nodeType === Node.TEXT_NODE && oNode.data !== "") {
        oList.push(Text, oNode.data);
      }
    }
    oList.push(End);
    return oList;
  };

  // ---- the same page again -----------------------------------------------------

  /** The root as it was at the load, in a document in which nothing runs and nothing is loaded. */
  let oPristine = null;

  window.addEventListener(
    "load",
    () => {
      NumberAll();
      Post("load", iSerial, ...Describe(document.documentElement, []));
      oPristine = document.implementation.createHTMLDocument("").importNode(document.documentElement, true);
    },
    { capture: true, once: true }
  );

  const PutBack = () => {
    const oRoot = document.documentElement;
    const oNew = document.importNode(oPristine, true);
    for (const { name } of [...oRoot.attributes]) oNew.hasAttribute(name) || oRoot.removeAttribute(name);
    for (const { name, value } of oNew.attributes) oRoot.getAttribute(name) === value || oRoot.setAttribute(name, value);
    const [oHead, oBody] = ["head", "body"].map((sTag) => oNew.querySelector(sTag));
    // In another head the style sheets would be loaded again.
    if (!document.head.isEqualNode(oHead)) document.head.replaceWith(oHead);
    document.body.replaceWith(oBody);
    oRecords.length = 0;
    getSelection().removeAllRanges();
    scrollTo({ left: 0, top: 0, behavior: "instant" });
  };

  // ---- changes ---------------------------------------------------------------

  // By kind, with the number of items that follow it in a batch.
  const oChanges = {
    1: [2, (iNode, sText) => void (NodeAt(iNode).textContent = sText)],
    2: [3, (iNode, sName, sText) => NodeAt(iNode).setAttribute(sName, sText)],
    3: [2, (iNode, sName) => NodeAt(iNode).removeAttribute(sName)],
    4: [2, (iNode, sText) => SetDisplay(NodeAt(iNode), sText)],
    5: [2, (iNode, iFirst) => void Adopt(NodeAt(iNode), NodeAt(iNode).cloneNode(true), iFirst)],
    6: [2, (iNode, iOther) => void NodeAt(iNode).appendChild(oNodes[iOther])],
    7: [2, (iNode, iOther) => NodeAt(iNode).after(oNodes[iOther])],
    8: [3, (iNode, iOther, sTag) => {
      const oElement = document.createElement(sTag);
      oElement[NumberKey] = iOther;
      oNodes[iOther] = oElement;
      NodeAt(iNode).appendChild(oElement);
    }],
    9: [2, (iNode, sText) => NodeAt(iNode).append(sText)],
    10: [2, AddRows],
  };

  let iLastBatch = 0;

  Attach({
    /**
     * Begins again as a load of the same page would, under another number. Answers
     * "" when that is done; this document may not be the one that is meant.
     */
    Reset(iFor, iNext) {
      if (iFor !== iSerial || oPristine === null) return "another document";
      iSerial = iNext;
      iLastBatch = 0;
      sTaken = NoKeys;
      Post("begin", iSerial);
      PutBack();
      NumberAll();
      document.dispatchEvent(new Event("zelwbr3reset"));
      return "";
    },

    /**
     * Carries out one batch and answers what went wrong, "" for nothing. A
     * change that fails does not prevent those after it.
     */
    Apply(iFor, iBatch, sList) {
      if (iFor !== iSerial) return "";  // meant for the document before this one
      let sError = iBatch === iLastBatch + 1 ? "" : `batch ${iBatch} follows batch ${iLastBatch}`;
      iLastBatch = iBatch;
      const oList = JSON.parse(sList);
      for (let i = 0; i < oList.length; ) {
        const [iCount, Make] = oChanges[oList[i]];
        try {
          Make(oList[i + 1], oList[i + 2], oList[i + 3]);
        } catch (oError) {
          sError ||= `change ${oList.slice(i, i + 3)}: ${oError}`.slice(0, 500).toWellFormed();
        }
        i += 1 + iCount;
      }
      return sError;
    },

    /** Gives the keyboard to the first element that the Tab key comes by, or to the last. */
    Enter(bForward) {
      const oAll = [...document.querySelectorAll("a[href], button, input, select, textarea, [tabindex]")];
      const IsStop = (o) => o.tabIndex >= 0 && !o.disabled && o.getClientRects().length > 0;
      (bForward ? oAll.find(IsStop) : oAll.findLast(IsStop))?.focus({ focusVisible: true });
    },

    /** The document as it stands, in the snapshot's form, without what is not numbered. */
    Live() {
      return JSON.stringify(Describe(document.documentElement, []));
    },
  });

  // ---- what the user does ----------------------------------------------------

  window.addEventListener("click", (oEvent) => oEvent.isTrusted && Post("click", iSerial, NumberOf(oEvent.target)), true);
  window.addEventListener("focusin", (oEvent) => Post("focus", iSerial, NumberOf(oEvent.target)), true);

  // Keys that belong to the page's own script: Escape empties a search field before
  // it leaves the page, Enter and Space press a button that the script has made and
  // that the program does not know. The program asks nothing when a key goes down,
  // so it is told beforehand.
  const NoKeys = "0 0";
  let sTaken = NoKeys;
  const TellKeys = (oTarget) => {
    const bEscape = oTarget instanceof HTMLInputElement && oTarget.type === "search" && oTarget.value !== "";
    const bEnter = oTarget instanceof HTMLButtonElement && oTarget[NumberKey] === undefined;
    const sKeys = `${Number(bEscape)} ${Number(bEnter)}`;
    if (sKeys === sTaken) return;
    sTaken = sKeys;
    Post("keys", iSerial, Number(bEscape), Number(bEnter));
  };
  for (const sEvent of ["focusin", "input"]) window.addEventListener(sEvent, (oEvent) => TellKeys(oEvent.target), true);
  window.addEventListener("focusout", () => TellKeys(null), true);

  Post("begin", iSerial);
})();
