/*
 * Curves of figures over time. The program writes the last readings into the hidden
 * block "lstSeries" (html/README.md); this script draws a small curve beside each
 * figure, and for a counter what it grew by in a second. All of that is the script's
 * own: the program does not know it and never reads it back.
 */
(() => {
  "use strict";

  const Width = 88;
  const Height = 18;

  /** Numbers with blanks between them, "-" for none. */
  const Numbers = (sText) => {
    if (!sText) return [];
    // Usually all are known, and then this is the fastest.
    if (!sText.includes("-")) return JSON.parse(`[${sText.replaceAll(" ", ",")}]`);
    return sText.split(" ").map((s) => (s === "-" ? NaN : +s));
  };

  /** Moments in milliseconds since 1970. */
  const TimesOf = (oBlock) => {
    let dTime = 0;
    return Numbers(oBlock.dataset.times).map((dStep) => (dTime += dStep));
  };

  /** A counter's growth a second; it begins anew when the instance was started again. */
  const Rates = (oTimes, oValues) =>
    oValues.map((dValue, i) => {
      const dMore = i === 0 ? NaN : dValue - oValues[i - 1];
      return dMore >= 0 ? (1000 * dMore) / (oTimes[i] - oTimes[i - 1]) : NaN;
    });

  const Setting = (sId, sDefault) => document.getElementById(sId)?.textContent || sDefault;

  /** Three digits, in the user's form. */
  const Rounded = (dValue) => {
    if (Number.isNaN(dValue)) return "";
    const iDigits = dValue >= 100 || dValue === 0 ? 0 : dValue >= 10 ? 1 : 2;
    const [sWhole, sFraction] = dValue.toFixed(iDigits).split(".");
    const sGrouped = sWhole.replace(/\B(?=(\d{3})+$)/g, Setting("LocaleThousendGroupingSymbole", ""));
    return sFraction === undefined ? sGrouped : sGrouped + Setting("LocaleDecimalSymbole", ".") + sFraction;
  };

  /** The points of a curve; a value that is not known parts it. */
  const PathOf = (oTimes, oValues, dLow, dHigh) => {
    const dFirst = oTimes[0];
    const dSpan = oTimes.at(-1) - dFirst || 1;
    let sPath = "";
    let bDown = false;
    oValues.forEach((dValue, i) => {
      if (Number.isNaN(dValue)) return void (bDown = false);
      const dX = 1 + ((Width - 4) * (oTimes[i] - dFirst)) / dSpan;
      const dY = Height - 2 - ((Height - 4) * (dValue - dLow)) / (dHigh - dLow || 1);
      sPath += `${bDown ? "L" : "M"}${dX.toFixed(1)} ${dY.toFixed(1)}`;
      bDown = true;
    });
    return sPath;
  };

  const Make = (sTag, oAttributes) => {
    const oElement = document.createElementNS("http://www.w3.org/2000/svg", sTag);
    for (const [sName, vValue] of Object.entries(oAttributes)) oElement.setAttribute(sName, vValue);
    return oElement;
  };

  const Curve = (oTimes, oValues, sUnit) => {
    const oKnown = oValues.filter((d) => !Number.isNaN(d));
    const [dLow, dHigh] = sUnit === "%" ? [0, 100] : [Math.min(0, ...oKnown), Math.max(...oKnown)];
    const oSvg = Make("svg", { class: "zelCurve", width: Width, height: Height, viewBox: `0 0 ${Width} ${Height}`, "aria-hidden": "true" });
    if (oKnown.length < 2) return oSvg;
    const oTitle = Make("title", {});
    const iMinutes = Math.max(1, Math.round((oTimes.at(-1) - oTimes[0]) / 60000));
    oTitle.textContent = `${Rounded(Math.min(...oKnown))} to ${Rounded(Math.max(...oKnown))}${sUnit && ` ${sUnit}`} in ${iMinutes} min`;
    oSvg.append(oTitle, Make("path", { d: PathOf(oTimes, oValues, dLow, dHigh), fill: "none", stroke: "currentColor", "stroke-width": 1.3 }));
    return oSvg;
  };

  /** A curve that a click or Enter opens as a chart: what stands for the program's series. */
  const Linked = (oSeries, oCurve) => {
    const oLink = Object.assign(document.createElement("a"), { href: "#", className: "zelCurveLink" });
    oLink.dataset.zelFor = oSeries.id;
    oLink.setAttribute("aria-label", `Chart of ${oSeries.dataset.label}`);
    oLink.append(oCurve);
    return oLink;
  };

  /** By series: what was drawn for it. */
  const oDrawn = new Map();

  /** Replaces what was drawn for a series, which keeps its place. */
  const Put = (sId, oElement, Insert) => {
    const oBefore = oDrawn.get(sId);
    if (oBefore?.isConnected) oBefore.replaceWith(oElement);
    else Insert(oElement);
    oDrawn.set(sId, oElement);
  };

  const RowsOf = (sTable) =>
    [...(document.getElementById(sTable)?.tBodies[0]?.rows ?? [])].filter((oRow) => oRow.style.display !== "none");

  /** The cells that the program has written. */
  const CellsOf = (oRow) => [...(oRow?.cells ?? [])].filter((oCell) => !oCell.classList.contains("zelRate"));

  const DrawRate = (oSeries, oTimes) => {
    const [sTable, sRow, sCell, sWhere] = oSeries.dataset.place.split(" ");
    const oCell = CellsOf(RowsOf(sTable)[Number(sRow)])[Number(sCell)];
    if (oCell === undefined) return;
    const oRates = Rates(oTimes, Numbers(oSeries.dataset.values));
    const oRate = document.createElement("td");
    oRate.className = "zelRate";
    const sRate = Rounded(oRates.at(-1) ?? NaN);
    const oText = document.createElement("span");
    oText.textContent = sRate === "" ? "" : `${sRate}/s`;
    oText.title = "Growth a second since the reading before";
    oRate.append(oText, Linked(oSeries, Curve(oTimes, oRates, "")));
    Put(oSeries.id, oRate, (o) => (sWhere === "last" ? oCell.parentElement.append(o) : oCell.after(o)));
  };

  const DrawLevel = (oSeries, oTimes) => {
    const oAt = document.getElementById(oSeries.dataset.place);
    if (oAt === null) return;
    const oCurve = Linked(oSeries, Curve(oTimes, Numbers(oSeries.dataset.values), oSeries.dataset.unit));
    Put(oSeries.id, oCurve, (o) => oAt.after(o));
  };

  /** A table whose rows end with a rate says so in its head. */
  const DrawHeads = (oSeries) => {
    const oTables = new Set(oSeries.filter((o) => o.dataset.place.endsWith(" last")).map((o) => o.dataset.place.split(" ")[0]));
    for (const sTable of oTables) {
      const oHead = document.getElementById(sTable)?.tHead?.rows[0];
      if (oHead === undefined || oHead.querySelector(".zelRate") !== null) continue;
      const oHeading = Object.assign(document.createElement("th"), { className: "zelTblColHdrNum zelRate", scope: "col", textContent: "Per Second" });
      oHead.append(oHeading);
    }
  };

  // ---- the page Charts -----------------------------------------------------------

  const Hour = 3600;
  const Ranges = [
    ["10 min", Hour / 6],
    ["1 h", Hour],
    ["6 h", 6 * Hour],
    ["1 day", 24 * Hour],
    ["1 week", 7 * 24 * Hour],
    ["All", Infinity],
  ];
  const Colors = ["#3b82d6", "#d97706", "#2e9e4f", "#c2410c", "#8b5cf6", "#0e9aa7", "#be185d", "#65a30d"];
  /** Rows of the table with the same values. */
  const RowsOfTable = 500;

  const Button = (sText, bPressed, OnClick) => {
    const oButton = Object.assign(document.createElement("button"), { type: "button", className: "zelBtn zelChartBtn", textContent: sText });
    oButton.setAttribute("aria-pressed", String(bPressed));
    oButton.addEventListener("click", OnClick);
    return oButton;
  };

  const Command = (sText, OnClick) => {
    const oButton = Button(sText, false, OnClick);
    oButton.removeAttribute("aria-pressed");
    return oButton;
  };

  const Worded = (dValue, sUnit) => (dValue === null ? "" : Rounded(dValue) + (sUnit && ` ${sUnit}`));

  /** Forms of moments; making one takes long, using it does not. */
  const oForms = {};
  const Form = (sName, oOptions) => (oForms[sName] ??= new Intl.DateTimeFormat(undefined, oOptions)).format;
  const FormOf = {
    Day: () => Form("Day", { day: "numeric", month: "short" }),
    Minute: () => Form("Minute", { hour: "2-digit", minute: "2-digit", hourCycle: "h23" }),
    Second: () => Form("Second", { timeStyle: "medium", hourCycle: "h23" }),
    Moment: () => Form("Moment", { dateStyle: "short", timeStyle: "medium", hourCycle: "h23" }),
  };

  /** A time of the axis; with seconds where they differ, and the day where that does. */
  const Clock = (dSeconds, oAll) => {
    const dStep = oAll.length > 1 ? oAll[1] - oAll[0] : 0;
    const oDate = new Date(dSeconds * 1000);
    const bNewDay = oAll.at(-1) - oAll[0] >= 24 * Hour && oDate.getHours() * Hour + oDate.getMinutes() * 60 < dStep;
    if (dStep >= 24 * Hour || bNewDay) return FormOf.Day()(oDate);
    return (dStep % 60 === 0 ? FormOf.Minute() : FormOf.Second())(oDate);
  };

  /** The charts of one page: figures that the user chooses, over the time that he chooses. */
  class Chart {
    constructor(oPlace) {
      this.oPlace = oPlace;
      this.oChosen = new Set();
      this.dRange = Infinity;
      this.oPlot = null;
      this.oBar = Object.assign(document.createElement("div"), { className: "zelChartBar" });
      this.oCanvas = Object.assign(document.createElement("div"), { className: "zelChartPlot" });
      this.oTable = Object.assign(document.createElement("table"), { className: "zelTblList zelChartTable" });
      oPlace.append(this.oBar, this.oCanvas, this.oTable);
      // It also tells the size at the beginning, which the plot has already.
      this.oResize = new ResizeObserver(() => {
        const oSize = this.Size;
        const oPlot = this.oPlot;
        if (oPlot !== null && (oPlot.width !== oSize.width || oPlot.height !== oSize.height)) oPlot.setSize(oSize);
      });
      this.oResize.observe(oPlace);
    }

    End() {
      this.oResize.disconnect();
      clearTimeout(this.iTable);
      this.oPlot?.destroy();
    }

    get Size() {
      // The legend below it is to be seen, too.
      const dRest = innerHeight - this.oCanvas.getBoundingClientRect().top - scrollY - 110;
      return { width: Math.max(300, this.oPlace.clientWidth), height: Math.max(220, Math.min(560, dRest)) };
    }

    Read(oBlock) {
      this.oTimes = TimesOf(oBlock);
      this.oSeries = [...oBlock.querySelectorAll("[data-values]")].map((o) => ({
        sId: o.id,
        sShort: o.dataset.label,
        sLabel: o.dataset.label + (o.dataset.counter === "true" ? " per second" : ""),
        sUnit: o.dataset.unit,
        Values: () => {
          const oValues = Numbers(o.dataset.values);
          return o.dataset.counter === "true" ? Rates(this.oTimes, oValues) : oValues;
        },
      }));
      // Readings from elsewhere are of other figures.
      if (this.oShown.length === 0) this.oChosen = new Set([oBlock.dataset.chosen]);
      const dSpan = (this.oTimes.at(-1) - this.oTimes[0]) / 1000;
      this.oRanges = Ranges.filter(([, dRange], i) => dRange === Infinity || i === 0 || dRange < dSpan);
      if (!this.oRanges.some(([, dRange]) => dRange === this.dRange)) this.dRange = Infinity;
    }

    get oShown() {
      return this.oSeries.filter((o) => this.oChosen.has(o.sId));
    }

    Show() {
      this.ShowBar();
      const oValues = this.oShown.map((o) => o.Values());
      const Known = (oAll) => (oAll.some(Number.isNaN) ? oAll.map((d) => (Number.isNaN(d) ? null : d)) : oAll);
      this.oData = [this.oTimes.map((d) => d / 1000), ...oValues.map(Known)];
      // The chart comes first.
      clearTimeout(this.iTable);
      this.iTable = setTimeout(() => this.ShowTable(), 50);
      if (typeof uPlot === "undefined") {
        this.oCanvas.textContent = "The library that draws charts (uPlot) is not installed. The table shows the values.";
        this.oTable.classList.add("zelSeen");
        return;
      }
      const sKey = [...this.oChosen].join();
      if (this.oPlot !== null && this.sKey === sKey) return this.Update();
      this.sKey = sKey;
      this.oPlot?.destroy();
      const sInk = getComputedStyle(document.body).color;
      const oAxis = { stroke: sInk, grid: { stroke: "#8884", width: 1 }, ticks: { stroke: "#8884", width: 1 } };
      const oSeries = this.oShown.map((o, i) => ({
        label: o.sLabel,
        scale: o.sUnit === "%" ? "%" : "y",
        stroke: Colors[i % Colors.length],
        width: 1.5,
        points: { show: this.oTimes.length < 60 },
        // Where nothing is pointed at, the newest.
        value: (_, d, __, iAt) => Worded(iAt === null ? (this.oData[i + 1].at(-1) ?? null) : d, o.sUnit),
      }));
      const oScales = [...new Set(oSeries.map((o) => o.scale))];
      const oOptions = {
        ...this.Size,
        series: [{ label: "Time", value: (_, d) => FormOf.Moment()((d ?? this.oData[0].at(-1)) * 1000) }, ...oSeries],
        axes: [{ ...oAxis, space: 80, values: (_, oSeconds) => oSeconds.map((d) => Clock(d, oSeconds)) }, ...oScales.map((sScale, i) => ({ ...oAxis, scale: sScale, side: i === 0 ? 3 : 1, size: 70, values: (_, o) => o.map((d) => Rounded(d) + (sScale === "%" ? " %" : "")) }))],
        scales: Object.fromEntries(oScales.map((s) => [s, s === "%" ? { range: [0, 100] } : { range: (_, __, dMax) => [0, (dMax || 1) * 1.05] }])),
      };
      this.oPlot = new uPlot(oOptions, this.oData, this.oCanvas);
      this.SetRange();
    }

    /** Other values of the same figures: what the user has zoomed into stays. */
    Update() {
      const { min, max } = this.oPlot.scales.x;
      const bAtEnd = max >= this.dLast;
      this.oPlot.setData(this.oData, false);
      if (bAtEnd) this.SetRange();
      else this.oPlot.setScale("x", { min, max });
    }

    SetRange() {
      const oSeconds = this.oData[0];
      this.dLast = oSeconds.at(-1);
      const dFrom = Math.max(oSeconds[0], this.dLast - this.dRange);
      this.oPlot.setScale("x", { min: dFrom, max: Math.max(this.dLast, dFrom + 1) });
    }

    ShowBar() {
      const oFigures = this.oSeries.map((o) => Button(o.sShort, this.oChosen.has(o.sId), () => this.Toggle(o.sId)));
      const oRanges = this.oRanges.map(([sText, dRange]) =>
        Button(sText, dRange === this.dRange, () => {
          this.dRange = dRange;
          this.Show();
          if (this.oPlot !== null) this.SetRange();
        })
      );
      const oTable = Button("Table", this.oTable.classList.contains("zelSeen"), ({ target }) =>
        target.setAttribute("aria-pressed", String(this.oTable.classList.toggle("zelSeen")))
      );
      const Group = (sLabel, oButtons) => {
        const oGroup = document.createElement("div");
        oGroup.setAttribute("role", "group");
        oGroup.setAttribute("aria-label", sLabel);
        oGroup.append(...oButtons);
        return oGroup;
      };
      const oFocused = [...this.oBar.querySelectorAll("button")].indexOf(document.activeElement);
      this.oBar.replaceChildren(
        Group("Figures", oFigures),
        Group("Time", oRanges),
        Group("Values", [
          oTable,
          ...[
            ["Copy CSV", () => this.Copy()],
            ["CSV\u2026", () => document.zelSave("chart.csv", "text/csv", [this.Text()])],
            ["Picture\u2026", () => this.SavePicture()],
          ].map(([sText, OnClick]) => Command(sText, OnClick)),
        ])
      );
      this.oBar.querySelectorAll("button")[oFocused]?.focus();
    }

    Toggle(sId) {
      if (!this.oChosen.delete(sId)) this.oChosen.add(sId);
      if (this.oChosen.size === 0) this.oChosen.add(sId);
      this.Show();
    }

    /** The readings in the time that is seen, the newest first. */
    Seen() {
      const oScale = this.oPlot?.scales.x ?? { min: -Infinity, max: Infinity };
      const oRows = [];
      for (let i = this.oTimes.length - 1; i >= 0; --i) {
        const dTime = this.oTimes[i] / 1000;
        if (dTime >= oScale.min && dTime <= oScale.max) oRows.push(i);
      }
      return oRows;
    }

    ShowTable() {
      const Row = (sTag, sTexts) => {
        const oRow = document.createElement("tr");
        oRow.append(...sTexts.map((textContent) => Object.assign(document.createElement(sTag), { textContent, className: sTag === "th" ? "zelTblColHdrNum" : "zelTblCellNum" })));
        return oRow;
      };
      const oHead = document.createElement("thead");
      oHead.append(Row("th", ["Time", ...this.oShown.map((o) => o.sLabel)]));
      const oBody = document.createElement("tbody");
      // Of more than a day, a time alone does not say enough.
      const bDays = this.oTimes.at(-1) - this.oTimes[0] > 24 * Hour * 1000;
      const Moment = (bDays ? FormOf.Moment : FormOf.Second)();
      const Text = (i) => [Moment(this.oTimes[i]), ...this.oData.slice(1).map((o) => (o[i] === null ? "" : Rounded(o[i])))];
      const iFrom = Math.max(0, this.oTimes.length - RowsOfTable);
      for (let i = this.oTimes.length - 1; i >= iFrom; --i) oBody.append(Row("td", Text(i)));
      this.oTable.replaceChildren(oHead, oBody);
    }

    /** What is seen as CSV. */
    Text() {
      const Field = (s) => (/[",\n]/.test(s) ? `"${s.replaceAll('"', '""')}"` : s);
      const oLines = this.Seen().reverse().map((i) => [new Date(this.oTimes[i]).toISOString(), ...this.oData.slice(1).map((o) => o[i] ?? "")].join(","));
      return [["Time", ...this.oShown.map((o) => o.sLabel)].map(Field).join(","), ...oLines].join("\r\n") + "\r\n";
    }

    /** The chart as it is seen, with what its lines are, as a picture. */
    SavePicture() {
      const oFrom = this.oPlot?.ctx.canvas;
      if (oFrom === undefined) return;
      const dScale = devicePixelRatio;
      const [iLine, iMargin] = [18 * dScale, 12 * dScale];
      const oTexts = this.oShown.map((o, i) => [Colors[i % Colors.length], `${o.sLabel}${o.sUnit && ` (${o.sUnit})`}`]);
      const oCanvas = Object.assign(document.createElement("canvas"), {
        width: oFrom.width + 2 * iMargin,
        height: oFrom.height + 2 * iMargin + iLine * oTexts.length,
      });
      const oContext = oCanvas.getContext("2d");
      oContext.fillStyle = getComputedStyle(document.body).backgroundColor;
      oContext.fillRect(0, 0, oCanvas.width, oCanvas.height);
      oContext.font = `600 ${12 * dScale}px ${getComputedStyle(document.body).fontFamily}`;
      oTexts.forEach(([sColor, sText], i) => {
        oContext.fillStyle = sColor;
        oContext.fillText(sText, 2 * iMargin, iMargin + iLine * (i + 0.8), oCanvas.width - 3 * iMargin);
      });
      oContext.drawImage(oFrom, iMargin, iMargin + iLine * oTexts.length);
      document.zelSavePicture("chart.png", oCanvas.toDataURL("image/png"));
    }

    Copy() {
      const sText = this.Text();
      const OnCopy = (oEvent) => {
        oEvent.clipboardData.setData("text/plain", sText);
        oEvent.preventDefault();
        oEvent.stopImmediatePropagation();
      };
      document.addEventListener("copy", OnCopy, { capture: true, once: true });
      document.execCommand("copy");
      document.removeEventListener("copy", OnCopy, { capture: true });
    }
  }

  let oChart = null;

  const DrawChart = (oPlace, oBlock) => {
    if (!oBlock.dataset.chosen) {
      oPlace.textContent = "Nothing has been read yet. The curves begin with the first refresh.";
      return;
    }
    oChart ??= new Chart(oPlace);
    oChart.Read(oBlock);
    oChart.Show();
  };

  // ---- all pages -----------------------------------------------------------------

  const Draw = () => {
    const oBlock = document.getElementById("lstSeries");
    const oPlace = document.getElementById("divChart");
    if (oPlace !== null && oBlock?.dataset.times) return DrawChart(oPlace, oBlock);
    const oSeries = [...(oBlock?.querySelectorAll("[data-values]") ?? [])].filter((o) => o.dataset.place !== "");
    if (oSeries.length === 0) return;
    const oTimes = TimesOf(oBlock);
    DrawHeads(oSeries);
    for (const o of oSeries) (o.dataset.counter === "true" ? DrawRate : DrawLevel)(o, oTimes);
  };

  /** The program tells nobody when a fill is complete; its last change is the end of it. */
  let iTimer = 0;
  const DrawSoon = () => {
    clearTimeout(iTimer);
    iTimer = setTimeout(Draw);
  };
  let oObserver = null;
  const Begin = () => {
    oObserver?.disconnect();
    oDrawn.clear();
    oChart?.End();
    oChart = null;
    const oBlock = document.getElementById("lstSeries");
    if (oBlock === null) return;
    oObserver = new MutationObserver(DrawSoon);
    oObserver.observe(oBlock, { childList: true, attributes: true, subtree: true });
    Draw();
  };

  document.currentScript.dataset.beginsAgain = "";
  window.addEventListener("load", Begin);
  document.addEventListener("zelwbr3reset", Begin);
  document.addEventListener("zelrefreshed", () => {
    Draw();
    oObserver?.takeRecords();
  });
})();
