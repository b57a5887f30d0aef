// The instances of this server, on the start page and beside the pages of one: the light
// of each, read again every few seconds while somebody sees it.
(() => {
  "use strict";
  const Pause = 5000;
  const Patience = 10000;
  const oTexts = { OK: "Nothing needs attention", WARNING: "Attention", CRITICAL: "Critical", UNKNOWN: "Cannot be read" };

  // On the start page, nobody else gives it the theme that the user has chosen.
  const sTheme = localStorage.getItem("zelweb-theme") ?? "";
  if (sTheme !== "") document.documentElement.dataset.theme = sTheme;

  const oItems = [...document.querySelectorAll(".instances a")].map((oLink) => {
    const [oLight, oName, oAddress, oFinding] = oLink.children;
    return { oLink, oLight, oName, oFinding, sAddress: oAddress.textContent };
  });

  const Write = (oElement, sText) => oElement.textContent === sText || (oElement.textContent = sText);

  const Draw = (oItem, sLevel, sFinding, sName, bSame) => {
    oItem.oLight.dataset.level = sLevel;
    Write(oItem.oName, sName);
    Write(oItem.oFinding, sFinding);
    // Without its address, one could not be told from another one of the same name.
    oItem.oLink.classList.toggle("same", bSame);
    oItem.oLink.title = `${oItem.sAddress}\n${sFinding}`;
  };

  /** As long as an instance's own name is not known: the end of its address. */
  const NameOf = (sAddress) => /[^/]+\/?$/.exec(sAddress)?.[0] ?? sAddress;

  const DrawAll = (aLights) => {
    const aNames = oItems.map(({ sAddress }, i) => aLights[i]?.title || NameOf(sAddress));
    oItems.forEach((oItem, i) => {
      const { level: sLevel = "UNKNOWN", text: sText = "" } = aLights[i] ?? {};
      const sFinding = sText === "" ? oTexts[sLevel] ?? sLevel : `${oTexts[sLevel] ?? sLevel}: ${sText}`;
      Draw(oItem, sLevel, sFinding, aNames[i], aNames.filter((sName) => sName === aNames[i]).length > 1);
    });
  };

  const DrawUnknown = (sWhy) => {
    for (const oItem of oItems) Draw(oItem, "UNKNOWN", sWhy, oItem.oName.textContent, oItem.oLink.classList.contains("same"));
  };

  let iTimer = 0;
  let bReading = false;

  /** True if it is worth to be read again. */
  const ReadOnce = async () => {
    try {
      const oAnswer = await fetch("/lights", { cache: "no-store", signal: AbortSignal.timeout(Patience) });
      if (oAnswer.status === 401) {
        // The pages beside it may stay, to be read; the start page has nothing else.
        if (document.body.classList.contains("notice")) location.reload();
        DrawUnknown("You are signed out");
        return false;
      }
      DrawAll(await oAnswer.json());
    } catch {
      DrawUnknown("The server does not answer");
    }
    return true;
  };

  const Read = async () => {
    clearTimeout(iTimer);
    if (bReading || document.visibilityState !== "visible") return;
    bReading = true;
    const bAgain = await ReadOnce();
    bReading = false;
    if (bAgain) iTimer = setTimeout(Read, Pause);
  };

  document.addEventListener("visibilitychange", Read);
  // With their names, they need other room.
  Read().then(() => document.querySelector(".instances [aria-current]")?.scrollIntoView({ block: "nearest", inline: "nearest" }));
})();
