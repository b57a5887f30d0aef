/*
 * Long paths, cut in the middle where they do not fit: the folder that they begin
 * with and the file that they end with are what tells one from another.
 *
 * A cell for a path has the attribute "data-zel-path". Its text stays as the program
 * has written it, for copying, searching and screen readers; what is seen is drawn by
 * an element that the style sheet shortens, at any width and without measuring.
 */
(() => {
  "use strict";

  const Paths = "[data-zel-path]";
  /** Shorter texts always fit. */
  const ShortText = 24;
  /** The longest end of a path that is always seen. */
  const LongestEnd = 28;

  /** Where the end of a path begins: at its last separator, if that is near enough. */
  const EndOf = (sPath) => {
    const iSeparator = Math.max(sPath.lastIndexOf("/", sPath.length - 2), sPath.lastIndexOf("\\", sPath.length - 2));
    return Math.max(iSeparator, sPath.length - LongestEnd);
  };

  const Part = (sText) => {
    const oPart = document.createElement("span");
    oPart.dataset.text = sText;
    return oPart;
  };

  const Cut = (oCell) => {
    const sPath = oCell.textContent;
    const oShown = oCell.lastElementChild?.className === "zelCut" ? oCell.lastElementChild : null;
    if (oShown?.title === sPath) return;
    oShown?.remove();
    if (sPath.length <= ShortText || !/[/\\]/.test(sPath)) return;
    const iEnd = EndOf(sPath);
    const oCut = document.createElement("span");
    oCut.className = "zelCut";
    oCut.title = sPath;
    oCut.setAttribute("aria-hidden", "true");
    oCut.append(Part(sPath.slice(0, iEnd)), Part(sPath.slice(iEnd)));
    oCell.append(oCut);
  };

  const CutAll = () => document.querySelectorAll(Paths).forEach(Cut);

  let oObserver = null;

  const Begin = () => {
    oObserver?.disconnect();
    oObserver = new MutationObserver(CutAll);
    const oTables = new Set(Array.from(document.querySelectorAll(Paths), (oCell) => oCell.closest("tbody") ?? oCell));
    for (const oTable of oTables) oObserver.observe(oTable, { childList: true, subtree: true });
    CutAll();
  };

  window.addEventListener("load", Begin);
  document.currentScript.dataset.beginsAgain = "";
  document.addEventListener("zelwbr3reset", Begin);
})();
