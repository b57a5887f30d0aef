/*
 * The lists in page files: sorted by a click on a column heading, filtered by a
 * text, walked through by keyboard, and copied in a form that spreadsheets take.
 * "data-zel-only" names a button that leaves only the rows whose "data-zel-state" is
 * something other than "idle"; it is there when a row has one. What a row has in
 * "data-zel-detail" is shown below the list while the row has the mouse or the focus.
 *
 * A list is a table of class "zelTblSort". The first row of its body holds the
 * headings, the second is a hidden template row. Further rows come in two ways, at
 * any time: as elements that the program appends to that body (or that the file
 * has), and as records, which have only what is not the template's (the event "zelrows").
 *
 * When the page is refreshed, all rows come anew, between the events "zelrowsbegin"
 * and "zelrowsend": records again by "zelrows", elements by "zelrow". Filter, order,
 * place and focus stay, and so does the element of a row that is the same.
 *
 * Laying out a row costs the browser a hundred times as much as its texts do, in
 * time and in memory. So a long list has elements for the rows near the screen
 * only, and empty rows of the right height in place of all others.
 *
 * The program keeps its own copy of the document and never reads it back from
 * the browser, so nothing that happens here affects what it reads. The script
 * moves the program's rows within their table, and changes nothing in them but
 * what screen readers are told about their places.
 */
