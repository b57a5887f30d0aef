/*
 * What a load of the shell would lose. The tab and the figures of a page come from the
 * program again; what is the user's own is here: the filters of lists, what they are
 * sorted by, what is pressed, the place.
 */
const zelwbr3View = (() => {
  "use strict";

  const NameOf = (oWindow) => oWindow.location.pathname.split("/").at(-1);
  const InPage = (oWindow, sWhat) => [...oWindow.document.querySelectorAll(sWhat)];
  const Filters = "input.zelListFilter";
  const Pressed = ".zelListBar [aria-pressed]";
  const Headings = "tr > th";

  /** What a page has, as a text. */
  const Take = (oWindow) => JSON.stringify({
    sName: NameOf(oWindow),
    aFilters: InPage(oWindow, Filters).map((o) => o.value),
    aPressed: InPage(oWindow, Pressed).map((o) => o.ariaPressed),
    aSorted: InPage(oWindow, Headings).map((o) => o.ariaSort),
    dPlace: oWindow.scrollY,
  });

  /** To the same page after a load. */
  const Give = (oWindow, sView) => {
    const oView = JSON.parse(sView);
    if (oView?.sName !== NameOf(oWindow)) return;
    InPage(oWindow, Filters).forEach((o, i) => {
      o.value = oView.aFilters[i] ?? "";
      o.dispatchEvent(new Event("input"));
    });
    InPage(oWindow, Pressed).forEach((o, i) => o.ariaPressed === oView.aPressed[i] || o.click());
    InPage(oWindow, Headings).forEach((o, i) => {
      // A click goes on to the next of three ways to sort.
      for (let j = 0; j < 2 && (oView.aSorted[i] ?? o.ariaSort) !== o.ariaSort; ++j) o.querySelector("button")?.click();
    });
    // Rows are arranged little by little; whoever does something has a place of their own.
    let bUser = oView.dPlace === 0;
    for (const sEvent of ["wheel", "keydown", "pointerdown"]) oWindow.addEventListener(sEvent, () => (bUser = true), { once: true });
    let iTries = 120;
    const Place = () => {
      if (bUser || iTries-- === 0) return;
      oWindow.scrollTo({ top: oView.dPlace, behavior: "instant" });
      // A list that has been arranged shows its first row.
      const bArranging = InPage(oWindow, ".zelListBar[aria-busy]").length > 0;
      if (bArranging || Math.abs(oWindow.scrollY - oView.dPlace) > 1) requestAnimationFrame(Place);
    };
    Place();
  };

  return { Take, Give };
})();
