/*
 * The embedded components of the page files: <zel-fill-bar>,
 * <zel-instance-picture> and <zel-health-badge>.
 *
 * A component's properties are attributes of its element: "data-" and the
 * property's name in lower case, numbers in decimal, booleans as "true" and
 * "false". The program writes these attributes; the component draws them inside
 * its own shadow root and never writes to the document around it, which must
 * stay as the program filled it.
 *
 * The file is a classic script without imports, so that it can be inlined.
 */
(() => {
  "use strict";

  // A component keeps nothing but what it draws.
  document.currentScript.dataset.beginsAgain = "";

  // ---- properties as attributes -------------------------------------------

  const Decimal = /^\s*[+-]?\d{1,15}(\.\d{1,15})?\s*$/;

  // null means "absent or not a number".
  const ReadNumber = (sText) => (sText !== null && Decimal.test(sText) ? Number(sText) : null);
  const ReadBoolean = (sText) => sText !== null && sText.trim().toLowerCase() === "true";

  const AttributeOf = (sProperty) => `data-${sProperty.toLowerCase()}`;

  /** An element that redraws itself when one of its properties changes. */
  class Component extends HTMLElement {
    constructor(sMarkup, oSheet) {
      super();
      const oRoot = this.attachShadow({ mode: "open" });
      oRoot.innerHTML = sMarkup;
      oRoot.adoptedStyleSheets = [oSheet];
    }

    connectedCallback() {
      this.Draw();
    }

    // The parser reports every attribute of a new element before connecting it;
    // drawing once, when it is connected, is enough.
    attributeChangedCallback() {
      if (this.isConnected) this.Draw();
    }

    Part(sName) {
      return this.shadowRoot.getElementById(sName);
    }
  }

  /** Registers a class as an element and gives it accessors for its properties. */
  function Define(sElement, oClass, oReaders) {
    for (const [sProperty, Read] of Object.entries(oReaders)) {
      const sAttribute = AttributeOf(sProperty);
      Object.defineProperty(oClass.prototype, sProperty, {
        get() {
          return Read(this.getAttribute(sAttribute));
        },
        set(vValue) {
          this.setAttribute(sAttribute, String(vValue));
        },
      });
    }
    oClass.observedAttributes = ["label", ...Object.keys(oReaders).map(AttributeOf)];
    customElements.define(sElement, oClass);
  }

  function Sheet(sRules) {
    const oSheet = new CSSStyleSheet();
    oSheet.replaceSync(sRules);
    return oSheet;
  }

  // ---- fill bar -----------------------------------------------------------

  // The bar's level is the highest limit that its percentage has reached. The
  // levels differ in colour, hatching and word.
  const Levels = [
    { sLimit: "ColdPercent", sClass: "cold", sWord: "raised" },
    { sLimit: "MediumPercent", sClass: "medium", sWord: "high" },
    { sLimit: "HotPercent", sClass: "hot", sWord: "critical" },
  ];

  const Hatch = (sId, iPitch, iWidth) =>
    `<pattern id="${sId}" width="${iPitch}" height="${iPitch}" patternUnits="userSpaceOnUse" patternTransform="rotate(45)">
       <rect class="hatch" width="${iWidth}" height="${iPitch}"/>
     </pattern>`;

  const BarMarkup = `
    <div id="meter" class="bar" role="meter">
      <svg aria-hidden="true">
        <title id="tip"></title>
        <defs>${Hatch("hatch-cold", 9, 1)}${Hatch("hatch-medium", 6, 1.5)}${Hatch("hatch-hot", 4, 1.5)}</defs>
        <rect class="track" y="0.5" width="100%" height="11"/>
        <rect class="fill" id="fill" y="0.5" height="11"/>
        <rect class="weave" id="weave" y="0.5" height="11"/>
        ${Levels.map(({ sClass }) => `<rect class="zone ${sClass}" id="zone-${sClass}" y="13" height="2"/>`).join("")}
        ${Levels.map(({ sClass }) => `<line class="tick" id="tick-${sClass}" y1="1" y2="15"/>`).join("")}
      </svg>
      <span class="word" id="word"></span><span class="figure" id="figure"></span>
    </div>`;

  const BarSheet = Sheet(`
    :host { display: block; min-width: 0; }
    :host([hidden]) { display: none; }
    .bar { display: flex; align-items: center; gap: 0.5em; }
    svg { display: block; flex: 1 1 auto; min-width: 4em; width: 0; height: 16px; overflow: visible; }
    .track { fill: var(--zel-track, #e6eaef); stroke: none; }
    .fill { fill: var(--zel-fill, #4a7aab); }
    .cold { fill: var(--zel-cold, #2b7f8f); }
    .medium { fill: var(--zel-medium, #ab6e00); }
    .hot { fill: var(--zel-hot, #b3261e); }
    .hatch { fill: var(--zel-hatch, rgba(255, 255, 255, 0.5)); }
    .tick { stroke: var(--zel-tick, #56616f); stroke-width: 1; shape-rendering: crispEdges; }
    .empty .track { fill: none; stroke: var(--zel-tick, #56616f); stroke-dasharray: 3 3; }
    .empty .fill, .empty .weave, .empty .zone, .empty .tick { display: none; }
    .word, .figure { flex: none; text-align: right; white-space: nowrap; }
    .word { width: 4em; color: var(--zel-text-quiet, #56616f); }
    .figure { width: 4.3em; font-variant-numeric: tabular-nums; }
    .empty .figure { width: calc(8.3em + 0.5em); color: var(--zel-text-quiet, #56616f); }
    .empty .word { display: none; }
    .level-hot .figure, .level-hot .word { color: var(--zel-hot-text, #b3261e); font-weight: 600; }
  `);

  class FillBar extends Component {
    constructor() {
      super(BarMarkup, BarSheet);
    }

    Draw() {
      // Limits outside 1 to 100 are ignored.
      const oLimits = Levels.map((oLevel) => ({ ...oLevel, dLimit: this[oLevel.sLimit] })).filter(
        ({ dLimit }) => dLimit !== null && dLimit > 0 && dLimit <= 100
      );
      const dPercent = this.Percent;
      const bValue = dPercent !== null && dPercent >= 0;
      const oReached = bValue ? oLimits.findLast(({ dLimit }) => dPercent >= dLimit) : undefined;

      this.DrawLimits(oLimits);

      const sWidth = bValue ? `${Math.min(dPercent, 100)}%` : "0";
      this.Part("fill").setAttribute("width", sWidth);
      this.Part("fill").setAttribute("class", oReached ? `fill ${oReached.sClass}` : "fill");
      this.Part("weave").setAttribute("width", oReached ? sWidth : "0");
      this.Part("weave").setAttribute("fill", oReached ? `url(#hatch-${oReached.sClass})` : "none");

      const sFigure = !bValue ? "No value" : dPercent > 100 ? ">100 %" : `${Math.floor(dPercent)} %`;
      const sWord = oReached ? oReached.sWord : "";
      this.Part("figure").textContent = sFigure;
      this.Part("word").textContent = sWord;

      const sMeaning = sWord ? `${sFigure}, ${sWord}` : sFigure;
      const sLimits = oLimits.map(({ sWord: sName, dLimit }) => `${sName} from ${dLimit} %`).join(", ");
      this.Part("tip").textContent = bValue && sLimits ? `${sMeaning} (${sLimits})` : sMeaning;

      const oMeter = this.Part("meter");
      oMeter.className = `bar${bValue ? "" : " empty"}${oReached ? ` level-${oReached.sClass}` : ""}`;
      const sLabel = this.getAttribute("label") ?? "Fill level";
      oMeter.setAttribute("aria-label", bValue ? sLabel : `${sLabel}: ${sMeaning}`);
      // A meter must have a value; without one this is an image that says so.
      oMeter.setAttribute("role", bValue ? "meter" : "img");
      const oValues = { valuemin: 0, valuemax: 100, valuenow: Math.min(dPercent, 100), valuetext: sMeaning };
      for (const [sName, vValue] of Object.entries(oValues)) {
        if (bValue) oMeter.setAttribute(`aria-${sName}`, String(vValue));
        else oMeter.removeAttribute(`aria-${sName}`);
      }
    }

    // Below the bar, each zone extends from its limit to the next higher one. On
    // the bar, a tick marks each limit.
    DrawLimits(oLimits) {
      for (const { sClass } of Levels) {
        const iOwn = oLimits.findIndex((oLimit) => oLimit.sClass === sClass);
        const dFrom = iOwn < 0 ? 100 : oLimits[iOwn].dLimit;
        const dTo = Math.min(100, ...oLimits.slice(iOwn + 1).map(({ dLimit }) => dLimit));
        const oZone = this.Part(`zone-${sClass}`);
        oZone.setAttribute("x", `${dFrom}%`);
        oZone.setAttribute("width", `${iOwn < 0 ? 0 : Math.max(0, dTo - dFrom)}%`);
        const oTick = this.Part(`tick-${sClass}`);
        oTick.setAttribute("x1", `${dFrom}%`);
        oTick.setAttribute("x2", `${dFrom}%`);
        oTick.style.display = iOwn < 0 ? "none" : "";
      }
    }
  }

  Define("zel-fill-bar", FillBar, {
    ColdPercent: ReadNumber,
    MediumPercent: ReadNumber,
    HotPercent: ReadNumber,
    Percent: ReadNumber,
  });

  // ---- instance picture ---------------------------------------------------

  const States = new Map([
    [1, { sClass: "unconnected", sWord: "no connection" }],
    [2, { sClass: "unknown", sWord: "state unknown" }],
    [3, { sClass: "offline", sWord: "offline" }],
    [4, { sClass: "admin", sWord: "admin" }],
    [5, { sClass: "online", sWord: "online" }],
  ]);
  const Unknown = States.get(2);

  const Cylinder = "M6 14a19 6.5 0 0 1 38 0v34a19 6.5 0 0 1-38 0z";
  const Rim = "M6 14a19 6.5 0 0 0 38 0";

  const PictureMarkup = `
    <svg id="picture" viewBox="0 0 64 64" role="img">
      <title id="tip"></title>
      <rect class="back" id="back" width="64" height="64"/>
      <g class="standby" transform="translate(13 1)"><path class="ghost" d="${Cylinder}"/><path class="line" d="${Rim}"/></g>
      <path class="body" d="${Cylinder}"/>
      <path class="line" d="${Rim}"/>
      <path class="line plain" d="M6 25.5a19 6.5 0 0 0 38 0M6 37a19 6.5 0 0 0 38 0"/>
      <g class="object"><path class="line" d="M25 24.5l9 4.8v10.4l-9 4.8-9-4.8v-10.4z"/><path class="line" d="M16 29.3l9 4.9 9-4.9M25 34.2v10.3"/></g>
      <g class="badge online"><circle class="sign" cx="47" cy="48" r="12"/><path class="mark" d="M41.5 48.5l4 4 7.5-8.5"/></g>
      <g class="badge admin"><path class="sign" d="M47 33.5L61.5 48 47 62.5 32.5 48z"/><path class="mark" d="M44 43.5v9M50 43.5v9"/></g>
      <g class="badge offline"><rect class="sign" x="36" y="37" width="22" height="22" rx="2"/><path class="mark" d="M41.5 48h11"/></g>
      <g class="badge unconnected"><circle class="sign" cx="47" cy="48" r="12"/><path class="mark" d="M42.5 43.5l9 9M51.5 43.5l-9 9"/></g>
      <g class="badge unknown"><circle class="sign" cx="47" cy="48" r="12"/><path class="mark" d="M43.2 45a3.8 3.8 0 1 1 5.6 3.3c-1.3.7-1.8 1.4-1.8 2.7M47 54.2v.1"/></g>
      <g class="wait"><rect class="sign" x="1" y="1" width="19" height="22" rx="3"/><path class="sand" d="M6 5.5h9l-4.5 6.5 4.5 6.5h-9l4.5-6.5z"/></g>
    </svg>`;

  const PictureSheet = Sheet(`
    :host { display: inline-block; width: 64px; height: 64px; flex: none; }
    :host([hidden]) { display: none; }
    svg { display: block; width: 100%; height: 100%; }
    .back { fill: none; }
    .body { fill: var(--zel-picture, #dbe6f2); stroke: var(--zel-picture-line, #3b5673); stroke-width: 2; }
    .ghost { fill: var(--zel-surface, #fff); stroke: var(--zel-picture-line, #3b5673); stroke-width: 1.5; }
    .line { fill: none; stroke: var(--zel-picture-line, #3b5673); stroke-width: 1.5; stroke-linejoin: round; }
    .standby { opacity: 0.65; }
    .sign { stroke: var(--zel-surface, #fff); stroke-width: 2.5; }
    .mark { fill: none; stroke: var(--zel-sign-mark, #fff); stroke-width: 2.8; stroke-linecap: round; stroke-linejoin: round; }
    .online .sign { fill: var(--zel-ok, #1d7a4a); }
    .admin .sign { fill: var(--zel-medium-text, #8a5a00); }
    .offline .sign, .unknown .sign { fill: var(--zel-sign-quiet, #56616f); }
    .unconnected .sign { fill: var(--zel-hot-text, #b3261e); }
    .wait .sign { fill: var(--zel-accent, #1f5fa8); stroke-width: 1.5; }
    .sand { fill: none; stroke: var(--zel-sign-mark, #fff); stroke-width: 1.6; stroke-linejoin: round; }
    .badge, .standby, .object, .wait { display: none; }
    svg.online .badge.online, svg.admin .badge.admin, svg.offline .badge.offline,
    svg.unconnected .badge.unconnected, svg.unknown .badge.unknown,
    svg.with-standby .standby, svg.with-objects .object, svg.waiting .wait { display: inline; }
    svg.with-objects .plain { display: none; }
    svg.offline .body, svg.unknown .body, svg.unconnected .body { fill: var(--zel-surface, #fff); }
    svg.unconnected .body, svg.unconnected .line { stroke-dasharray: 3 2.5; }
  `);

  class InstancePicture extends Component {
    constructor() {
      super(PictureMarkup, PictureSheet);
    }

    Draw() {
      const oState = States.get(this.State) ?? Unknown;
      const bObjects = this.InstanceType === 1;

      const oPicture = this.Part("picture");
      oPicture.setAttribute(
        "class",
        [oState.sClass, bObjects && "with-objects", this.HotStandby && "with-standby", this.Wait && "waiting"].filter(Boolean).join(" ")
      );
      this.Part("back").style.fill = InstancePicture.Background(this.BackColor);

      const sMeaning = [
        `Database instance${bObjects ? " with object store" : ""}: ${oState.sWord}`,
        this.HotStandby && "hot standby",
        this.Wait && "please wait",
      ].filter(Boolean).join(", ");
      oPicture.setAttribute("aria-label", sMeaning);
      this.Part("tip").textContent = sMeaning;
    }

    // A colour is red + 256 green + 65536 blue. White means the page's own
    // background, so nothing is painted.
    static Background(lColor) {
      if (lColor === null || !Number.isInteger(lColor) || lColor < 0 || lColor >= 0xffffff) return "none";
      return `rgb(${lColor & 255} ${(lColor >> 8) & 255} ${lColor >> 16})`;
    }
  }

  Define("zel-instance-picture", InstancePicture, {
    BackColor: ReadNumber,
    InstanceType: ReadNumber,
    State: ReadNumber,
    Wait: ReadBoolean,
    HotStandby: ReadBoolean,
  });

  // ---- health badge ---------------------------------------------------------

  // By level; 0 and anything else shows nothing.
  const BadgeLevels = new Map([
    [1, { sClass: "attention", sWord: "needs attention" }],
    [2, { sClass: "critical", sWord: "critical" }],
    [3, { sClass: "unknown", sWord: "not everything could be read" }],
  ]);

  const BadgeMarkup = `
    <svg id="badge" viewBox="0 0 28 28" role="img">
      <title id="tip"></title>
      <path class="sign attention" d="M14 2.5L26.5 25H1.5z"/>
      <path class="sign critical" d="M9 2h10l7 7v10l-7 7H9l-7-7V9z"/>
      <circle class="sign unknown" cx="14" cy="14" r="12"/>
      <path class="mark attention" d="M14 10.5v6.5M14 21v.1"/>
      <path class="mark critical" d="M14 7.5v8M14 20.2v.1"/>
      <path class="mark unknown" d="M10.2 11a3.8 3.8 0 1 1 5.6 3.3c-1.3.7-1.8 1.4-1.8 2.7M14 20.2v.1"/>
    </svg>`;

  const BadgeSheet = Sheet(`
    :host { display: none; }
    :host([data-level="1"]), :host([data-level="2"]), :host([data-level="3"]) { display: block; }
    svg { display: block; width: 100%; height: 100%; }
    path, circle { display: none; }
    .sign { stroke: var(--zel-paper, #fff); stroke-width: 2; stroke-linejoin: round; }
    .mark { fill: none; stroke: var(--zel-sign-mark, #fff); stroke-width: 3; stroke-linecap: round; }
    .sign.attention { fill: var(--zel-medium-text, #8a5a00); }
    .sign.critical { fill: var(--zel-hot-text, #b3261e); }
    .sign.unknown { fill: var(--zel-sign-quiet, #56616f); }
    svg.attention .attention, svg.critical .critical, svg.unknown .unknown { display: inline; }
  `);

  class HealthBadge extends Component {
    constructor() {
      super(BadgeMarkup, BadgeSheet);
    }

    Draw() {
      const oLevel = BadgeLevels.get(this.Level);
      this.Part("badge").setAttribute("class", oLevel?.sClass ?? "");
      this.Part("badge").setAttribute("aria-label", oLevel?.sWord ?? "");
      this.Part("tip").textContent = oLevel?.sWord ?? "";
    }
  }

  Define("zel-health-badge", HealthBadge, { Level: ReadNumber });
})();