(() => {
  "use strict";

  // ---- numbers --------------------------------------------------------------

  const Scale = { bytes: 1, kb: 2 ** 10, mb: 2 ** 20, gb: 2 ** 30, pages: 1, "%": 1 };
  const Unit = `(?:\\s*(${Object.keys(Scale).join("|")}))?$`;
  const Escape = (sText) => sText.replace(/[.*+?^${}()|[\]\\]/g, "\\$&");

  /** What the program has written into the page about the user's numbers. */
  const Setting = (sId, sDefault) => document.getElementById(sId)?.textContent || sDefault;

  const Grouped = (iNumber) => String(iNumber).replace(/\B(?=(\d{3})+$)/g, Setting("LocaleThousendGroupingSymbole", ""));

  /** The common case, and much faster than an expression. */
  const IsDigits = (sText) => {
    for (let i = 0; i < sText.length; ++i) {
      const iCode = sText.charCodeAt(i);
      if (iCode < 48 || iCode > 57) return false;
    }
    return sText !== "";
  };

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
      return new NumberReader(Setting("LocaleDecimalSymbole", "."), Setting("LocaleThousendGroupingSymbole", ""));
    }

    /** The number in a text; NaN if there is none. */
    Read(sText) {
      const iFirst = sText.charCodeAt(0);
      const bBegins = (iFirst >= 48 && iFirst <= 57) || iFirst === 43 || iFirst === 45;  // digits, + and -
      if (!bBegins || sText.length > 64) return NaN;
      if (sText.length < 16 && IsDigits(sText)) return Number(sText);
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

  // ---- work in slices ---------------------------------------------------------

  /** The longest time in milliseconds that the page is kept from the user. */
  const SliceTime = 30;
  /** Small things that are done before the clock is looked at. */
  const Step = 4096;

  /** A long work that lets the user do anything meanwhile, also make it superfluous. */
  class Work {
    bGivenUp = false;
    bRested = false;
    dUntil = performance.now() + SliceTime;

    get bDue() {
      return performance.now() >= this.dUntil;
    }

    /** To be awaited when it is due. False: the result is no longer wanted. */
    async Rest() {
      this.bRested = true;
      await new Promise((oDone) => setTimeout(oDone));
      this.dUntil = performance.now() + SliceTime;
      return !this.bGivenUp;
    }

    /** Calls a function for ranges of these numbers, one after the other. False: no longer wanted. */
    async InSlices(iFrom, iEnd, DoSome) {
      for (let i = iFrom; i < iEnd; i += Step) {
        DoSome(i, Math.min(i + Step, iEnd));
        if (this.bDue && !(await this.Rest())) return false;
      }
      return true;
    }

    /** The items that a function says yes to; null: no longer wanted. */
    async Filter(oItems, IsWanted) {
      const oWanted = new Uint32Array(oItems.length);
      let iCount = 0;
      const FilterSome = (i, iStop) => {
        for (; i < iStop; ++i) if (IsWanted(oItems[i], i)) oWanted[iCount++] = oItems[i];
      };
      return (await this.InSlices(0, oItems.length, FilterSome)) ? oWanted.subarray(0, iCount) : null;
    }
  }

  /** The whole numbers from 0. */
  const UpTo = (iCount) => {
    const oAll = new Uint32Array(iCount);
    for (let i = 0; i < iCount; ++i) oAll[i] = i;
    return oAll;
  };

  // ---- sorting ----------------------------------------------------------------

  /** Items sorted without merging. */
  const ShortRun = 16;

  /** Sorts a few items by their numbers. */
  const SortShortRun = (oItems, dKeys, iFrom, iEnd) => {
    for (let i = iFrom + 1; i < iEnd; ++i) {
      const iItem = oItems[i];
      const dKey = dKeys[i];
      let iTo = i;
      for (; iTo > iFrom && dKeys[iTo - 1] > dKey; --iTo) {
        oItems[iTo] = oItems[iTo - 1];
        dKeys[iTo] = dKeys[iTo - 1];
      }
      oItems[iTo] = iItem;
      dKeys[iTo] = dKey;
    }
  };

  /** Goes on with a merge of two runs for a while. */
  const MergeSome = (oFrom, oTo, oRun, Follows) => {
    const { oItems, dKeys } = oFrom;
    const { iMiddle, iEnd } = oRun;
    let { iLeft, iRight, iTo } = oRun;
    const iStop = Math.min(iEnd, iTo + Step);
    for (; iTo < iStop; ++iTo) {
      const bRight = iLeft === iMiddle || (iRight < iEnd && Follows(oFrom, iLeft, iRight));
      const iAt = bRight ? iRight++ : iLeft++;
      oTo.oItems[iTo] = oItems[iAt];
      oTo.dKeys[iTo] = dKeys[iAt];
    }
    Object.assign(oRun, { iLeft, iRight, iTo });
  };

  /**
   * Sorts items and their numbers together by merging runs that are sorted already; equal
   * items keep their order. Null: no longer wanted.
   */
  const Merged = async (oItems, dKeys, iRun, Follows, oWork) => {
    const iCount = oItems.length;
    let oFrom = { oItems, dKeys };
    let oTo = { oItems: new Uint32Array(iCount), dKeys: new Float64Array(iCount) };
    for (let iWidth = iRun; iWidth < iCount; iWidth *= 2) {
      for (let iLeft = 0; iLeft < iCount; iLeft += 2 * iWidth) {
        const iMiddle = Math.min(iLeft + iWidth, iCount);
        const oRun = { iLeft, iMiddle, iRight: iMiddle, iEnd: Math.min(iMiddle + iWidth, iCount), iTo: iLeft };
        while (oRun.iTo < oRun.iEnd) {
          MergeSome(oFrom, oTo, oRun, Follows);
          if ((iWidth >= Step / 2 || iLeft % Step === 0) && oWork.bDue && !(await oWork.Rest())) return null;
        }
      }
      [oFrom, oTo] = [oTo, oFrom];
    }
    return oFrom;
  };

  const FollowsByNumber = ({ dKeys }, iLeft, iRight) => dKeys[iLeft] > dKeys[iRight];

  /** Sorts items by their numbers, both where they stand. False: no longer wanted. */
  const SortByNumbers = async (oItems, dKeys, oWork) => {
    const SortRuns = (i, iStop) => {
      for (; i < iStop; i += ShortRun) SortShortRun(oItems, dKeys, i, Math.min(i + ShortRun, iStop));
    };
    if (!(await oWork.InSlices(0, oItems.length, SortRuns))) return false;
    if (oItems.length <= ShortRun) return true;
    const oSorted = await Merged(oItems, dKeys, ShortRun, FollowsByNumber, oWork);
    if (oSorted === null) return false;
    if (oSorted.oItems !== oItems) {
      oItems.set(oSorted.oItems);
      dKeys.set(oSorted.dKeys);
    }
    return true;
  };

  /**
   * The characters of the user's language as bytes, in its order. Texts of nothing else
   * are sorted by bytes: many times as fast as by the rules of the language, in the
   * same order.
   */
  class Alphabet {
    /** Its longest text, and its longest number. */
    static iLongest = 250;
    static iDigits = 40;
    static oUsers = null;

    /** By character; 0 for those that are not compared on their own. */
    iBytes = new Uint8Array(128);
    /** By byte. */
    sCharacters = [""];
    /** A number begins with this byte and the number of its digits. A digit is its value and 1. */
    iNumber = 0;
    /** By character: the letter that one with an accent is equal to. */
    iPlain = new Uint8Array(0x180);
    bSharpS = Texts.compare("\u00df", "ss") === 0;
    /** By two characters: they may be a letter of its own, such as "ch". */
    iPairs = new Uint8Array(128 * 128);

    static get Users() {
      return (this.oUsers ??= new Alphabet());
    }

    constructor() {
      const sAll = Array.from({ length: 95 }, (_, i) => String.fromCharCode(32 + i)).filter((s) => Texts.compare(s, "") !== 0);
      let iByte = 0;
      for (const s of sAll.filter((s) => s === "0" || !IsDigits(s)).sort(Texts.compare)) {
        if (Texts.compare(s, this.sCharacters[iByte] ?? "0") !== 0) this.sCharacters[++iByte] = s;
        this.iBytes[s.charCodeAt(0)] = iByte;
        if (s !== "0") continue;
        this.iNumber = iByte;
        iByte += Alphabet.iDigits;
      }
      this.FindPairs(sAll.filter((s) => /[a-z']/i.test(s)));
      for (let iCode = 0xc0; iCode < this.iPlain.length; ++iCode) {
        const sPlain = String.fromCharCode(iCode).normalize("NFD").slice(0, 1);
        const bSame = sPlain < "\x7f" && Texts.compare(String.fromCharCode(iCode), sPlain) === 0;
        if (bSame) this.iPlain[iCode] = sPlain.charCodeAt(0);
      }
    }

    /** Finds what is compared otherwise as soon as something invisible keeps it apart. */
    FindPairs(sLetters) {
      const IsOne = (...sParts) => Texts.compare(sParts.join(""), sParts.join("\u034f")) !== 0;
      for (const s of sLetters) {
        for (const sNext of sLetters) {
          if (IsOne(s, sNext)) this.AddPair(s, sNext);
          if (!this.IsPair("'", sNext) && IsOne(s, "'", sNext)) this.AddPair(s, "'");
        }
      }
    }
    IsPair(sFirst, sSecond) {
      return this.iPairs[sFirst.charCodeAt(0) * 128 + sSecond.charCodeAt(0)] === 1;
    }
    AddPair(sFirst, sSecond) {
      // Small and capital letters are read as each other.
      for (const s of [sFirst.toLowerCase(), sFirst.toUpperCase()]) {
        for (const sNext of [sSecond.toLowerCase(), sSecond.toUpperCase()]) {
          this.iPairs[s.charCodeAt(0) * 128 + sNext.charCodeAt(0)] = 1;
        }
      }
    }

    /** Writes a text as bytes, which end with a 0. Returns the place after it; -1 for a text that is not of this alphabet. */
    Write(sText, oBytes, iTo) {
      let iBefore = 0;
      for (let i = 0; i < sText.length; ) {
        let iCode = sText.charCodeAt(i);
        if (iCode > 127) iCode = iCode < this.iPlain.length ? this.iPlain[iCode] : 0;
        if (iCode >= 48 && iCode <= 57) {
          let iEnd = i + 1;
          while (iEnd < sText.length && sText.charCodeAt(iEnd) >= 48 && sText.charCodeAt(iEnd) <= 57) ++iEnd;
          while (i < iEnd - 1 && sText.charCodeAt(i) === 48) ++i;
          if (iEnd - i > Alphabet.iDigits) return -1;
          oBytes[iTo++] = this.iNumber + iEnd - i;
          while (i < iEnd) oBytes[iTo++] = sText.charCodeAt(i++) - 47;
          iBefore = 0;
          continue;
        }
        if (this.iBytes[iCode] === 0 || this.iPairs[iBefore * 128 + iCode] === 1) return -1;
        oBytes[iTo++] = this.iBytes[iCode];
        iBefore = iCode;
        ++i;
      }
      oBytes[iTo] = 0;
      return iTo + 1;
    }

    /** A text that is equal to the one written. */
    Read(oBytes, iFrom) {
      let sText = "";
      for (let i = iFrom; oBytes[i] !== 0; ++i) {
        const iDigits = oBytes[i] - this.iNumber;
        if (iDigits < 1 || iDigits > Alphabet.iDigits) sText += this.sCharacters[oBytes[i]];
        else for (const iEnd = i + iDigits; i < iEnd; ) sText += oBytes[++i] - 1;
      }
      return sText;
    }
  }

  /** Rows and their texts, to be sorted in the user's language. */
  class TextColumn {
    static iChunk = 2 ** 20;
    /** Bytes that are one number. */
    static iHead = 7;
    /** What the places of texts begin with that are not of the alphabet. */
    static iOther = 2 ** 31;

    oAlphabet = Alphabet.Users;
    oChunks = [new Uint8Array(TextColumn.iChunk)];
    iEnd = 0;
    iCount = 0;
    oOthers = new Map();
    sOthers = [];

    constructor(iMost) {
      this.oRows = new Uint32Array(iMost);
      this.oPlaces = new Uint32Array(iMost);
    }

    /** To be called with ascending rows. */
    Add(iRow, sText) {
      this.oRows[this.iCount] = iRow;
      this.oPlaces[this.iCount++] = this.PlaceOf(sText);
    }

    PlaceOf(sText) {
      if (sText.length <= Alphabet.iLongest) {
        if (this.iEnd + 2 * sText.length + 1 > TextColumn.iChunk) {
          this.oChunks.push(new Uint8Array(TextColumn.iChunk));
          this.iEnd = 0;
        }
        const iStart = this.iEnd;
        const sWritten = this.oAlphabet.bSharpS ? sText.replaceAll("\u00df", "ss") : sText;
        const iEnd = this.oAlphabet.Write(sWritten, this.oChunks.at(-1), iStart);
        if (iEnd >= 0) {
          this.iEnd = iEnd;
          return (this.oChunks.length - 1) * TextColumn.iChunk + iStart;
        }
      }
      let iOther = this.oOthers.get(sText);
      if (iOther === undefined) {
        this.oOthers.set(sText, (iOther = this.sOthers.length));
        this.sOthers.push(sText);
      }
      return TextColumn.iOther + iOther;
    }

    Text(i) {
      const iPlace = this.oPlaces[i];
      return this.oAlphabet.Read(this.oChunks[Math.floor(iPlace / TextColumn.iChunk)], iPlace % TextColumn.iChunk);
    }

    /** The bytes of a text from this one on as a number; a multiple of 128 if there are no more. */
    Head(i, iDepth) {
      const iPlace = this.oPlaces[i] + iDepth;
      const oBytes = this.oChunks[iPlace >>> 20];
      let dHead = 0;
      let iByte = 1;
      for (let iAt = iPlace & (TextColumn.iChunk - 1), iEnd = iAt + TextColumn.iHead; iAt < iEnd; ++iAt) {
        if (iByte !== 0) iByte = oBytes[iAt];
        dHead = dHead * 128 + iByte;
      }
      return dHead;
    }

    /** The rows in order, those with equal texts as they were added; null: no longer wanted. */
    async Sorted(iSign, oWork) {
      const dRanks = new Float64Array(this.iCount);
      const oFirsts = await this.RankByBytes(dRanks, oWork);
      if (oFirsts === null || !(await this.RankOthers(oFirsts, dRanks, oWork))) return null;
      if (iSign < 0) dRanks.forEach((d, i) => (dRanks[i] = -d));
      const oRows = this.oRows.subarray(0, this.iCount);
      return (await SortByNumbers(oRows, dRanks, oWork)) ? oRows : null;
    }

    /** Gives texts of the alphabet the ranks 1, 3, 5 and so on. Returns the first text of each rank. */
    async RankByBytes(dRanks, oWork) {
      const oOrder = await oWork.Filter(UpTo(this.iCount), (i) => this.oPlaces[i] < TextColumn.iOther);
      if (oOrder === null) return null;
      const dHeads = new Float64Array(oOrder.length);
      const bDiffers = new Uint8Array(oOrder.length + 1);
      // Ranges of texts that begin alike, each with the number of bytes that are.
      const iOpen = [0, oOrder.length, 0];
      while (iOpen.length > 0) {
        const [iFrom, iEnd, iDepth] = iOpen.splice(-3);
        const Fill = (i, iStop) => {
          for (; i < iStop; ++i) dHeads[i] = this.Head(oOrder[i], iDepth);
        };
        if (!(await oWork.InSlices(iFrom, iEnd, Fill))) return null;
        if (!(await SortByNumbers(oOrder.subarray(iFrom, iEnd), dHeads.subarray(iFrom, iEnd), oWork))) return null;
        bDiffers[iFrom] = bDiffers[iEnd] = 1;
        let iRun = iFrom;
        const Divide = (i, iStop) => {
          for (; i < iStop; ++i) {
            if (i < iEnd && dHeads[i] === dHeads[iRun]) continue;
            bDiffers[i] = 1;
            if (i - iRun > 1 && dHeads[iRun] % 128 !== 0) iOpen.push(iRun, i, iDepth + TextColumn.iHead);
            iRun = i;
          }
        };
        if (!(await oWork.InSlices(iFrom + 1, iEnd + 1, Divide))) return null;
      }
      let iRank = -1;
      const Rank = (i, iStop) => {
        for (; i < iStop; ++i) dRanks[oOrder[i]] = iRank += 2 * bDiffers[i];
      };
      if (!(await oWork.InSlices(0, oOrder.length, Rank))) return null;
      return oWork.Filter(oOrder, (_, i) => bDiffers[i] === 1);
    }

    /** Gives all others the ranks of texts that they are equal to, or ranks between. */
    async RankOthers(oFirsts, dRanks, oWork) {
      const iCount = this.sOthers.length;
      const Follows = ({ oItems }, iLeft, iRight) => Texts.compare(this.sOthers[oItems[iLeft]], this.sOthers[oItems[iRight]]) > 0;
      const oSorted = await Merged(UpTo(iCount), new Float64Array(iCount), 1, Follows, oWork);
      if (oSorted === null) return false;
      const dOthers = new Float64Array(iCount);
      let iLow = 0;
      for (let i = 0, iOther = 0; i < iCount; ++i) {
        const sText = this.sOthers[oSorted.oItems[i]];
        if (i > 0 && Texts.compare(this.sOthers[oSorted.oItems[i - 1]], sText) !== 0) iOther = i;
        const IsBelow = (iFirst) => iFirst < oFirsts.length && Texts.compare(this.Text(oFirsts[iFirst]), sText) < 0;
        let iStep = 1;
        for (; IsBelow(iLow + iStep - 1); iStep *= 2) iLow += iStep;
        for (; iStep > 1; ) {
          iStep /= 2;
          if (IsBelow(iLow + iStep - 1)) iLow += iStep;
        }
        const bEqual = iLow < oFirsts.length && Texts.compare(this.Text(oFirsts[iLow]), sText) === 0;
        dOthers[oSorted.oItems[i]] = 2 * iLow + (bEqual ? 1 : iOther / iCount);
        if (oWork.bDue && !(await oWork.Rest())) return false;
      }
      const Rank = (i, iStop) => {
        for (; i < iStop; ++i) {
          if (this.oPlaces[i] >= TextColumn.iOther) dRanks[i] = dOthers[this.oPlaces[i] - TextColumn.iOther];
        }
      };
      return oWork.InSlices(0, this.iCount, Rank);
    }
  }

  // ---- rows -------------------------------------------------------------------

  const Make = (sTag, sClass, oProperties = {}) => Object.assign(document.createElement(sTag), { className: sClass }, oProperties);

  /** An element and all below it, in document order. */
  const WithAll = (oElement) => [oElement, ...oElement.querySelectorAll("*")];

  const IsHidden = (oRow) => oRow.style.display === "none";

  const Separator = "\x7f";

  /** Rows that follow each other as elements. */
  class ElementPart {
    oElements = [];

    constructor(iStart) {
      this.iStart = iStart;
    }
    get iCount() {
      return this.oElements.length;
    }
    Element(i) {
      return this.oElements[i];
    }
    Texts(i) {
      return Array.from(this.oElements[i].cells, (oCell) => oCell.textContent);
    }
    State(i) {
      return this.oElements[i].dataset.zelState ?? "";
    }
    /** What a column is sorted by. */
    Keys(iColumn) {
      return this.oElements.map((oRow) => KeyOf(oRow, iColumn));
    }
    /** The rows with a text that contains this one, which is in lower case. */
    *Matches(sText) {
      for (let i = 0; i < this.iCount; ++i) {
        if (this.Texts(i).some((s) => s.toLowerCase().includes(sText))) yield i;
      }
    }
  }

  const KeyOf = (oRow, iColumn) => {
    const oCell = oRow.cells[iColumn];
    return oCell?.dataset.sort ?? oCell?.textContent ?? "";
  };

  /**
   * Rows of which only what differs from the template is told. A record has, with
   * separators, the first row's number, the number of rows, what the columns are, the
   * longest value of each column, and the values. A column is the text of an element,
   * given by its place in the row in document order, or after "@" an attribute of it; if
   * nothing is said, the columns are the texts of all cells. An empty value stands for
   * that of the template.
   */
  class RecordPart {
    /** Elements that rows have got since: the program has written more than texts. */
    oElements = new Map();
    /** Where each eighth row begins in the record. */
    oStarts = null;

    constructor(iStart, sRecord, oTemplate) {
      this.iStart = iStart;
      this.sRecord = sRecord;
      const [sFirst, sCount, sColumns] = sRecord.split(Separator, 3);
      this.iFirst = Number(sFirst);
      this.iCount = Number(sCount);
      this.sKind = sColumns;
      const oAll = WithAll(oTemplate);
      this.iStep = oAll.length;
      const sAll = sColumns === "" ? Array.from(oTemplate.cells, (_, i) => String(i + 1)) : sColumns.split(" ");
      /** Of each column: the element, the attribute if it is none of texts, and what the template has. */
      this.oColumns = sAll.map((sColumn) => {
        const [sElement, sName] = sColumn.split("@");
        const oElement = oAll[sElement];
        return { iElement: Number(sElement), sName, sDefault: sName === undefined ? oElement.textContent : oElement.getAttribute(sName) };
      });
      this.iColumns = this.oColumns.length;
      const ColumnsWith = (Is) => Array.from(oTemplate.cells, (oCell) => this.oColumns.findIndex((o) => Is(o, oCell, oAll[o.iElement])));
      /** The column with each cell's text, and that with what it is sorted by; -1 for none. */
      this.iTextOf = ColumnsWith(({ sName }, oCell, oElement) => sName === undefined && oCell.contains(oElement));
      this.iSortOf = ColumnsWith(({ sName }, oCell, oElement) => sName === "data-sort" && oCell === oElement);
      this.sDefaults = Array.from(oTemplate.cells, (oCell) => oCell.textContent);
      this.iValues = 0;
      for (let i = 3 + this.iColumns; i > 0; --i) this.iValues = this.EndOf(this.iValues) + 1;
    }

    /** The number that the program knows a row by. */
    NumberOf(i) {
      return this.iFirst + i * this.iStep;
    }
    Longest() {
      const sLongest = this.sRecord.split(Separator, 3 + this.iColumns).slice(3);
      return this.iTextOf.map((iColumn) => sLongest[iColumn] ?? "");
    }
    Element(i) {
      return this.oElements.get(i);
    }
    Texts(i) {
      if (this.oElements.has(i)) return Array.from(this.oElements.get(i).cells, (oCell) => oCell.textContent);
      const sValues = this.Values(i);
      return this.sDefaults.map((sDefault, iCell) => sValues[this.iTextOf[iCell]] || sDefault);
    }
    /** A row's values by column. */
    Values(i) {
      if (this.oStarts === null) this.Keys(0);
      let iAt = this.oStarts[i >> 3];
      for (let iValues = (i & 7) * this.iColumns; iValues > 0; --iValues) iAt = this.EndOf(iAt) + 1;
      return this.oColumns.map(() => {
        const iFrom = iAt;
        iAt = this.EndOf(iAt) + 1;
        return this.sRecord.slice(iFrom, iAt - 1);
      });
    }
    State(i) {
      const oElement = this.oElements.get(i);
      const iColumn = this.oColumns.findIndex(({ iElement, sName }) => iElement === 0 && sName === "data-zel-state");
      return oElement?.dataset.zelState ?? (iColumn < 0 ? "" : this.Values(i)[iColumn]);
    }
    Keys(iCell) {
      const sKeys = new Array(this.iCount).fill(this.sDefaults[iCell] ?? "");
      const [iText, iSort] = [this.iTextOf[iCell], this.iSortOf[iCell]];
      this.oStarts = new Uint32Array((this.iCount + 7) >> 3);
      for (let i = 0, iAt = this.iValues; i < this.iCount; ++i) {
        if ((i & 7) === 0) this.oStarts[i >> 3] = iAt;
        for (let iColumn = 0; iColumn < this.iColumns; ++iColumn) {
          const iEnd = this.EndOf(iAt);
          // Attributes come after the texts.
          if ((iColumn === iText || iColumn === iSort) && iEnd > iAt) sKeys[i] = this.sRecord.slice(iAt, iEnd);
          iAt = iEnd + 1;
        }
      }
      for (const [i, oRow] of this.oElements) sKeys[i] = KeyOf(oRow, iCell);
      return sKeys;
    }
    EndOf(iStart) {
      const iEnd = this.sRecord.indexOf(Separator, iStart);
      return iEnd < 0 ? this.sRecord.length : iEnd;
    }
    *Matches(sText) {
      const sRecord = this.sRecord.toLowerCase();
      const bDefault = this.sDefaults.some((s) => s.toLowerCase().includes(sText));
      if (!sRecord.includes(sText) && this.oElements.size === 0 && !bDefault) return;
      const sValues = sRecord.split(Separator);
      for (let i = 0, iValue = 3 + this.iColumns; i < this.iCount; ++i, iValue += this.iColumns) {
        if (this.IsMatch(i, sValues, iValue, sText, bDefault)) yield i;
      }
    }
    IsMatch(i, sValues, iValue, sText, bDefault) {
      if (bDefault || this.oElements.has(i)) return this.Texts(i).some((s) => s.toLowerCase().includes(sText));
      for (const iColumn of this.iTextOf) {
        if (iColumn >= 0 && sValues[iValue + iColumn].includes(sText)) return true;
      }
      return false;
    }
    /** Writes a row to a copy of the template. Calls OnText with each element that gets another text and the text before. */
    Fill(i, oRow, OnText) {
      const sValues = this.Values(i);
      const oAll = WithAll(oRow);
      this.oColumns.forEach(({ iElement, sName, sDefault }, iColumn) => {
        const sValue = sValues[iColumn] || sDefault;
        const oElement = oAll[iElement];
        const sBefore = sName === undefined ? oElement.textContent : oElement.getAttribute(sName);
        if (sBefore === sValue) return;
        if (sName !== undefined) return sValue === null ? oElement.removeAttribute(sName) : oElement.setAttribute(sName, sValue);
        oElement.textContent = sValue;
        OnText(oElement, sBefore);
      });
    }
  }

  /** Rows of a part of elements: as many as may be looked at in one slice. */
  const RowsOfPart = 2048;

  /** The rows of a list, numbered from 0 in the order in which they were added. */
  class Rows {
    oParts = [];
    iCount = 0;
    /** The longest text of each column. */
    sLongest = [];

    AddRecord(sRecord, oTemplate) {
      const oPart = new RecordPart(this.iCount, sRecord, oTemplate);
      this.oParts.push(oPart);
      this.iCount += oPart.iCount;
      this.Lengthen(oPart.Longest());
    }
    AddElement(oRow) {
      let oPart = this.oParts.at(-1);
      if (!(oPart instanceof ElementPart) || oPart.iCount >= RowsOfPart) {
        this.oParts.push((oPart = new ElementPart(this.iCount)));
      }
      oPart.oElements.push(oRow);
      ++this.iCount;
      this.Lengthen(Array.from(oRow.cells, (oCell) => oCell.textContent));
    }
    Lengthen(sTexts) {
      sTexts.forEach((sText, i) => {
        if (sText.length > (this.sLongest[i]?.length ?? 0)) this.sLongest[i] = sText.slice(0, 200);
      });
    }

    /** Gives a record's row an element. Returns the row; -1 if there is none with this number. */
    SetElement(iNumber, oRow) {
      const oPart = this.oParts.find((o) => o instanceof RecordPart && o.iFirst <= iNumber && iNumber < o.NumberOf(o.iCount));
      if (oPart === undefined) return -1;
      const i = (iNumber - oPart.iFirst) / oPart.iStep;
      oPart.oElements.set(i, oRow);
      return oPart.iStart + i;
    }

    /** The part with a row. */
    PartOf(iRow) {
      let iLow = 0;
      for (let iHigh = this.oParts.length; iHigh - iLow > 1; ) {
        const iMiddle = (iLow + iHigh) >> 1;
        if (this.oParts[iMiddle].iStart <= iRow) iLow = iMiddle;
        else iHigh = iMiddle;
      }
      return this.oParts[iLow];
    }
    Element(iRow) {
      const oPart = this.PartOf(iRow);
      return oPart.Element(iRow - oPart.iStart);
    }
    Texts(iRow) {
      const oPart = this.PartOf(iRow);
      return oPart.Texts(iRow - oPart.iStart);
    }

    State(iRow) {
      const oPart = this.PartOf(iRow);
      return oPart.State(iRow - oPart.iStart);
    }

    /** The rows that contain a text in lower case; null if that is no longer wanted. */
    async Matching(sText, oWork) {
      const oFound = new Uint32Array(this.iCount);
      let iFound = 0;
      for (const oPart of [...this.oParts]) {
        for (const i of oPart.Matches(sText)) oFound[iFound++] = oPart.iStart + i;
        if (oWork.bDue && !(await oWork.Rest())) return null;
      }
      return oFound.slice(0, iFound);
    }

    /**
     * Rows by a column: numbers, then texts, then empty cells, in both directions; null
     * if that is no longer wanted.
     */
    async Ordered(oRows, iColumn, iSign, oWork) {
      const oReader = NumberReader.OfDocument();
      const [oNumbers, oEmpty] = [0, 1].map(() => new Uint32Array(oRows.length));
      const dKeys = new Float64Array(oRows.length);
      const oTexts = new TextColumn(oRows.length);
      let iNumbers = 0;
      let iEmpty = 0;
      let oPart = null;
      let sKeys = [];
      for (const iRow of oRows) {
        if (oPart === null || iRow >= oPart.iStart + sKeys.length) {
          if (oWork.bDue && !(await oWork.Rest())) return null;
          oPart = this.PartOf(iRow);
          sKeys = oPart.Keys(iColumn);
        }
        const sKey = sKeys[iRow - oPart.iStart].trim();
        const dKey = oReader.Read(sKey);
        if (sKey === "") {
          oEmpty[iEmpty++] = iRow;
        } else if (Number.isNaN(dKey)) {
          oTexts.Add(iRow, sKey);
        } else {
          dKeys[iNumbers] = iSign * dKey;
          oNumbers[iNumbers++] = iRow;
        }
      }

      const oSorted = oNumbers.subarray(0, iNumbers);
      if (!(await SortByNumbers(oSorted, dKeys.subarray(0, iNumbers), oWork))) return null;
      const oOthers = await oTexts.Sorted(iSign, oWork);
      if (oOthers === null) return null;
      const oOrder = new Uint32Array(oRows.length);
      oOrder.set(oSorted);
      oOrder.set(oOthers, iNumbers);
      oOrder.set(oEmpty.subarray(0, iEmpty), iNumbers + oOthers.length);
      return oOrder;
    }
  }

  // ---- heights ----------------------------------------------------------------

  /** Rows whose heights are added up. */
  const RowsOfSum = 256;

  /** The heights of rows by place, in pixels: that of one line until it is known better. */
  class Heights {
    dRow = 27;
    dKnown = new Float32Array(0);
    /** What the sums of known heights differ by, of each group of rows and of those above it. */
    dGroups = [];
    dAbove = null;

    Forget() {
      this.dKnown = new Float32Array(0);
      this.dGroups = [];
      this.dAbove = null;
    }
    Of(iPlace) {
      return this.dKnown[iPlace] || this.dRow;
    }
    Sum(iPlaces) {
      return iPlaces.reduce((d, iPlace) => d + this.Of(iPlace), 0);
    }
    /** Returns what the height differs by from the one before. */
    Set(iPlace, dHeight) {
      const dMore = dHeight - this.Of(iPlace);
      if (Math.abs(dMore) < 0.01) return 0;
      if (iPlace >= this.dKnown.length) {
        const dKnown = new Float32Array(2 * iPlace + RowsOfSum);
        dKnown.set(this.dKnown);
        this.dKnown = dKnown;
      }
      this.dKnown[iPlace] = dHeight;
      const iGroup = Math.floor(iPlace / RowsOfSum);
      while (this.dGroups.length <= iGroup) this.dGroups.push(0);
      this.dGroups[iGroup] += dMore;
      this.dAbove = null;
      return dMore;
    }
    /** The height of all rows above a place. */
    Above(iPlace) {
      if (this.dAbove === null) {
        let dSum = 0;
        this.dAbove = this.dGroups.map((d) => (dSum += d) - d);
        this.dAbove.push(dSum);
      }
      const iGroup = Math.min(Math.floor(iPlace / RowsOfSum), this.dGroups.length);
      let dSum = iPlace * this.dRow + this.dAbove[iGroup];
      if (iGroup < this.dGroups.length) {
        for (let i = iGroup * RowsOfSum; i < iPlace; ++i) dSum += this.Of(i) - this.dRow;
      }
      return dSum;
    }
    /** The place of the row at a height, of so many rows. */
    At(dHeight, iCount) {
      let iLow = 0;
      for (let iHigh = iCount; iHigh - iLow > 1; ) {
        const iMiddle = (iLow + iHigh) >> 1;
        if (this.Above(iMiddle) <= dHeight) iLow = iMiddle;
        else iHigh = iMiddle;
      }
      return iLow;
    }
  }

  // ---- the rows on the screen -------------------------------------------------

  /** A list of up to so many rows has elements for all of them. */
  const RowsWhole = 200;
  /** The most rows that are printed. */
  const RowsPrinted = 5000;
  /**
   * Pixels. The browser knows places with 24 bits, so rows some million pixels down are
   * not evenly spaced any more. A list that is higher is pressed together, but for so
   * much at its beginning and its end.
   */
  const HighestList = 4e6;
  const HighestEnd = 2e5;
  /** Milliseconds after the last step of the wheel. */
  const RestOfWheel = 300;

  const IsGap = (oElement) => oElement?.className === "zelListGap";

  /** The most rows of which is found out which ones came and went. */
  const RowsCompared = 5000;

  /** Rows of texts that came, by what they begin with, and how many went. */
  const Compared = (oOld, oNew) => {
    const oCame = new Set();
    if (oOld.iCount === 0 || Math.max(oOld.iCount, oNew.iCount) > RowsCompared) return { oCame, iWent: 0 };
    const oLeft = new Map();
    const Each = (oRows, Do) => {
      for (const oPart of oRows.oParts.filter((o) => o instanceof RecordPart)) oPart.Keys(0).forEach((sKey, i) => Do(sKey, oPart.iStart + i));
    };
    let iWent = 0;
    Each(oOld, (sKey) => {
      oLeft.set(sKey, (oLeft.get(sKey) ?? 0) + 1);
      ++iWent;
    });
    Each(oNew, (sKey, iRow) => {
      const iLeft = oLeft.get(sKey) ?? 0;
      if (iLeft === 0) return void oCame.add(iRow);
      oLeft.set(sKey, iLeft - 1);
      --iWent;
    });
    return { oCame, iWent };
  };

  /** What the elements of a row before are found by. */
  const OldKey = (sKind, sKey) => `${sKind}${Separator}${sKey}`;

  /** An element for another row than before. */
  const Unmarked = (oElement) => {
    for (const o of WithAll(oElement)) {
      if (o.hasAttribute("data-zel-changed")) o.removeAttribute("title");
      for (const sName of ["data-zel-mark", "data-zel-changed"]) o.removeAttribute(sName);
    }
    return oElement;
  };

  /** Makes elements for the rows near the screen, in the order in which rows are shown. */
  class RowWindow {
    oHeights = new Heights();
    /** Rows by place; null for all as they were added. */
    oOrder = null;
    /** Elements in the body by row, and rows by element. */
    oMade = new Map();
    oRowOf = new WeakMap();
    /** What stands in the body, from top to bottom: element, first place, place after the last. */
    oSpans = [];
    iFrom = 0;
    iTo = 0;
    bChanged = true;
    bPrinting = false;
    /** The height of all rows, and their height on the page. */
    dAll = 0;
    dShown = 0;
    /** How far down the list was when it was drawn last, and how much further than the rows made are. */
    dSeen = -Infinity;
    dOffset = 0;
    iSettleTimer = 0;
    oGaps = [];
    /** Elements for records' rows that are not in use, by the columns that their rows had. */
    oFree = new Map();
    oKinds = new WeakMap();
    oPlain = null;
    oRuler = null;
    /** While rows are replaced: elements of the rows before by their columns and what they begin with. */
    oOld = new Map();
    /** And the program's rows that are still in the body. */
    oLeft = new Set();

    /** Added is called with nodes that others have put into the body. */
    constructor(oTable, oRows, Added) {
      this.oTable = oTable;
      this.oRows = oRows;
      this.Added = Added;
      this.oBody = oTable.tBodies[0];
      /** The row after which the rows follow. */
      this.oStart = [...this.oBody.rows].findLast((oRow, i) => i === 0 || IsHidden(oRow));
      /** The program's rows that are not shown. */
      this.oAway = Make("tbody", "zelListAway", { hidden: true });
      oTable.append(this.oAway);
      this.oEnd = new AbortController();
      window.addEventListener("scroll", () => this.Draw(), { passive: true, signal: this.oEnd.signal });
      // A list that is as high as its rows must not forget their heights for that.
      let dWidth = 0;
      const OnWidth = ([{ contentRect }]) => {
        if (contentRect.width !== dWidth) this.Resized();
        dWidth = contentRect.width;
      };
      this.oResizeObserver = new ResizeObserver(OnWidth);
      this.oResizeObserver.observe(oTable.parentElement);
      this.oObserver = new MutationObserver((oRecords) => this.Tell(oRecords));
      this.oObserver.observe(this.oBody, { childList: true });
    }

    End() {
      clearTimeout(this.iSettleTimer);
      this.oEnd.abort();
      this.oResizeObserver.disconnect();
      this.oObserver.disconnect();
    }

    /** Takes what others have put into the body so far. */
    Look() {
      this.Tell(this.oObserver.takeRecords());
    }
    Tell(oRecords) {
      for (const oRecord of oRecords) this.Added(oRecord.addedNodes);
      if (oRecords.length > 0) this.oObserver.takeRecords();  // what was moved meanwhile
    }

    get iCount() {
      return this.oOrder?.length ?? this.oRows.iCount;
    }
    get bWhole() {
      return this.iCount <= RowsWhole;
    }
    RowAt(iPlace) {
      return this.oOrder?.[iPlace] ?? iPlace;
    }
    /** -1 for a row that is not shown. */
    PlaceOf(iRow) {
      return this.oOrder === null ? iRow : this.oOrder.indexOf(iRow);
    }
    /** The row with a node in it; undefined if there is none. */
    RowWith(oNode) {
      return this.oRowOf.get((oNode instanceof Element ? oNode : oNode?.parentElement)?.closest("tr"));
    }

    Arrange(oOrder) {
      this.oOrder = oOrder;
      this.Resized();
    }

    /** Shows other rows in place of these; what the user looks at stays where it is. */
    Replace(oRows, oOrder) {
      const oFocused = this.RowWith(document.activeElement);
      const iCell = document.activeElement?.closest("td, th")?.cellIndex ?? -1;
      const iAnchor = oFocused ?? this.RowAt(this.iFirstVisible);
      const sAnchor = this.KeyAt(iAnchor);
      const dTop = this.oMade.get(iAnchor)?.getBoundingClientRect().top;
      const bScrolled = this.oBody.getBoundingClientRect().top < 0;

      const oKept = new Map(oRows.oParts.flatMap((oPart) => Array.from(oPart.oElements.entries(), ([i, oRow]) => [oRow, oPart.iStart + i])));
      for (const [iRow, oElement] of this.oMade) {
        if (oKept.has(oElement)) continue;
        const sOld = OldKey(this.oKinds.get(oElement), this.KeyAt(iRow));
        if (this.oRows.Element(iRow) === oElement) oElement.remove();
        else if (!this.oOld.get(sOld)?.push(oElement)) this.oOld.set(sOld, [oElement]);
      }
      for (const oRow of [...this.oAway.rows]) oKept.has(oRow) || oRow.remove();
      for (const oRow of this.oBody.rows) if (oKept.has(oRow) && !IsHidden(oRow)) this.oLeft.add(oRow);
      if (oRows.iCount !== this.oRows.iCount) this.oHeights.Forget();
      const { oCame, iWent } = Compared(this.oRows, oRows);
      this.oMade.clear();
      this.oRowOf = new WeakMap(oKept);
      this.oRows = oRows;
      this.oOrder = oOrder;
      this.Changed();
      for (const iRow of oCame) this.oMade.get(iRow)?.dispatchEvent(new CustomEvent("zelcame", { bubbles: true }));
      if (iWent > 0) this.oBody.dispatchEvent(new CustomEvent("zelwent", { bubbles: true, detail: String(iWent) }));

      const iNow = bScrolled || oFocused !== undefined ? this.Find(sAnchor, iAnchor) : -1;
      if (iNow < 0 || sAnchor === undefined) return;
      if (oFocused !== undefined) this.Refocus(iNow, iCell);
      if (bScrolled && dTop !== undefined) this.ScrollBack(iNow, dTop);
    }

    KeyAt(iRow) {
      return iRow < this.oRows.iCount ? this.oRows.Texts(iRow)[0] : undefined;
    }

    /** The row that begins with a text, if possible at the same place; -1 if there is none. */
    Find(sKey, iRow) {
      if (this.KeyAt(iRow) === sKey) return iRow;
      for (const oPart of this.oRows.oParts) {
        const i = oPart.Keys(0).indexOf(sKey);
        if (i >= 0) return oPart.iStart + i;
      }
      return -1;
    }

    /** A row that was moved has lost the keyboard. */
    Refocus(iRow, iCell) {
      const oRow = this.oMade.get(iRow);
      if (oRow === undefined || oRow.contains(document.activeElement)) return;
      const oCell = oRow.cells[iCell];
      if (oCell?.matches("[tabindex], a[href], button")) oCell.focus({ preventScroll: true });
      else this.Focus(oRow);
    }

    ScrollBack(iRow, dTop) {
      const iPlace = this.PlaceOf(iRow);
      if (iPlace < 0) return;
      const dNow = this.oMade.get(iRow)?.getBoundingClientRect().top;
      scrollBy({ top: (dNow ?? this.oStart.getBoundingClientRect().bottom + this.OffsetOf(iPlace)) - dTop, behavior: "instant" });
      this.Draw();
    }
    Resized() {
      this.oHeights.Forget();
      this.dSeen = -Infinity;
      this.Changed();
    }
    Changed() {
      this.bChanged = true;
      this.Draw();
    }

    /** A row's elements that the program has made take the place of ours. */
    SetElement(iRow, oElement) {
      const oOwn = this.oMade.get(iRow);
      const bFocused = oOwn?.contains(document.activeElement);
      this.oMade.delete(iRow);
      oOwn?.after(oElement);
      oOwn?.remove();
      if (oOwn === undefined) this.oAway.append(oElement);
      else this.oMade.set(iRow, oElement);
      this.oRowOf.set(oElement, iRow);
      if (bFocused) this.Focus(oElement);
      this.bChanged = true;
    }

    Draw() {
      this.Look();
      this.DrawRows();
      this.oObserver.takeRecords();  // what we have moved ourselves
    }

    DrawRows() {
      const iCount = this.iCount;
      if (this.oRuler === null && !this.bWhole) this.MakeRuler();
      this.oRuler?.toggleAttribute("hidden", this.bWhole);
      const dPage = Math.max(innerHeight, 400);
      let dSeen = 0;
      if (!this.bWhole) {
        // The only question about the layout while rows of one line are scrolled.
        dSeen = Math.max(0, -this.oRuler.getBoundingClientRect().bottom);
        if (this.bOneLine) this.MeasureLine();
      }
      this.MeasureAll();
      const dMost = Math.max(this.dAll - dPage, 0);
      // Small steps are the same in a list that is pressed together.
      const bStep = Math.abs(dSeen - this.dSeen) < 2 * dPage && dSeen > 0 && dSeen - this.dOffset >= 0 && dSeen - this.dOffset < dMost;
      const dOffset = bStep && this.dAll > this.dShown ? this.dOffset : dSeen - this.OnList(dSeen);
      if (Math.abs(dOffset - this.dOffset) > 0.5) this.bChanged = true;
      this.dOffset = this.bPrinting ? 0 : dOffset;
      this.dSeen = dSeen;
      const dAt = Math.min(dSeen - dOffset, dMost);
      this.SettleSoon();
      const At = (dHeight) => this.oHeights.At(dHeight, iCount);
      const bEnough =
        (this.iFrom === 0 || At(dAt - dPage / 2) >= this.iFrom) && (this.iTo === iCount || At(dAt + 1.5 * dPage) < this.iTo);
      if (!this.bChanged && (bEnough || this.bWhole)) return;
      this.bChanged = false;

      if (this.bPrinting) [this.iFrom, this.iTo] = [0, Math.min(iCount, RowsPrinted)];
      else if (this.bWhole) [this.iFrom, this.iTo] = [0, iCount];
      else [this.iFrom, this.iTo] = [At(dAt - dPage), Math.min(At(dAt + 2 * dPage) + 1, iCount)];
      this.Place();
      if (!this.bWhole) this.MeasureRows(At(dAt));
      this.Describe();
    }

    /** A hidden row with each column's longest text: columns keep their width whatever rows are made. */
    MakeRuler() {
      this.oRuler = this.MakeRow();
      this.oRuler.className = "zelListRuler";
      this.oRuler.setAttribute("aria-hidden", "true");
      this.oStart.after(this.oRuler);
      this.oStart = this.oRuler;
    }

    MakeRow() {
      if (this.oPlain === null) {
        const oTemplate = [...this.oBody.rows].find(IsHidden) ?? this.oBody.rows[1];
        this.oPlain = oTemplate.cloneNode(true);
        this.oPlain.removeAttribute("id");
        this.oPlain.style.display = "";
      }
      return this.oPlain.cloneNode(true);
    }

    MakeGap() {
      const oGap = Make("tr", "zelListGap");
      oGap.setAttribute("role", "presentation");
      oGap.append(Make("td", "", { colSpan: Math.max(this.oBody.rows[0].cells.length, 1) }));
      return oGap;
    }

    /** The rows with an end of the selection, or with the focus. */
    Pinned() {
      const oSelection = getSelection();
      const oNodes = [oSelection.anchorNode, oSelection.focusNode, document.activeElement];
      return oNodes.map((oNode) => this.RowWith(oNode)).filter((iRow) => iRow !== undefined);
    }

    MeasureAll() {
      this.dAll = this.oHeights.Above(this.iCount);
      this.dShown = Math.min(this.dAll, HighestList);
    }

    /** How far down in the list something on the page is. */
    OnList(dOnPage) {
      const dMore = this.dAll - this.dShown;
      const dPressed = Math.min(Math.max((dOnPage - HighestEnd) / (HighestList - 2 * HighestEnd), 0), 1);
      return dOnPage + dMore * dPressed;
    }

    /** Where on the page something in the list is. */
    OnPage(dOnList) {
      const dMore = this.dAll - this.dShown;
      const dPressed = Math.min(Math.max((dOnList - HighestEnd) / (HighestList - 2 * HighestEnd + dMore), 0), 1);
      return dOnList - dMore * dPressed;
    }

    /** When the wheel rests, the rows on the screen are put where they belong, without moving on the screen. */
    SettleSoon() {
      clearTimeout(this.iSettleTimer);
      // The page is scrolled by whole pixels.
      const dOff = Math.round(this.OnPage(this.dSeen - this.dOffset) - this.dSeen);
      if (this.bWhole || this.bPrinting || dOff === 0) return;
      this.iSettleTimer = setTimeout(() => {
        this.dOffset += dOff;
        this.dSeen += dOff;
        this.Place();
        this.oObserver.takeRecords();
        scrollBy(0, dOff);
      }, RestOfWheel);
    }

    /** Where a place is, in pixels below the start. */
    OffsetOf(iPlace) {
      const dAbove = this.oHeights.Above(iPlace);
      return iPlace >= this.iFrom && iPlace <= this.iTo ? Math.max(dAbove + this.dOffset, 0) : this.OnPage(dAbove);
    }

    /** Puts the rows from iFrom to iTo and the pinned ones into the body, with gaps for all others. */
    Place() {
      const iCount = this.iCount;
      const oPlaces = new Map();
      for (let iPlace = this.iFrom; iPlace < this.iTo; ++iPlace) oPlaces.set(iPlace, this.RowAt(iPlace));
      for (const iRow of this.Pinned()) oPlaces.set(this.PlaceOf(iRow), iRow);
      oPlaces.delete(-1);

      const oWanted = new Set(oPlaces.values());
      for (const [iRow, oElement] of this.oMade) {
        if (!oWanted.has(iRow)) this.Release(iRow, oElement);
      }
      this.oSpans = [];
      let dEnd = 0;
      let iNext = 0;
      let iGap = 0;
      const AddGap = (iPlace, dOffset) => {
        if (iPlace === iNext) return;
        const oGap = (this.oGaps[iGap++] ??= this.MakeGap());
        oGap.style.height = `${Math.max(dOffset - dEnd, 0)}px`;
        this.oSpans.push([oGap, iNext, iPlace]);
        dEnd = dOffset;
      };
      const iPlaces = [...oPlaces.keys()].sort((i, iOther) => i - iOther);
      // Pinned rows above the others leave them where they are.
      let dBefore = this.oHeights.Sum(iPlaces.filter((iPlace) => iPlace < this.iFrom));
      for (const iPlace of iPlaces) {
        const dMost = this.OffsetOf(this.iFrom) - dBefore;
        AddGap(iPlace, iPlace < this.iFrom ? Math.min(this.OffsetOf(iPlace), dMost) : this.OffsetOf(iPlace));
        if (iPlace < this.iFrom) dBefore -= this.oHeights.Of(iPlace);
        this.oSpans.push([this.MadeRow(oPlaces.get(iPlace), iPlace), iPlace, iPlace + 1]);
        dEnd += this.oHeights.Of(iPlace);
        iNext = iPlace + 1;
      }
      AddGap(iCount, this.bPrinting ? dEnd : this.dShown);
      for (const oGap of this.oGaps.splice(iGap)) oGap.remove();
      this.ForgetOld();

      let oAt = this.oStart;
      for (const [oElement] of this.oSpans) {
        // A gap gives way, because a row that is moved loses the keyboard.
        while (oAt.nextElementSibling !== oElement && IsGap(oAt.nextElementSibling)) oAt.nextElementSibling.remove();
        if (oAt.nextElementSibling !== oElement) oAt.after(oElement);
        oAt = oElement;
      }
    }

    /** Takes away what the rows before have left. */
    ForgetOld() {
      for (const oElement of [...this.oOld.values()].flat()) this.Free(oElement);
      this.oOld.clear();
      const oShown = new Set(this.oMade.values());
      for (const oRow of this.oLeft) oShown.has(oRow) || this.oAway.append(oRow);
      this.oLeft.clear();
    }

    Release(iRow, oElement) {
      this.oMade.delete(iRow);
      if (this.oRows.Element(iRow) === oElement) this.oAway.append(oElement);
      else this.Free(oElement);
    }

    Free(oElement) {
      this.oRowOf.delete(oElement);
      oElement.remove();
      const sKind = this.oKinds.get(oElement);
      if (!this.oFree.get(sKind)?.push(oElement)) this.oFree.set(sKind, [oElement]);
    }

    MadeRow(iRow, iPlace) {
      let oElement = this.oMade.get(iRow);
      if (oElement === undefined) {
        oElement = this.oRows.Element(iRow) ?? this.Filled(iRow);
        this.oMade.set(iRow, oElement);
        this.oRowOf.set(oElement, iRow);
      }
      if (this.bWhole) oElement.removeAttribute("aria-rowindex");
      else oElement.setAttribute("aria-rowindex", iPlace + 2);
      return oElement;
    }

    /** An element for a record's row. The control knows a click in it by the number. */
    Filled(iRow) {
      const oPart = this.oRows.PartOf(iRow);
      const i = iRow - oPart.iStart;
      const oSame = this.oOld.get(OldKey(oPart.sKind, this.KeyAt(iRow)))?.shift();
      const oElement = oSame ?? Unmarked(this.oFree.get(oPart.sKind)?.pop() ?? this.MakeRow());
      this.oKinds.set(oElement, oPart.sKind);
      oElement.dataset.zelRow = oPart.NumberOf(i);
      oPart.Fill(i, oElement, (oChanged, sBefore) => {
        if (oSame !== undefined) oChanged.dispatchEvent(new CustomEvent("zelchanged", { bubbles: true, detail: sBefore }));
      });
      return oElement;
    }

    /** Tells screen readers how many rows there are, and the columns how long their texts are. */
    Describe() {
      const oHeadings = this.oBody.rows[0];
      for (const [o, sName, iValue] of [[this.oTable, "aria-rowcount", this.iCount + 1], [oHeadings, "aria-rowindex", 1]]) {
        if (this.bWhole) o.removeAttribute(sName);
        else o.setAttribute(sName, iValue);
      }
      Array.from(this.oRuler?.cells ?? []).forEach((oCell, i) => {
        const oWithText = oCell.firstElementChild ?? oCell;
        const sText = this.oRows.sLongest[i] ?? "";
        if (oWithText.textContent !== sText) oWithText.textContent = sText;
      });
    }

    // ---- heights

    /** All rows have one line, and so the same height. */
    get bOneLine() {
      const oRow = this.oSpans.find(([oElement]) => !IsGap(oElement))?.[0];
      return oRow !== undefined && Array.from(oRow.cells).every((oCell) => getComputedStyle(oCell).whiteSpace === "nowrap");
    }

    MeasureLine() {
      const oMade = this.oSpans.filter(([oElement, iFrom]) => iFrom >= this.iFrom && iFrom < this.iTo && !IsGap(oElement));
      if (oMade.length < 2) return;
      const dHeight = oMade.at(-1)[0].getBoundingClientRect().bottom - oMade[0][0].getBoundingClientRect().bottom;
      const dRow = dHeight / (oMade.length - 1);
      if (dRow <= 0 || Math.abs(dRow - this.oHeights.dRow) < 0.01) return;
      this.oHeights.dRow = dRow;
      this.oHeights.Forget();
      this.bChanged = true;
    }

    /** As long as no height is known, those of the rows made stand for all. */
    EstimateRow() {
      const oMade = this.oSpans.filter(([oElement]) => !IsGap(oElement));
      const dSum = oMade.reduce((d, [oElement]) => d + oElement.getBoundingClientRect().height, 0);
      if (this.oHeights.dKnown.length > 0 || dSum === 0) return false;
      this.oHeights.dRow = dSum / oMade.length;
      return true;
    }

    /** Learns the heights of the rows made; the first row on the screen stays where it is. */
    MeasureRows(iFirst) {
      if (this.bOneLine) return;
      let bAny = this.EstimateRow();
      let dAbove = 0;
      for (const [oElement, iPlace] of this.oSpans) {
        const dHeight = IsGap(oElement) ? 0 : oElement.getBoundingClientRect().height;
        if (dHeight === 0) continue;
        const dMore = this.oHeights.Set(iPlace, dHeight);
        if (dMore !== 0) bAny = true;
        if (iPlace < iFirst) dAbove += dMore;
      }
      if (!bAny) return;
      this.MeasureAll();
      this.Place();
      if (Math.abs(dAbove) >= 1) scrollBy(0, dAbove);
    }

    // ---- going to a row

    /** Scrolls back to the first row if that is above the screen. */
    ShowFirst() {
      // The cells of the headings stay on the screen, their row does not.
      const dAbove = this.oBody.rows[0].getBoundingClientRect().bottom - this.Visible.dFirst;
      if (dAbove >= 0) return;
      scrollBy({ top: dAbove, behavior: "instant" });
      this.Draw();
    }

    /** Gives the keyboard to a row, or to what can have it in the row. */
    GoTo(iPlace) {
      if (!this.bWhole) {
        const dStart = this.oStart.getBoundingClientRect().bottom;
        const dTop = dStart + this.OffsetOf(iPlace);
        const { dFirst, dLast } = this.Visible;
        const dHeight = this.oHeights.Of(iPlace);
        if (dTop < dFirst) scrollBy(0, dTop - dFirst);
        else if (dTop + dHeight > dLast) scrollBy(0, dTop + dHeight - dLast);
        this.Draw();
      }
      const oRow = this.oMade.get(this.RowAt(iPlace));
      if (oRow === undefined) return;
      this.Focus(oRow);
      const { top, bottom } = oRow.getBoundingClientRect();
      const { dFirst, dLast } = this.Visible;
      if (top < dFirst) scrollBy(0, top - dFirst);
      else if (bottom > dLast) scrollBy(0, bottom - dLast);
    }

    Focus(oRow) {
      const oTarget = oRow.querySelector("a[href], button, [tabindex]") ?? oRow;
      if (oTarget === oRow) {
        oRow.tabIndex = -1;
        oRow.addEventListener("focusout", () => oRow.removeAttribute("tabindex"), { once: true });
      }
      oTarget.focus({ preventScroll: true, focusVisible: true });
    }

    /** The part of the screen between headings and footer. */
    get Visible() {
      const oHeading = this.oBody.rows[0].cells[0];
      // The headings stay below what else stays at the top.
      const dTop = oHeading === undefined ? 0 : parseFloat(getComputedStyle(oHeading).top) || 0;
      const dFirst = dTop + (oHeading?.getBoundingClientRect().height ?? 0);
      const oFooter = document.querySelector(".zelFormFtr");
      return { dFirst, dLast: Math.min(innerHeight, oFooter?.getBoundingClientRect().top ?? innerHeight) };
    }

    /** The first place on the screen. */
    get iFirstVisible() {
      const { dFirst } = this.Visible;
      const oSpan = this.oSpans.find(([oElement]) => !IsGap(oElement) && oElement.getBoundingClientRect().top >= dFirst - 1);
      return oSpan?.[1] ?? 0;
    }

    // ---- copying

    /** The rows in a range as lines. */
    Lines(oRange) {
      const oSpans = this.oSpans.filter(([oElement]) => oRange.intersectsNode(oElement));
      if (oSpans.length === 0) return [];
      const oElements = new Map(oSpans.map(([oElement, iPlace]) => [iPlace, oElement]));
      const oLines = [];
      for (let iPlace = oSpans[0][1]; iPlace < oSpans.at(-1)[2]; ++iPlace) {
        const oElement = oElements.get(iPlace);
        if (oElement !== undefined && !IsGap(oElement)) oLines.push(...LineOf(oElement, oRange));
        else oLines.push(this.oRows.Texts(this.RowAt(iPlace)).map(OneLine).join("\t"));
      }
      return oLines;
    }
  }

  // ---- lists ------------------------------------------------------------------

  const SelectedRange = () => (getSelection().rangeCount > 0 ? getSelection().getRangeAt(0).cloneRange() : null);

  const SameRange = (oRange, oOther) =>
    oOther !== null &&
    oRange.compareBoundaryPoints(Range.START_TO_START, oOther) === 0 &&
    oRange.compareBoundaryPoints(Range.END_TO_END, oOther) === 0;

  const Directions = ["none", "ascending", "descending"];

  /** Milliseconds between two looks at rows that keep coming. */
  const RestOfRows = 100;
  /** Milliseconds within which keys belong to one word. */
  const RestOfKeys = 1000;

  class List {
    constructor(oTable) {
      this.oTable = oTable;
      this.oBody = oTable.tBodies[0];
      this.oHeadings = this.oBody.rows[0];
      this.oRows = new Rows();
      this.oWindow = new RowWindow(oTable, this.oRows, (oNodes) => this.Add(oNodes));
      this.iColumn = -1;
      this.iDirection = 0;
      this.sFilter = "";
      this.bOnly = false;
      /** The arranging in progress, and whether its first rows are to be seen then. */
      this.oWork = null;
      this.bFromTop = false;
      /** The timers for looking at new rows, and the earliest time for arranging them. */
      this.iDrawTimer = 0;
      this.iArrangeTimer = 0;
      this.dNext = 0;
      /** What was selected before the mouse was pressed on a heading. */
      this.oSelectedBefore = null;
      /** The rows that come while the page is refreshed. */
      this.oFresh = null;
      /** What was typed last to find a row, and when. */
      this.sTyped = "";
      this.dTyped = -Infinity;

      // For other scripts of the page: the rows as they are seen, in order, with all
      // those that have no elements. They stay the same however the list changes.
      oTable.zelList = {
        Headings: () => Array.from(this.oHeadings.cells, (oCell) => oCell.textContent),
        Shown: () => {
          const { oRows } = this;
          const { iCount, oOrder } = this.oWindow;
          return { iCount, Texts: (i) => oRows.Texts(oOrder?.[i] ?? i) };
        },
      };

      this.MakeBar();
      this.Add(this.oBody.rows);
      this.Show();
      this.Decorate();
      this.oHeadings.addEventListener("click", (oEvent) => this.OnHeading(oEvent));
      this.oHeadings.addEventListener("mousedown", (oEvent) => {
        // Two clicks in a row sort twice; they do not select the heading's text.
        if (oEvent.detail > 1) oEvent.preventDefault();
        this.oSelectedBefore = SelectedRange();
      });
      oTable.addEventListener("zelrows", (oEvent) => this.OnRecord(oEvent));
      oTable.addEventListener("zelrowsbegin", (oEvent) => this.OnBegin(oEvent));
      oTable.addEventListener("zelrow", (oEvent) => this.OnElement(oEvent));
      oTable.addEventListener("zelrowsend", () => this.OnEnd());
      for (const sEvent of ["mouseover", "focusin"]) {
        this.oBody.addEventListener(sEvent, ({ target }) => this.ShowDetail(target.closest("tr")));
      }
      new MutationObserver(() => this.Decorate()).observe(this.oHeadings, { childList: true, subtree: true });
    }

    /** Lets go of a table that is no longer there. */
    End() {
      clearTimeout(this.iDrawTimer);
      clearTimeout(this.iArrangeTimer);
      if (this.oWork !== null) this.oWork.bGivenUp = true;
      this.oFinding = null;
      this.oWindow.End();
    }

    // ---- the bar and the headings

    MakeBar() {
      this.oFilter = Make("input", "zelListFilter", { type: "search", placeholder: "Filter rows", spellcheck: false, autocomplete: "off" });
      this.oFilter.setAttribute("aria-label", "Filter rows");
      this.oFilter.addEventListener("input", () => {
        this.sFilter = this.oFilter.value.trim().toLowerCase();
        this.bFromTop = true;
        this.Arrange();
      });
      this.oCount = Make("span", "zelListCount");
      this.oCount.setAttribute("role", "status");
      this.oBar = Make("div", "zelListBar");
      this.oBar.append(this.oFilter);
      if (this.oTable.classList.contains("zelTblGrid")) this.oBar.append(this.MakeWrapButton());
      if (this.oTable.dataset.zelOnly !== undefined) this.oBar.append(this.MakeOnlyButton());
      this.oBar.append(this.oCount);
      this.oTable.before(this.oBar);
    }

    // Long texts are cut to one line unless the user wants them wrapped.
    MakeWrapButton() {
      const oButton = Make("button", "zelBtn zelListWrap", { type: "button", textContent: "Wrap long texts" });
      oButton.setAttribute("aria-pressed", "false");
      oButton.addEventListener("click", () => {
        oButton.setAttribute("aria-pressed", String(this.oBar.classList.toggle("zelWrap")));
        this.oWindow.Resized();
      });
      return oButton;
    }

    MakeOnlyButton() {
      this.oOnly = Make("button", "zelBtn zelListOnly", { type: "button", textContent: this.oTable.dataset.zelOnly, hidden: true });
      this.oOnly.setAttribute("aria-pressed", "false");
      this.oOnly.addEventListener("click", () => {
        this.bOnly = !this.bOnly;
        this.oOnly.setAttribute("aria-pressed", String(this.bOnly));
        this.bFromTop = true;
        this.Arrange();
      });
      return this.oOnly;
    }

    ShowDetail(oRow) {
      const sDetail = oRow?.dataset.zelDetail ?? "";
      if (sDetail === "" && this.oDetail === undefined) return;
      if (this.oDetail === undefined) this.oTable.after((this.oDetail = Make("div", "zelListDetail")));
      this.oDetail.textContent = sDetail;
      this.oDetail.hidden = sDetail === "";
      this.oDetailed = oRow;
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
      const iColumn = oHeading.cellIndex;
      this.iDirection = iColumn === this.iColumn ? (this.iDirection + 1) % Directions.length : 1;
      this.iColumn = iColumn;
      for (const oOther of this.oHeadings.cells) oOther.removeAttribute("aria-sort");
      if (this.iDirection !== 0) oHeading.setAttribute("aria-sort", Directions[this.iDirection]);
      this.bFromTop = true;
      this.Arrange();
    }

    // ---- new rows

    get bArranged() {
      return this.iDirection !== 0 || this.sFilter !== "" || this.bOnly;
    }

    OnRecord(oEvent) {
      oEvent.preventDefault();
      if (this.oFresh !== null) return this.oFresh.AddRecord(oEvent.detail, oEvent.target);
      this.oWindow.Look();
      this.oRows.AddRecord(oEvent.detail, oEvent.target);
      this.ShowSoon();
    }

    /** All rows come anew. */
    OnBegin(oEvent) {
      oEvent.preventDefault();
      this.oWindow.Look();
      this.oFresh = new Rows();
      // Until they are shown, a click in the rows before means nothing.
      for (const oRow of this.oWindow.oMade.values()) delete oRow.dataset.zelRow;
    }

    OnElement({ target }) {
      const iNumber = Number(target.dataset.zelRow ?? 0);
      delete target.dataset.zelRow;
      if (iNumber === 0 || this.oFresh.SetElement(iNumber, target) < 0) this.oFresh.AddElement(target);
    }

    OnEnd() {
      this.oWindow.oObserver.takeRecords();
      this.oRows = this.oFresh;
      this.oFresh = null;
      this.Arrange();
    }

    /** Registers rows at the end of the body, or elements for a record's rows. */
    Add(oNodes) {
      for (const oRow of [...oNodes]) {
        if (!(oRow instanceof HTMLTableRowElement) || oRow === this.oHeadings || IsHidden(oRow)) continue;
        const iNumber = Number(oRow.dataset.zelRow ?? 0);
        delete oRow.dataset.zelRow;
        const iRow = iNumber === 0 ? -1 : this.oRows.SetElement(iNumber, oRow);
        if (iRow >= 0) {
          this.oWindow.SetElement(iRow, oRow);
        } else {
          this.oRows.AddElement(oRow);
          if (this.oRows.iCount > RowsWhole || this.bArranged) this.oWindow.oAway.append(oRow);
          else this.oWindow.oLeft.add(oRow);
        }
        this.ShowSoon();
      }
    }

    /** The first rows at once, further ones from time to time. */
    ShowSoon() {
      if (this.iDrawTimer !== 0) return;
      const iDelay = this.oWindow.iTo === 0 ? 0 : RestOfRows;
      this.iDrawTimer = setTimeout(() => {
        this.iDrawTimer = 0;
        this.Show();
      }, iDelay);
    }

    Show() {
      if (this.bArranged) return this.ArrangeLater();
      this.oWindow.Changed();
      this.Tell();
    }

    Tell() {
      const iAll = this.oRows.iCount;
      const sFound = `${Grouped(this.oWindow.iCount)} of ${Grouped(iAll)}`;
      this.oCount.textContent = iAll === 0 ? "No rows" : this.sFilter === "" && !this.bOnly ? "" : sFound;
      this.oBar.classList.toggle("zelNone", iAll === 0);
      if (this.oOnly?.hidden) this.oOnly.hidden = !UpTo(iAll).some((iRow) => this.oRows.State(iRow) !== "");
      if (this.oDetailed !== undefined) this.ShowDetail(this.oDetailed.isConnected ? this.oDetailed : undefined);
    }

    // ---- sorting and filtering

    // While rows keep coming they are arranged repeatedly, but so rarely that it
    // only takes a small part of the time, however many there are.
    ArrangeLater() {
      clearTimeout(this.iArrangeTimer);
      const dDelay = Math.max(RestOfRows, this.dNext - performance.now());
      this.iArrangeTimer = setTimeout(() => (this.oWork === null ? this.Arrange() : this.ArrangeLater()), dDelay);
    }

    /** Sorts and filters all rows. What the user has asked for last replaces what is still being done. */
    async Arrange() {
      clearTimeout(this.iArrangeTimer);
      if (this.oWork !== null) this.oWork.bGivenUp = true;
      const oWork = (this.oWork = new Work());
      this.oBar.setAttribute("aria-busy", "true");
      const dBegin = performance.now();
      const oBusy = setTimeout(() => (this.oCount.textContent = this.iDirection === 0 ? "Filtering\u2026" : "Sorting\u2026"), 200);
      const iRows = this.oRows.iCount;
      const oOrder = await this.Order(oWork);
      // The rows shown are made in a slice of their own.
      if (oWork.bRested) await oWork.Rest();
      clearTimeout(oBusy);
      if (oWork.bGivenUp) return;
      this.oWork = null;

      const oFocused = document.activeElement;
      if (this.oWindow.oRows === this.oRows) this.oWindow.Arrange(oOrder);
      else this.oWindow.Replace(this.oRows, oOrder);
      if (oFocused !== document.activeElement) oFocused?.focus({ preventScroll: true });
      if (this.bFromTop) this.oWindow.ShowFirst();
      this.bFromTop = false;
      this.oBar.removeAttribute("aria-busy");
      this.Tell();
      this.dNext = performance.now() + 10 * (performance.now() - dBegin);
      if (this.bArranged && this.oRows.iCount > iRows) this.ArrangeLater();
    }

    /** The rows to be shown; null for all as they were added, and for an order that is no longer wanted. */
    async Order(oWork) {
      if (!this.bArranged) return null;
      let oFound = this.sFilter === "" ? UpTo(this.oRows.iCount) : await this.oRows.Matching(this.sFilter, oWork);
      if (oFound !== null && this.bOnly) oFound = await oWork.Filter(oFound, (iRow) => !["", "idle"].includes(this.oRows.State(iRow)));
      if (oFound === null || this.iDirection === 0) return oFound;
      return this.oRows.Ordered(oFound, this.iColumn, Directions[this.iDirection] === "descending" ? -1 : 1, oWork);
    }

    // ---- the keyboard

    /** True for a key that has moved to another row. */
    OnKey(oEvent) {
      const oWindow = this.oWindow;
      const iLast = oWindow.iCount - 1;
      if (iLast < 0 || oEvent.ctrlKey || oEvent.altKey || oEvent.metaKey) return false;
      const iRow = oWindow.RowWith(document.activeElement);
      const iPlace = iRow === undefined ? -1 : oWindow.PlaceOf(iRow);
      if (oEvent.key.length === 1) return this.OnLetter(oEvent.key, iPlace);
      if (oEvent.shiftKey) return false;
      const { dFirst, dLast } = oWindow.Visible;
      const iPage = Math.max(1, Math.floor((dLast - dFirst) / oWindow.oHeights.dRow) - 1);
      const iSteps = { ArrowDown: 1, ArrowUp: -1, PageDown: iPage, PageUp: -iPage, Home: -Infinity, End: Infinity }[oEvent.key];
      if (iSteps === undefined) return false;
      // Without a current row the arrows enter the list, and End, since its end is only
      // estimated until it is seen; other keys scroll the page.
      if (iPlace < 0 && Math.abs(iSteps) !== 1 && iSteps !== Infinity) return false;
      const iFrom = iPlace < 0 && Math.abs(iSteps) === 1 ? oWindow.iFirstVisible - iSteps : iPlace;
      oWindow.GoTo(Math.min(Math.max(iFrom + iSteps, 0), iLast));
      if (iSteps === -Infinity) scrollTo(0, 0);
      return true;
    }

    /** Goes to the next row that begins with what is typed. */
    OnLetter(sLetter, iPlace) {
      const dNow = performance.now();
      const bGoesOn = dNow - this.dTyped < RestOfKeys;
      if (sLetter === " " && !bGoesOn) return false;
      this.sTyped = (bGoesOn ? this.sTyped : "") + sLetter.toLowerCase();
      this.dTyped = dNow;
      this.Find(this.sTyped, bGoesOn ? Math.max(iPlace, 0) : iPlace + 1);
      return true;
    }

    async Find(sText, iFrom) {
      const oWork = (this.oFinding = new Work());
      const oWindow = this.oWindow;
      const iBegins = new Uint8Array(this.oRows.iCount);
      for (const oPart of [...this.oRows.oParts]) {
        for (const i of oPart.Matches(sText)) {
          if (oPart.Texts(i)[0]?.trimStart().toLowerCase().startsWith(sText)) iBegins[oPart.iStart + i] = 1;
        }
        if (oWork.bDue && !(await oWork.Rest())) return;
        if (this.oFinding !== oWork) return;
      }
      const iCount = oWindow.iCount;
      for (let i = 0; i < iCount; ++i) {
        const iPlace = (iFrom + i) % iCount;
        if (iBegins[oWindow.RowAt(iPlace)] === 1) return oWindow.GoTo(iPlace);
      }
    }

    // ---- printing

    Print(bPrinting) {
      this.oWindow.bPrinting = bPrinting;
      this.oWindow.Changed();
      this.oNote?.remove();
      if (!bPrinting || this.oWindow.iTo === this.oWindow.iCount) return;
      const sText = `The first ${Grouped(this.oWindow.iTo)} of ${Grouped(this.oWindow.iCount)} rows.`;
      this.oNote = Make("p", "zelNote", { textContent: sText });
      this.oTable.before(this.oNote);
    }
  }

  // ---- copying --------------------------------------------------------------

  const OneLine = (sText) => sText.replace(/[\t\r\n]+/g, " ");

  /** The part of a cell that is in a range, as one line. */
  const Selected = (oCell, oRange) => {
    const oPart = document.createRange();
    oPart.selectNodeContents(oCell);
    if (oRange.compareBoundaryPoints(Range.START_TO_START, oPart) > 0) oPart.setStart(oRange.startContainer, oRange.startOffset);
    if (oRange.compareBoundaryPoints(Range.END_TO_END, oPart) < 0) oPart.setEnd(oRange.endContainer, oRange.endOffset);
    return OneLine(oPart.toString());
  };

  const CaptionOf = (oTable, oRange) => {
    const oCaption = oTable.caption;
    return oCaption !== null && oRange.intersectsNode(oCaption) ? [oCaption.textContent.trim()] : [];
  };

  /** The cells of a row in a range; none if there are none. */
  const LineOf = (oRow, oRange) => {
    if (IsHidden(oRow) || !oRange.intersectsNode(oRow)) return [];
    const oCells = [...oRow.cells].filter((oCell) => oRange.intersectsNode(oCell));
    return oCells.length === 0 ? [] : [oCells.map((oCell) => Selected(oCell, oRange)).join("\t")];
  };

  const oLists = new Map();

  const LinesOf = (oTable, oRange) => {
    const oList = oLists.get(oTable);
    if (oList !== undefined) return [...LineOf(oList.oHeadings, oRange), ...oList.oWindow.Lines(oRange)];
    return [...oTable.rows].flatMap((oRow) => LineOf(oRow, oRange));
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
    const oParts = oTables.map((oTable) => [...CaptionOf(oTable, oRange), ...LinesOf(oTable, oRange)].join("\n"));
    const sText = oParts.filter((sPart) => sPart !== "").join("\n\n");
    if (sText === "") return;
    oEvent.clipboardData.setData("text/plain", sText + "\n");
    oEvent.preventDefault();
  });

  // ---- the page ---------------------------------------------------------------

  /** The list that a key is for: the one with the keyboard, or the first on the screen. */
  const ListForKeys = () => {
    const oAll = [...oLists.values()];
    const IsSeen = (oTable) => oTable.getClientRects().length > 0 && oTable.getBoundingClientRect().bottom > 0;
    return (
      oAll.find((oList) => oList.oTable.contains(document.activeElement) || oList.oBar.contains(document.activeElement)) ??
      oAll.find((oList) => IsSeen(oList.oTable))
    );
  };

  /** Keys elsewhere, such as in a heading, have their own meaning. */
  const IsForRows = (oList, sKey) => {
    const oFocused = document.activeElement;
    if (oFocused === oList.oFilter) return sKey === "ArrowDown";
    if (oList.oBar.contains(oFocused)) return sKey.length > 1;
    return oFocused === null || oFocused === document.body || oList.oWindow.RowWith(oFocused) !== undefined;
  };

  const OnKey = (oEvent) => {
    const oList = ListForKeys();
    if (oList === undefined || oEvent.defaultPrevented) return;
    const bFind = oEvent.key === "f" && oEvent.ctrlKey && !oEvent.altKey && !oEvent.shiftKey;
    if (bFind) {
      oEvent.preventDefault();
      oList.oFilter.focus({ preventScroll: true });
      oList.oFilter.select();
      oList.oBar.scrollIntoView({ block: "nearest" });
    } else if (IsForRows(oList, oEvent.key) && oList.OnKey(oEvent)) {
      oEvent.preventDefault();
    }
  };

  const Begin = () => {
    for (const oList of oLists.values()) oList.End();
    oLists.clear();
    for (const oTable of document.querySelectorAll("table.zelTblSort")) oLists.set(oTable, new List(oTable));
  };

  // For tables.js.
  globalThis.zelNumbers = NumberReader;

  window.addEventListener("load", Begin);
  document.currentScript.dataset.beginsAgain = "";
  document.addEventListener("zelwbr3reset", Begin);
  window.addEventListener("beforeprint", () => oLists.forEach((oList) => oList.Print(true)));
  window.addEventListener("afterprint", () => oLists.forEach((oList) => oList.Print(false)));
  document.addEventListener("keydown", OnKey);
})();
