/*
 * Keyboard operation of the tab strips in page files.
 *
 * A strip is one stop of the Tab key: Tab enters it at the selected tab and
 * leaves it as a whole; the arrow keys, Home and End move from tab to tab. This
 * script does not handle Enter and Space: the program turns them into a click,
 * which selects the tab.
 *
 * The script only moves the focus. It does not change the document, which must
 * stay as the program filled it, so it does not use a roving tabindex.
 */
(() => {
  "use strict";

  const Selected = "zelTbsLinkOn";
  const Selectable = [Selected, "zelTbsLinkOff"];

  const StripOf = (oNode) => (oNode instanceof Element ? oNode.closest(".zelTbs") : null);
  const TabsOf = (oStrip) => [...oStrip.children].filter((oChild) => Selectable.includes(oChild.className));

  let bTabKey = false;

  /** The tab that a key moves the focus to; -1 if the key does not move it. */
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
    bTabKey = oEvent.code === "Tab";  // with Shift, WebKit gives its key no name
    if (oEvent.ctrlKey || oEvent.altKey || oEvent.metaKey) return;
    const oStrip = StripOf(oEvent.target);
    if (oStrip === null) return;
    const oTabs = TabsOf(oStrip);
    if (oTabs.length === 0) return;
    if (bTabKey) {
      // Go to the end of the strip; the browser's own step then leaves it.
      const oLinks = oStrip.querySelectorAll("a");
      oLinks[oEvent.shiftKey ? 0 : oLinks.length - 1].focus();
      return;
    }
    const iTarget = Target(oEvent.key, oTabs.indexOf(oEvent.target), oTabs.length);
    if (iTarget < 0) return;
    oEvent.preventDefault();
    // A key moves the focus, so its ring shows although a mouse click may have set it last.
    oTabs[iTarget].focus({ focusVisible: true });
  });

  // Shown again, the page begins as after a load.
  document.currentScript.dataset.beginsAgain = "";
  document.addEventListener("zelwbr3reset", () => { bTabKey = false; });

  document.addEventListener("pointerdown", () => { bTabKey = false; }, true);

  document.addEventListener("focusin", (oEvent) => {
    const oStrip = StripOf(oEvent.target);
    if (!bTabKey || oStrip === null || oStrip.contains(oEvent.relatedTarget)) return;
    TabsOf(oStrip).find((oTab) => oTab.className === Selected)?.focus();
  });
})();
