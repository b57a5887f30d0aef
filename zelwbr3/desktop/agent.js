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
 * Everything on the wire, both ways, is a flat JSON list of whole numbers and
 * strings. Nothing here reads the layout or waits for a timer or a frame: a
 * hidden view slows both down.
 */
(() => {
  "use strict";

  // In front of this file stands the line that sets zelwbr3Theme.
  document.documentElement.setAttribute("data-theme", zelwbr3Theme);

  const Post = (...oItems) => webkit.messageHandlers.zelwbr3.postMessage(JSON.stringify(oItems));

  // ---- no default action for the mouse -------------------------------------

  const Cancel = (oEvent) => oEvent.preventDefault();
  for (const sEvent of ["click", "auxclick", "contextmenu", "submit", "dragstart", "dragover", "drop"]) {
    window.addEventListener(sEvent, Cancel, true);
  }

  if (window !== window.top) {
    Post("frame-begin");
    window.addEventListener("load", () => Post("frame-load"), true);
    return;
  }

  // ---- numbers ---------------------------------------------------------------

  // The control puts its navigation's number into the URL.
  const iSerial = Number(/[?&]zelwbr3=(\d+)/.exec(location.href)?.[1] ?? 0);

  const NumberKey = Symbol("number");
  const oNodes = [null];

  /** 0 for what the page's own scripts have added: the control ignores clicks and focus there. */
  const NumberOf = (oNode) => oNode[NumberKey] ?? 0;

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

  // ---- snapshot --------------------------------------------------------------

  const Begin = 1;      // tag, number
  const Attribute = 2;  // name, value; of the element begun last
  const Text = 3;       // text
  const End = 4;

  /** Appends an element and all below it to a list; Visit answers an element's number, or 0 to leave it out. */
  const Describe = (oElement, oList, Visit) => {
    const iNumber = Visit(oElement);
    if (iNumber === 0) return;
    oList.push(Begin, oElement.localName.toLowerCase(), iNumber);
    for (const { name, value } of oElement.attributes) oList.push(Attribute, name.toLowerCase(), value);
    for (let oNode = oElement.firstChild; oNode !== null; oNode = oNode.nextSibling) {
      if (oNode.nodeType === Node.ELEMENT_NODE) {
        Describe(oNode, oList, Visit);
      } else if (oNode.nodeType === Node.TEXT_NODE && oNode.data !== "") {
        oList.push(Text, oNode.data);
      }
    }
    oList.push(End);
  };

  window.addEventListener(
    "load",
    () => {
      const oList = [];
      Describe(document.documentElement, oList, (oElement) => {
        oElement[NumberKey] = oNodes.length;
        return oNodes.push(oElement) - 1;
      });
      Post("load", iSerial, ...oList);
    },
    { capture: true, once: true }
  );

  // ---- changes ---------------------------------------------------------------

  // By kind, with the number of items that follow it in a batch.
  const oChanges = {
    1: [2, (iNode, sText) => void (oNodes[iNode].textContent = sText)],
    2: [3, (iNode, sName, sText) => oNodes[iNode].setAttribute(sName, sText)],
    3: [2, (iNode, sName) => oNodes[iNode].removeAttribute(sName)],
    4: [2, (iNode, sText) => {
      oNodes[iNode].style.display = sText;
      if (oNodes[iNode].getAttribute("style") === "") oNodes[iNode].removeAttribute("style");
    }],
    5: [2, (iNode, iFirst) => void Adopt(oNodes[iNode], oNodes[iNode].cloneNode(true), iFirst)],
    6: [2, (iNode, iOther) => void oNodes[iNode].appendChild(oNodes[iOther])],
    7: [2, (iNode, iOther) => oNodes[iNode].after(oNodes[iOther])],
    8: [3, (iNode, iOther, sTag) => {
      const oElement = document.createElement(sTag);
      oElement[NumberKey] = iOther;
      oNodes[iOther] = oElement;
      oNodes[iNode].appendChild(oElement);
    }],
    9: [2, (iNode, sText) => oNodes[iNode].append(sText)],
  };

  let iLastBatch = 0;

  globalThis.zelwbr3 = {
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
      const oList = [];
      Describe(document.documentElement, oList, (oElement) => oElement[NumberKey] ?? 0);
      return JSON.stringify(oList);
    },
  };

  // ---- what the user does ----------------------------------------------------

  window.addEventListener("click", (oEvent) => oEvent.isTrusted && Post("click", iSerial, NumberOf(oEvent.target)), true);
  window.addEventListener("focusin", (oEvent) => Post("focus", iSerial, NumberOf(oEvent.target)), true);

  // Keys that belong to the page's own script: Escape empties a search field before
  // it leaves the page, Enter and Space press a button that the script has made and
  // that the program does not know. The program asks nothing when a key goes down,
  // so it is told beforehand.
  let sTaken = "0 0";
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
