// The start page: what each instance needs, read again every few seconds.
(() => {
  "use strict";
  const oNames = { OK: "Nothing needs attention", WARNING: "Attention", CRITICAL: "Critical", UNKNOWN: "Cannot be read" };

  const Read = async () => {
    const oLights = document.querySelectorAll(".light");
    try {
      const oAnswer = await fetch("/lights", { cache: "no-store" });
      if (oAnswer.status === 401) return void location.reload();
      const aLights = await oAnswer.json();
      aLights.forEach(({ level, text }, i) => {
        oLights[i].dataset.level = level;
        oLights[i].textContent = text === "" ? oNames[level] ?? level : `${oNames[level] ?? level}: ${text}`;
      });
    } catch {
      for (const o of oLights) {
        o.dataset.level = "UNKNOWN";
        o.textContent = "The server does not answer";
      }
    }
    setTimeout(Read, 5000);
  };
  Read();
})();
