/*
 * The tab strips of the page files, operated by keyboard.
 *
 * A strip is one stop of the Tab key: focus comes in at the selected tab and
 * leaves the strip as a whole; the arrow keys, Home and End move it from tab to
 * tab. Enter and Space are no business of this script: to select a tab is a
 * click, which the program takes.
 *
 * The script only moves the focus. It changes nothing in the document, which
 * stays exactly what its filler made it; so there is no roving tabindex here.
 */
(() => {
  "use strict";

  const Selected = "zelTbsLinkOn";
  const Selectable = [Selected, "zelTbsLinkOff"];

  const StripOf = (oNode) => (oNode instanceof Element ? oNode.closest(".zelTbs") : null);
  const TabsOf = (oStrip) => [...oStrip.children].filter((oChild) => Selectable.includes(oChild.className));

  let bTabKey = false;

  /** Where a key moves the focus among so many tabs; -1 for nowhere. */
  const Target = (sKey, iTab, iCount) => {
    switch (sKey) {
      case "ArrowRight": return (iTab + 1) % iCount;
      case "ArrowLeft": return (iTab + iCount - 1) % iCount;
      case "Home": return 0;
      case "End": return iCount - 1;
      default: return -1;
    }
  };

  document.addEventListener("keydown", (oEvent) => {
    bTabKey = oEvent.code === "Tab";  // together with Shift its key has no name in WebKit
    if (oEvent.ctrlKey || oEvent.altKey || oEvent.metaKey) return;
    const oStrip = StripOf(oEvent.target);
    if (oStrip === null) return;
    const oTabs = TabsOf(oStrip);
    if (oTabs.length === 0) return;
    if (bTabKey) {
      // From the end of the strip the browser's own step leads out of it.
      const oLinks = oStrip.querySelectorAll("a");
      oLinks[oEvent.shiftKey ? 0 : oLinks.length - 1].focus();
      return;
    }
    const iTarget = Target(oEvent.key, oTabs.indexOf(oEvent.target), oTabs.length);
    if (iTarget < 0) return;
    oEvent.preventDefault();
    oTabs[iTarget].focus();
  });

  document.addEventListener("pointerdown", () => { bTabKey = false; }, true);

  document.addEventListener("focusin", (oEvent) => {
    const oStrip = StripOf(oEvent.target);
    if (!bTabKey || oStrip === null || oStrip.contains(oEvent.relatedTarget)) return;
    TabsOf(oStrip).find((oTab) => oTab.className === Selected)?.focus();
  });
})();
