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
 * what it was at the load, and all of this begins again. When the control refreshes
 * the page, the fresh document is filled beside the one shown, which then changes
 * only where they differ.
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
  // - Keys: codes of the keys that the control handles, where it cannot take them
  //   before the page sees them; Mnemonic(letter) is told about Alt with a letter
  const { Theme, IsFrame, Serial, Attach, Keys, Mnemonic } = zelwbr3Host;

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
  const NumberAll = (oRoot) => {
    oNodes = [null, oRoot, ...oRoot.querySelectorAll("*")];
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

  /** An element and all below it, in document order. */
  const WithAll = (oElement) => [oElement, ...oElement.querySelectorAll("*")];

  /**
   * Visible copies of a template row, as the control sends them: only what differs from
   * it. A record has, with separators, the first row's number, the number of rows, what
   * the columns are, the longest value of each column, and the values. A column is the
   * text of an element, given by its place in the row in document order, or after "@"
   * an attribute of it; if nothing is said, the columns are the texts of all cells. An
   * empty value stands for that of the template.
   */
  class RowRecord {
    constructor(oTemplate, sRecord) {
      this.oTemplate = oTemplate;
      this.sRecord = sRecord;
      const [sFirst, sCount, sColumns] = sRecord.split(Separator, 3);
      this.iFirst = Number(sFirst);
      this.iCount = Number(sCount);
      /** Numbers of a row: its own and those of the elements in it. */
      this.iStep = WithAll(oTemplate).length;
      this.iEnd = this.iFirst + this.iCount * this.iStep;
      this.sColumns = sColumns === "" ? Array.from(oTemplate.cells, (_, i) => String(i + 1)) : sColumns.split(" ");
    }

    /** Makes the element of each row from iFrom on, 0-based, and its number. */
    *Make(iFrom = 0) {
      const oPlain = this.oTemplate.cloneNode(true);
      SetDisplay(oPlain, "");
      const oColumns = this.sColumns.map((sColumn) => sColumn.split("@"));
      const sValues = this.sRecord.split(Separator);
      let iValue = 3 + (1 + iFrom) * oColumns.length;
      for (let i = iFrom; i < this.iCount; ++i) {
        const oRow = oPlain.cloneNode(true);
        const oAll = WithAll(oRow);
        for (const [sElement, sName] of oColumns) {
          const sValue = sValues[iValue++];
          if (sValue === "") continue;
          if (sName === undefined) oAll[sElement].textContent = sValue;
          else oAll[sElement].setAttribute(sName, sValue);
        }
        yield [oRow, this.iFirst + i * this.iStep];
      }
    }

    /** How far the number of something in a list's row is from that of the row. */
    OffsetOf(oNode) {
      const oCell = oNode.closest("td, th");
      if (oCell === null) return 0;
      const oOfTemplate = this.oTemplate.cells[oCell.cellIndex];
      // A cell has one element in it at most.
      const bInside = oOfTemplate.firstElementChild !== null && oCell.firstElementChild.contains(oNode);
      return WithAll(this.oTemplate).indexOf(oOfTemplate) + Number(bInside);
    }
  }

  /** The records that a list of the page shows, in the order of their numbers. */
  const oRecords = [];

  /** On an element that shows what was read before: it could not be read again. */
  const OldAttribute = "data-zel-old";
  /** By such an element: what the program has instead. */
  const oFresh = new Map();

  /** While the page is refreshed: the root that is filled, and what was shown by number. */
  let oStage = null;

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

  /** Tells the page's scripts something. True if one of them takes care of it. */
  const Tell = (oNode, sEvent, sDetail = "") =>
    // A text passes to the page's scripts as it is, without a copy.
    !oNode.dispatchEvent(new CustomEvent(sEvent, { bubbles: true, cancelable: true, detail: sDetail }));

  /** A list's script has a part of the table for rows that are not shown. */
  const IsList = (oTable) => [...oTable.tBodies].some((oBody) => !(NumberKey in oBody));

  /** Shows a record's rows: as the page's list does, or as elements. */
  const AddRows = (iTemplate, sRecord) => {
    const oRecord = new RowRecord(oNodes[iTemplate], sRecord);
    const oShown = oStage === null ? oRecord.oTemplate : oStage.oShown[iTemplate];
    const bTaken = oStage === null ? Tell(oShown, "zelrows", sRecord) : iTemplate < iLoaded && IsList(oShown.closest("table"));
    if (bTaken) return void oRecords.push(oRecord);
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
    if (oNode.closest?.(`[${OldAttribute}]`)) return 0;
    // What a script has made may stand for an element of the program.
    const sFor = oNode.closest?.("[data-zel-for]")?.getAttribute("data-zel-for");
    if (sFor) return document.getElementById(sFor)?.[NumberKey] ?? 0;
    if (oNode[NumberKey] !== undefined) return oNode[NumberKey];
    const iRow = Number(oNode.closest?.(`tr[${RowAttribute}]`)?.getAttribute(RowAttribute));
    const oRecord = RecordOf(iRow);
    if (oRecord === undefined || (iRow - oRecord.iFirst) % oRecord.iStep !== 0) return 0;
    return iRow + oRecord.OffsetOf(oNode);
  };

  // ---- snapshot --------------------------------------------------------------

  const Begin = 1;      // tag, number
  const Attribute = 2;  // name, value; of the element begun last
  const Text = 3;       // text
  const End = 4;

  /** What a list's script writes to the program's own elements. */
  const ListAttributes = ["aria-rowcount", "aria-rowindex", "aria-sort", RowAttribute, "data-zel-out"];
  /** And what is written to an element whose figure has changed: a mark, and a tooltip if it has none. */
  const MarkAttribute = "data-zel-mark";
  const ChangeAttribute = "data-zel-changed";
  const IsLists = (oElement, sName) =>
    ListAttributes.includes(sName) ||
    (sName === "tabindex" && oElement.localName === "tr") ||
    sName === MarkAttribute ||
    sName === ChangeAttribute ||
    (sName === "title" && oElement.hasAttribute(ChangeAttribute)) ||
    sName === OldAttribute;

  const IsAdded = (oNode) => oNode[NumberKey] >= iLoaded;

  /** A row that a list's script moves within the table: neither the headings nor a template. */
  const IsListRow = (oNode) => {
    const oPlain = oPristineNodes[oNode[NumberKey]];
    return IsAdded(oNode) || (oPlain?.localName === "tr" && oPlain !== oPlain.parentElement.rows[0] && oPlain.style.display !== "none");
  };

  /** Those of a body, wherever the script has them. */
  const ListRows = (oBody) =>
    [...oBody.parentElement.tBodies].filter((o) => o === oBody || !(NumberKey in o)).flatMap((o) => [...o.rows]).filter(IsListRow);

  /**
   * The nodes in an element as the program knows them. A list's script moves its rows
   * within the table, and shows records in its own way.
   */
  const Original = (oElement) => {
    const oTable = oElement.localName === "tbody" ? oElement.closest("table") : null;
    if (oTable === null || !IsList(oTable)) return oElement.childNodes;
    const oRows = ListRows(oElement);
    for (const oRecord of oRecords) {
      if (oRecord.oTemplate.parentElement !== oElement) continue;
      for (const [oRow, iRow] of oRecord.Make()) {
        if (oNodes[iRow] !== undefined) continue;
        WithAll(oRow).forEach((oNode, i) => (oNode[NumberKey] = iRow + i));
        oRows.push(oRow);
      }
    }
    oRows.sort((oRow, oOther) => oRow[NumberKey] - oOther[NumberKey]);
    return [...oElement.childNodes].filter((oNode) => !IsListRow(oNode)).concat(oRows);
  };

  /** A copy of an element and all that the program knows to be below it, with the numbers from oNext.iNumber on. */
  const CopyOf = (oElement, oNext) => {
    const oCopy = oElement.cloneNode(false);
    oCopy[NumberKey] = oNext.iNumber;
    oNodes[oNext.iNumber++] = oCopy;
    for (const oNode of Original(oElement)) {
      if (oNode.nodeType === Node.TEXT_NODE) oCopy.append(oNode.data);
      else if (oNode[NumberKey] !== undefined) oCopy.append(CopyOf(oNode, oNext));
    }
    return oCopy;
  };

  const Clone = (iNode, iFirst) => {
    const oNode = NodeAt(iNode);
    if (oRecords.some(({ oTemplate }) => oTemplate !== oNode && oNode.contains(oTemplate))) CopyOf(oNode, { iNumber: iFirst });
    else Adopt(oNode, oNode.cloneNode(true), iFirst);
  };

  /** Appends an element and all below it to a list, without what is not numbered. */
  const Describe = (oShown, oList) => {
    const oElement = oFresh.get(oShown) ?? oShown;
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
  let oPristineNodes = [];

  window.addEventListener(
    "load",
    () => {
      NumberAll(document.documentElement);
      Post("load", iSerial, ...Describe(document.documentElement, []));
      oPristine = document.implementation.createHTMLDocument("").importNode(document.documentElement, true);
      oPristineNodes = [null, oPristine, ...oPristine.querySelectorAll("*")];
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
    oFresh.clear();
    getSelection().removeAllRanges();
    scrollTo({ left: 0, top: 0, behavior: "instant" });
  };

  // ---- refresh -----------------------------------------------------------------

  /** Attributes that the program has written to an element. */
  const WrittenKey = Symbol("written");

  const Write = (oElement, sName, sText) => {
    (oElement[WrittenKey] ??= new Set()).add(sName);
    oElement.setAttribute(sName, sText);
  };

  /** What an element is recognised by among its siblings; a row also by what it begins with. */
  const KeyOf = (oElement) => {
    const oCell = oElement.localName === "tr" ? oElement.cells[0] : undefined;
    // One that begins with nothing is known by all that is in it.
    const sCell = oCell === undefined ? "" : `|${oCell.id}|${oCell.id + oCell.textContent === "" ? oElement.textContent : oCell.textContent}`;
    return `${oElement.localName}|${oElement.id}${sCell}`;
  };

  const IsKnown = (oNode) => oNode.nodeType === Node.TEXT_NODE || oNode[NumberKey] !== undefined;

  const MergeAttributes = (oShown, oNew, iOld) => {
    for (const { name, value } of oNew.attributes) {
      if (oShown.getAttribute(name) !== value) oShown.setAttribute(name, value);
    }
    // What the page's scripts have added stays.
    const oPlain = iOld < iLoaded ? oPristineNodes[iOld] : null;
    for (const { name } of [...oShown.attributes]) {
      const bWritten = name === "style" || oShown[WrittenKey]?.has(name);
      const bOurs = oPlain === null ? !IsLists(oShown, name) : bWritten || oPlain.hasAttribute(name);
      if (bOurs && !oNew.hasAttribute(name)) oShown.removeAttribute(name);
    }
    oShown[WrittenKey] = oNew[WrittenKey];
  };

  const ByKey = (oElements) => {
    const oMap = new Map();
    for (const oElement of oElements) {
      const sKey = KeyOf(oElement);
      if (!oMap.get(sKey)?.push(oElement)) oMap.set(sKey, [oElement]);
    }
    return oMap;
  };

  const IsText = (oNode) => oNode.nodeType === Node.TEXT_NODE;
  const IsSame = (oNode, oOther) => (IsText(oNode) ? IsText(oOther) : !IsText(oOther) && KeyOf(oNode) === KeyOf(oOther));

  /** For each new node the one shown that it belongs to; null if there is none. */
  const Pairs = (oShown, oNew) => {
    if (oShown.length === oNew.length && oShown.every((oNode, i) => IsSame(oNode, oNew[i]))) return oShown;
    const oTexts = oShown.filter(IsText);
    const oMap = ByKey(oShown.filter((oNode) => !IsText(oNode)));
    return oNew.map((oNode) => (IsText(oNode) ? oTexts : oMap.get(KeyOf(oNode)))?.shift() ?? null);
  };

  const MergeNode = (oShown, oNew) => {
    if (!IsText(oShown)) return Merge(oShown, oNew);
    if (oShown.data === oNew.data) return;
    const sOld = oShown.data;
    oShown.data = oNew.data;
    Tell(oShown.parentElement, "zelchanged", sOld);
  };

  const MergeContent = (oShown, oNew, IsMeant = IsKnown) => {
    const oOld = [...oShown.childNodes].filter(IsMeant);
    const oWanted = [...oNew.childNodes].filter(IsMeant);
    const oPairs = Pairs(oOld, oWanted);
    const oKept = new Set(oPairs);
    for (const oNode of oOld) oKept.has(oNode) || oNode.remove();
    // The first of the nodes shown that are not yet in their place.
    let oAt = oOld.find((oNode) => oKept.has(oNode)) ?? null;
    const IsRow = (oNode) => oNode.localName === "tr" && IsAdded(oNode);
    const iWent = oOld.filter((oNode) => IsRow(oNode) && !oKept.has(oNode)).length;
    if (iWent > 0) Tell(oShown, "zelwent", String(iWent));
    oWanted.forEach((oNode, i) => {
      if (oPairs[i] !== null) MergeNode(oPairs[i], oNode);
      if (oPairs[i] === null || oPairs[i] !== oAt) {
        oShown.insertBefore(oPairs[i] ?? oNode, oAt);
        if (oPairs[i] === null && IsRow(oNode)) Tell(oNode, "zelcame");
        return;
      }
      do oAt = oAt.nextSibling;
      while (oAt !== null && !oKept.has(oAt));
    });
  };

  /**
   * Gives a list other rows; it keeps what the user has made of it. False if nothing
   * in the page takes care of that.
   */
  const MergeRows = (oBody, oNew) => {
    if (!Tell(oBody, "zelrowsbegin")) return false;
    const oMap = ByKey(ListRows(oBody));
    const oRows = ListRows(oNew).map((oRow) => [oRow[NumberKey], oRow, oMap.get(KeyOf(oRow))?.shift()]);
    // The others no longer stand for anything that could be clicked.
    for (const oElement of [...oMap.values()].flat()) {
      for (const o of WithAll(oElement)) delete o[NumberKey];
    }
    MergeContent(oBody, oNew, (oNode) => IsKnown(oNode) && !IsListRow(oNode));

    const oTexts = oRecords.filter((oRecord) => oRecord.oTemplate.parentElement === oNew);
    const oParts = [...oRows, ...oTexts.map((oRecord) => [oRecord.iFirst, oRecord])].sort(([i], [iOther]) => i - iOther);
    for (const [, oPart, oShown] of oParts) {
      if (oPart instanceof RowRecord) {
        oPart.oTemplate = oNodes[oPart.oTemplate[NumberKey]];
        Tell(oPart.oTemplate, "zelrows", oPart.sRecord);
        continue;
      }
      if (oShown !== undefined) Merge(oShown, oPart);
      else oBody.append(oPart);
      Tell(oShown ?? oPart, "zelrow");
      if (oShown === undefined && oMap.size > 0) Tell(oPart, "zelcame");
    }
    const iWent = [...oMap.values()].flat().length;
    if (iWent > 0) Tell(oBody, "zelwent", String(iWent));
    Tell(oBody, "zelrowsend");
    return true;
  };

  /** Nothing of the page's content could be read. */
  const IsUnread = (oContent) => oContent.getRootNode().querySelector("#divUnread")?.dataset.all === "true";

  /** Makes a part of the page shown what the fresh one is, and touches nothing that is the same in both. */
  const Merge = (oShown, oNew) => {
    const iOld = oShown[NumberKey];
    oShown[NumberKey] = oNew[NumberKey];
    oNodes[oNew[NumberKey]] = oShown;
    MergeAttributes(oShown, oNew, iOld);
    if (oShown.id === "divFrmCnt") {
      oFresh.delete(oShown);
      if (oShown.toggleAttribute(OldAttribute, IsUnread(oNew))) return void oFresh.set(oShown, oNew);
    }
    const oTable = oShown.localName === "tbody" ? oShown.parentElement : null;
    if (oTable === null || !IsList(oTable) || !MergeRows(oShown, oNew)) MergeContent(oShown, oNew);
  };

  /** The refreshed page is filled: it is shown from now on. */
  const Commit = () => {
    const { oRoot } = oStage;
    oStage = null;
    Merge(document.documentElement, oRoot);
    document.dispatchEvent(new Event("zelrefreshed"));
    for (const [sKind, oTarget] of oHeld.splice(0)) Report(sKind, oTarget);
    Report("focus", document.activeElement ?? document.body);
    sTaken = NoKeys;
    TellKeys(document.activeElement);
  };

  // ---- changes ---------------------------------------------------------------

  // By kind, with the number of items that follow it in a batch.
  const oChanges = {
    1: [2, (iNode, sText) => void (NodeAt(iNode).textContent = sText)],
    2: [3, (iNode, sName, sText) => Write(NodeAt(iNode), sName, sText)],
    3: [2, (iNode, sName) => NodeAt(iNode).removeAttribute(sName)],
    4: [2, (iNode, sText) => SetDisplay(NodeAt(iNode), sText)],
    5: [2, Clone],
    6: [2, (iNode, iOther) => void NodeAt(iNode).appendChild(oNodes[iOther])],
    7: [2, (iNode, iOther) => NodeAt(iNode).after(oNodes[iOther])],
    8: [3, (iNode, iOther, sTag) => {
      const oElement = NodeAt(iNode).ownerDocument.createElement(sTag);
      oElement[NumberKey] = iOther;
      oNodes[iOther] = oElement;
      NodeAt(iNode).appendChild(oElement);
    }],
    9: [2, (iNode, sText) => NodeAt(iNode).append(sText)],
    10: [2, AddRows],
    11: [0, Commit],
  };

  let iLastBatch = 0;
  /** What the program was told last about the keys that the page takes. */
  const NoKeys = "0 0";
  let sTaken = NoKeys;

  /** What is sent from now on concerns a document of this number. */
  const Restart = (iNext) => {
    iSerial = iNext;
    iLastBatch = 0;
    oRecords.length = 0;
    oHeld.length = 0;
    Post("begin", iSerial);
  };

  Attach({
    /**
     * Begins again as a load of the same page would, under another number. Answers
     * "" when that is done; this document may not be the one that is meant.
     */
    Reset(iFor, iNext) {
      if (iFor !== iSerial || oPristine === null) return "another document";
      Restart(iNext);
      oStage = null;
      sTaken = NoKeys;
      PutBack();
      NumberAll(document.documentElement);
      document.dispatchEvent(new Event("zelwbr3reset"));
      return "";
    },

    /**
     * Begins to fill the same page again beside the one shown, which stays as it is
     * until that is done. Answers as Reset.
     */
    Refresh(iFor, iNext) {
      if (iFor !== iSerial || oPristine === null) return "another document";
      Restart(iNext);
      oStage = { oRoot: oPristine.cloneNode(true), oShown: oStage?.oShown ?? oNodes };
      NumberAll(oStage.oRoot);
      return "";
    },

    /**
     * Carries out one batch, a list or its text, and answers what went wrong, ""
     * for nothing. A change that fails does not prevent those after it.
     */
    Apply(iFor, iBatch, batch) {
      if (iFor !== iSerial) return "";  // meant for the document before this one
      let sError = iBatch === iLastBatch + 1 ? "" : `batch ${iBatch} follows batch ${iLastBatch}`;
      iLastBatch = iBatch;
      const oList = typeof batch === "string" ? JSON.parse(batch) : batch;
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

    /** "true" while the user does something that a refresh would disturb. */
    InUse() {
      return String(bPressed || !getSelection().isCollapsed);
    },

    /** The document as it stands, in the snapshot's form, without what is not numbered. */
    Live() {
      return JSON.stringify(Describe(document.documentElement, []));
    },
  });

  // ---- what the user does ----------------------------------------------------

  let bPressed = false;
  window.addEventListener("pointerdown", () => (bPressed = true), true);
  for (const sEvent of ["pointerup", "pointercancel", "blur"]) window.addEventListener(sEvent, () => (bPressed = false), true);

  /** What the user does while the page is refreshed concerns the fresh one. */
  const oHeld = [];

  const Report = (sKind, oTarget) => {
    if (oStage === null) Post(sKind, iSerial, NumberOf(oTarget));
    else oHeld.push([sKind, oTarget]);
  };

  window.addEventListener("click", (oEvent) => oEvent.isTrusted && Report("click", oEvent.target), true);
  window.addEventListener("focusin", (oEvent) => Report("focus", oEvent.target), true);

  // Keys that belong to the page's own script: Escape empties a search field or
  // closes a menu before it leaves the page, Enter and Space press a button that the script has made and
  // that the program does not know.
  const KeepsEscape = (o) =>
    (o instanceof HTMLInputElement && o.type === "search" && o.value !== "") || (o instanceof Element && o.closest(".zelMenu, .zelHintMark") !== null);
  const KeepsEnter = (o) => o instanceof HTMLButtonElement && o[NumberKey] === undefined;

  /** Where the program asks nothing when a key goes down, it is told beforehand. */
  const TellKeys = (oTarget) => {
    const bEscape = KeepsEscape(oTarget);
    const bEnter = KeepsEnter(oTarget);
    const sKeys = `${Number(bEscape)} ${Number(bEnter)}`;
    if (Keys !== undefined || sKeys === sTaken) return;
    sTaken = sKeys;
    Post("keys", iSerial, Number(bEscape), Number(bEnter));
  };

  if (Keys === undefined) {
    for (const sEvent of ["focusin", "input"]) {
      window.addEventListener(sEvent, (oEvent) => TellKeys(oEvent.target), true);
    }
    window.addEventListener("focusout", () => TellKeys(null), true);
  } else {
    const Escape = 27;
    const EnterOrSpace = [13, 32];
    const Buttons = ["button", "submit", "reset", "image", "checkbox", "radio", "file", "color", "range"];
    /** An element that does not need Enter and Space itself, so that they click it. */
    const IsClicked = (o) => {
      if (NumberOf(o) === 0 || o === document.body || o.hasAttribute("contenteditable")) return false;
      if (o.localName === "input") return Buttons.includes(o.getAttribute("type"));
      return !["textarea", "select", "option", "iframe"].includes(o.localName);
    };
    const IsOurs = (iCode, o) => {
      if (EnterOrSpace.includes(iCode)) return IsClicked(o) && !KeepsEnter(o);
      return Keys.includes(iCode) && !(iCode === Escape && KeepsEscape(o));
    };
    window.addEventListener(
      "keydown",
      (oEvent) => {
        if (!oEvent.isTrusted || oEvent.isComposing || oEvent.ctrlKey || oEvent.metaKey) return;
        if (oEvent.altKey) return void (Mnemonic(oEvent.key) && oEvent.preventDefault());
        if (oEvent.shiftKey || !IsOurs(oEvent.keyCode, oEvent.target)) return;
        oEvent.preventDefault();
        Post("key", iSerial, oEvent.keyCode);
      },
      true
    );
  }

  // What the page's script takes out of a list, for the clipboard or a file. Where the
  // host does not want it, the browser does that.
  document.addEventListener("zelexport", (oEvent) => {
    if (!zelwbr3Host.Exports) return;
    oEvent.preventDefault();
    Post("export", iSerial, oEvent.detail);
  });

  Post("begin", iSerial);
})();
