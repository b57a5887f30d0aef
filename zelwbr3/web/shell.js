/*
 * The shell: four frames for the control's pages and its commands; boxes.js draws its boxes.
 * It carries out what the server sends and sends back what the user does. It knows
 * no page and decides nothing.
 *
 * A message is a flat JSON list of whole numbers and strings; some have another list
 * behind it, in a line of its own. Both sides count the messages that they get and
 * keep those that the other one has not confirmed, so a lost connection loses none.
 */
(() => {
  "use strict";

  const { Pairs, Make, Captioned, PressMnemonic, ShowBox } = zelwbr3Draw;

  const aFrames = [];
  /** Of each frame: the number of its navigation, its agent, and what waits for its load. */
  const NewState = () => ({ iSerial: 0, oAgent: null, oWindow: null, bLoaded: false, aWaiting: [] });
  const aStates = [0, 1, 2, 3].map(NewState);
  /** The frame of the message window. */
  const iMessage = 4;

  // ---- the connection --------------------------------------------------------

  const sSession = () => `zelweb-session-${iInstance()}`;
  const iInstance = () => Number(/\/instance\/(\d+)$/.exec(location.pathname)?.[1] ?? 0);
  /** Tells this load of the shell from every other one. */
  const sLoad = Array.from(crypto.getRandomValues(new Uint32Array(4)), (i) => i.toString(36)).join("");

  // A load that follows another one in the same tab has its session; a tab that was
  // copied has its number, too, but the first one goes on.
  const sLeft = `zelweb-left-${iInstance()}`;
  const bLeft = sessionStorage.getItem(sLeft) !== null;
  sessionStorage.removeItem(sLeft);
  addEventListener("pagehide", () => {
    sessionStorage.setItem(sLeft, "");
    const oFrame = aFrames[Front()];
    if (oFrame !== undefined) sessionStorage.setItem(sView, JSON.stringify(TakeView(oFrame.contentWindow)));
  });

  let oSocket; // null when it is gone
  let bOpen = false; // takes messages
  let bReady = false; // the shell's page is there in full
  const aEarly = [];
  let bGreeted = false; // some session knows this load
  let bOver = false;
  let iGot = 0; // messages that the server has sent
  let iGotSize = 0; // of those that it does not know to be here
  let iConfirmed = 0; // of our own
  let aKept = [];
  let iAttempts = 0;
  let iTimer = 0;

  /** Messages, and characters of them, after which the other side hears that they have come. */
  const Portion = 32;
  const PortionSize = 1 << 20;
  const Patience = 10000; // for a socket to open, in milliseconds

  const Send = (...aItems) => SendText(JSON.stringify(aItems));
  const SendText = (sText) => {
    if (bOver) return;
    aKept.push(sText);
    if (bOpen) oSocket.send(sText);
    else if (iAttempts > 0) Connect(); // whoever does something does not want to wait for the next attempt
  };

  const SendKept = () => {
    bOpen = true;
    for (const sText of aKept) oSocket.send(sText);
  };

  /** Separators, groups and the order of a date, as the browser's user has them. */
  const Locale = () => {
    const oParts = new Intl.NumberFormat(undefined, { useGrouping: true, minimumFractionDigits: 1 }).formatToParts(123456789.5);
    const Value = (sType) => oParts.find(({ type }) => type === sType)?.value ?? "";
    const aGroups = oParts.filter(({ type }) => type === "integer").map(({ value }) => value.length).reverse();
    const sGroups = aGroups.length < 2 ? "" : aGroups[0] === aGroups[1] ? `${aGroups[0]};0` : `${aGroups[0]};${aGroups[1]};0`;
    const Pattern = (oOptions) => {
      const oFormat = new Intl.DateTimeFormat(undefined, oOptions);
      const oHour = { h11: "h", h12: "h", h23: "H", h24: "H" }[oFormat.resolvedOptions().hourCycle] ?? "H";
      const oLetters = { day: "d", month: "M", year: "y", hour: oHour, minute: "m", second: "s" };
      return oFormat.formatToParts(new Date(2006, 0, 2, 3, 4, 5)).map(({ type, value }) =>
        type === "dayPeriod" ? "tt" : type in oLetters ? oLetters[type].repeat(value.length) : value.replace(/[a-zA-Z]/g, "")
      ).join("");
    };
    const Period = (iHour) =>
      new Intl.DateTimeFormat(undefined, { hour: "numeric", hour12: true }).formatToParts(new Date(2006, 0, 2, iHour))
        .find(({ type }) => type === "dayPeriod")?.value ?? "";
    return [Value("decimal"), aGroups.length < 2 ? "" : Value("group"), sGroups,
      Pattern({ year: "numeric", month: "2-digit", day: "2-digit" }),
      Pattern({ hour: "numeric", minute: "2-digit", second: "2-digit" }), Period(3), Period(15)];
  };

  const Connect = () => {
    clearTimeout(iTimer);
    if (bOver || oSocket) return;
    const bFirst = oSocket === undefined;
    const oNew = new WebSocket(`${location.protocol === "https:" ? "wss" : "ws"}://${location.host}/socket`);
    oSocket = oNew;
    oNew.onopen = () => {
      oNew.send(JSON.stringify(["hello", iInstance(), sessionStorage.getItem(sSession()) ?? "", sLoad, iGot, Number(bGreeted), Number(bLeft), Theme(), ...Locale()]));
      // No session has had anything of this load: nothing has to be asked first.
      if (bFirst) SendKept();
    };
    oNew.onmessage = ({ data }) => oNew === oSocket && (bReady ? Receive(data) : aEarly.push(data));
    oNew.onclose = () => Lose(oNew);
    iTimer = setTimeout(Lose, Patience, oNew);
  };

  const Lose = (oLost) => {
    if (oLost !== oSocket) return;
    clearTimeout(iTimer);
    oLost.close();
    oSocket = null;
    bOpen = false;
    aEarly.length = 0;
    if (bOver) return;
    Say("The connection to the server is gone. Trying again…", true);
    // A server that is there, but lets nobody in without the token, is not asked for ever.
    if (iAttempts > 0) {
      fetch("/lights", { cache: "no-store" }).then(
        ({ status }) => status === 401 && Over("You are signed out. Open the address that zelweb printed when it started: it has the token."),
        () => {});
    }
    const aPauses = [1000, 2000, 4000, 5000];
    iTimer = setTimeout(Connect, aPauses[Math.min(iAttempts++, 3)] * (0.8 + 0.4 * Math.random()));
  };

  /** Another socket at once, whatever became of the present one. */
  const Renew = () => {
    oSocket?.close();
    oSocket = null;
    bOpen = false;
    aEarly.length = 0;
    Connect();
  };

  /*
   * A network that is gone without a word, as that of a computer that was asleep, does
   * not end a socket for minutes. The server answers at once, also while a session is at
   * work; on a slow line, what is on its way comes first.
   */
  const Silence = 15000;
  const Unanswered = 3;
  let iSilent = 0; // times since something was heard
  setInterval(() => {
    if (!bOpen) return;
    if (iSilent++ === Unanswered) return Lose(oSocket);
    oSocket.send('["ping"]');
  }, Silence);

  addEventListener("online", Renew);
  addEventListener("visibilitychange", () => document.visibilityState === "visible" && Connect());

  const Welcome = (sNumber, iArrived) => {
    sessionStorage.setItem(sSession(), sNumber);
    clearTimeout(iTimer);
    bGreeted = true;
    iAttempts = 0;
    Confirmed(iArrived);
    iSilent = 0;
    if (!bOpen) SendKept();
    Say("");
  };

  const Confirmed = (iArrived) => {
    aKept = aKept.slice(iArrived - iConfirmed);
    iConfirmed = iArrived;
  };

  const Over = (sText) => {
    bOver = true;
    sessionStorage.removeItem(sSession());
    for (const oBox of document.querySelectorAll("dialog")) oBox.remove(); // nobody takes an answer any more
    Say(sText, true);
  };

  /** The page that the session after this one is to show. */
  const sNext = `zelweb-next-${iInstance()}`;
  let sWanted = sessionStorage.getItem(sNext) ?? "";
  sessionStorage.removeItem(sNext);

  // What is about the connection itself is not counted.
  const oControls = {
    welcome: Welcome,
    got: Confirmed,
    pong: () => {},
    reload: () => {
      bOver = true;
      sessionStorage.removeItem(sSession());
      sessionStorage.setItem(sNext, document.querySelector("#pages [aria-current]")?.dataset.name ?? "");
      location.reload();
    },
    full: (iMost) => Over(`The server shows ${iMost} sessions already, and no more. Close another one first.`),
    ended: (sReason) => Over(`This session has ended: ${sReason}.`),
  };

  const Receive = (sText) => {
    iSilent = 0;
    const iBody = sText.indexOf("\n");
    const [sKind, ...aItems] = JSON.parse(iBody < 0 ? sText : sText.slice(0, iBody));
    if (sKind in oControls) return oControls[sKind](...aItems);
    iGotSize += sText.length;
    if (++iGot % Portion === 0 || iGotSize > PortionSize) {
      iGotSize = 0;
      oSocket.send(JSON.stringify(["got", iGot]));
    }
    try {
      oMessages[sKind](...aItems, iBody < 0 ? undefined : sText.slice(iBody + 1));
    } catch (oError) {
      console.error(sKind, oError);
    }
  };

  // ---- the frames ------------------------------------------------------------

  /** Codes of the keys that pages handle wherever they are pressed: Escape and F5, and what the program adds. */
  const aKeys = [27, 116];

  /** What the agent of a page in one of the frames needs. */
  const Port = (oWindow) => {
    const iFrame = AllFrames().findIndex((o) => o.contentWindow === oWindow);
    const oState = aStates[iFrame];
    const iSerial = Number(/zelwbr3=(\d+)/.exec(oWindow.location.hash)?.[1] ?? 0);
    oState.iSerial = iSerial;
    oState.oWindow = oWindow;
    oState.oAgent = null;
    oState.bLoaded = false;
    if (iFrame === iMessage) TendMessage(oWindow);
    if (aBusy.length > 0) ShowWait(oWindow);
    return {
      Theme: Theme(),
      IsFrame: false,
      Serial: () => iSerial,
      Keys: aKeys,
      Mnemonic: PressMnemonic,
      Attach: (oAgent) => (oState.oAgent = oAgent),
      Post: (sMessage) => {
        if (oState.oWindow !== oWindow) return; // of a document that is gone
        if (bOver && /^\["key",\d+,116\]/.test(sMessage)) location.reload();
        SendText(`["agent",${iFrame}]\n${sMessage}`);
      },
    };
  };
  Object.defineProperty(globalThis, "zelwbr3Shell", { value: Object.freeze({ Port }) });

  const AllFrames = () => [...document.querySelectorAll("iframe")];

  /** A frame has loaded, and the page's own scripts have done what they do then: lists take rows as texts. */
  document.addEventListener("load", ({ target }) => {
    const iFrame = AllFrames().indexOf(target);
    const oState = aStates[iFrame];
    if (oState === undefined) return;
    const sHash = target.contentDocument === null ? null : target.contentWindow.location.hash;
    if (target.getAttribute("src") === null && sHash === "") return; // empty from the beginning
    // One that failed in the network has no document of ours.
    if (sHash === null || oState.oAgent === null) return Send("failed", iFrame, oState.iSerial);
    oState.bLoaded = true;
    for (const aBatch of oState.aWaiting.splice(0)) Apply(iFrame, ...aBatch);
    GiveView();
  }, true);

  const Apply = (iFrame, iSerial, iBatch, sList) => {
    const oState = aStates[iFrame];
    // What follows a navigation waits for its document.
    if (iSerial > oState.iSerial || !oState.bLoaded) return void oState.aWaiting.push([iSerial, iBatch, sList]);
    if (iSerial !== oState.iSerial) return;
    Send("ack", iFrame, iSerial, iBatch, oState.oAgent.Apply(iSerial, iBatch, sList));
  };

  /** Lets the document of a frame begin again. */
  const Again = (sHow, iFrame, iOld, iNew) => {
    const oState = aStates[iFrame];
    const bDone = oState.bLoaded && oState.iSerial === iOld && oState.oAgent[sHow](iOld, iNew) === "";
    if (!bDone) return Send("notagain", iFrame, iNew);
    oState.iSerial = iNew;
    oState.aWaiting = [];
  };

  const Front = () => aFrames.findIndex((o) => o.classList.contains("front"));

  const FocusFront = () => {
    const oFrame = aFrames[Front()];
    if (oFrame === undefined || document.querySelector("dialog[open]") !== null) return;
    const bElsewhere = document.activeElement !== document.body && !aFrames.includes(document.activeElement);
    if (!bElsewhere) oFrame.focus();
  };

  const aBusy = [];
  let iPointer = 0;

  /** The wait cursor without an attribute: the document stays as the program knows it. */
  const ShowWait = (oWindow) => {
    const oSheet = new oWindow.CSSStyleSheet();
    oSheet.replaceSync("*{cursor:wait!important}");
    oWindow.document.adoptedStyleSheets.push(oSheet);
    aBusy.push([oWindow.document, oSheet]);
  };

  const oMessages = {
    go: (iFrame, iNumber, sURL) => {
      const oState = aStates[iFrame];
      oState.aWaiting = [];
      const oFrame = aFrames[iFrame];
      // The first page began to load with the shell itself.
      if (oFrame.src === new URL(sURL, location.href).href && oState.iSerial <= iNumber) return;
      oState.bLoaded = false;
      oState.oWindow = oState.oAgent = null;
      oFrame.contentWindow.location.replace(sURL);
    },
    reset: (...aItems) => Again("Reset", ...aItems),
    refresh: (...aItems) => Again("Refresh", ...aItems),
    batch: Apply,
    keys: (...aCodes) => aKeys.splice(2, Infinity, ...aCodes.slice(0, -1)),
    visible: (iFrame, bVisible) => {
      aFrames[iFrame].classList.toggle("front", bVisible === 1);
      aFrames[iFrame].tabIndex = bVisible === 1 ? 0 : -1;
      FocusFront();
    },
    pointer: (bBusy) => {
      clearTimeout(iPointer);
      const ShowWaits = () => [window, ...aFrames.filter((o) => o.contentDocument !== null).map((o) => o.contentWindow)].forEach(ShowWait);
      if (bBusy) iPointer = setTimeout(ShowWaits, 150);
      else for (const [oDocument, oSheet] of aBusy.splice(0)) {
        oDocument.adoptedStyleSheets = oDocument.adoptedStyleSheets.filter((o) => o !== oSheet);
      }
    },
    page: (sName, sTitle, bTryAgain, sRead) => {
      if (sTitle !== "") document.title = sTitle;
      document.getElementById("read").textContent = sRead;
      const sNow = sWanted;
      sWanted = "";
      if (sNow !== "" && sNow !== sName) return void Send("show", sNow);
      Refreshed(bTryAgain === 1);
      // At the beginning of a session that goes on, there is none yet.
      bViewDue ||= Front() >= 0;
      GiveView();
      for (const o of document.querySelectorAll("#pages button")) {
        if (o.dataset.name !== sName) o.removeAttribute("aria-current");
        else {
          o.setAttribute("aria-current", "page");
          o.scrollIntoView({ block: "nearest", inline: "nearest" });
        }
      }
    },
    pages: (...aItems) => {
      const oPages = document.getElementById("pages");
      let sLast = "";
      oPages.replaceChildren(...Pairs(aItems, 4).flatMap(([sName, sTitle, sGroup, iFindings]) => {
        const oButton = Make("button", { type: "button", textContent: sTitle, onclick: () => Do("show", sName) }, { name: sName });
        if (iFindings > 0) {
          const oCount = Make("span", { className: "count", textContent: iFindings });
          oCount.ariaLabel = `${iFindings} need attention`;
          oCount.role = "img";
          oButton.append(oCount);
        }
        const bNew = sGroup !== "" && sGroup !== sLast;
        sLast = sGroup;
        return bNew ? [Make("h2", { textContent: sGroup }), oButton] : [oButton];
      }));
    },
    commands: (...aItems) => {
      const oBar = document.getElementById("commands");
      const sFocus = oBar.contains(document.activeElement) ? document.activeElement.dataset.key : undefined;
      oBar.replaceChildren(...Pairs(aItems, 6).map(([sKey, sText, sPicture, bEnabled, bSeparator, sRefused]) => {
        if (bSeparator) return Make("span", { role: "separator", className: "separator" });
        const oButton = Make("button", { type: "button" }, { key: sKey });
        if (sPicture !== "0") {
          const oPicture = Make("img", { src: `/picture/${sPicture}`, alt: "", width: 16, height: 16 });
          oPicture.onerror = () => oPicture.remove();
          oButton.append(oPicture);
        }
        oButton.append(Captioned(Make("span"), sText));
        // A disabled one can still be read, and one that is refused says why.
        if (!bEnabled) oButton.setAttribute("aria-disabled", "true");
        if (sRefused !== "") oButton.title = sRefused;
        oButton.onclick = () => (bEnabled || sRefused !== "") && Do("item", sKey);
        return oButton;
      }));
      if (sFocus !== undefined) oBar.querySelector(`[data-key="${sFocus}"]`)?.focus();
    },
    live: (iFrame) => aStates[iFrame].bLoaded && SendText(`["live",${iFrame}]\n${aStates[iFrame].oAgent.Live()}`),
    failure: (sText, sSince) => {
      const oFailure = document.getElementById("failure");
      bFailure = sText !== "";
      oFailure.hidden = !bFailure;
      const oWhy = oFailure.querySelector(".why");
      if (oWhy.textContent !== sText) oWhy.textContent = sText; // said once by a screen reader
      oFailure.querySelector(".since").textContent = sSince;
      Refreshed(bFailure);
    },
    box: (...aItems) => ShowBox(Send, ...aItems.slice(0, -1)),
    close: (iBox) => {
      const oBox = document.getElementById(`box${iBox}`);
      if (oBox === null) return;
      oBox.dataset.answered = "";
      oBox.close();
      oBox.remove();
      FocusFront();
    },
    window: (bOpen) => (bOpen === 1 ? OpenMessage() : CloseMessage()),
    select: (iBox, iField, iStart, iLength) => {
      const oField = document.querySelectorAll(`#box${iBox} .field`)[iField];
      if (oField !== undefined && "entered" in oField.dataset) oField.setSelectionRange(iStart, iStart + iLength);
    },
  };

  /** A command of the user; the keyboard goes back to the page afterwards. */
  const Do = (...aItems) => {
    Send(...aItems);
    if (document.activeElement?.closest("#pages, #commands")) {
      document.activeElement.blur();
      FocusFront();
    }
  };

  // ---- reading again by itself -----------------------------------------------------

  const TryAgain = 5; // seconds, for a page that could not be read
  const Share = 10; // reading takes at most this part of the time
  let iEvery = 0;
  let iTick = 0;
  let bUnread = false;
  let bFailure = false; // there is no instance yet, and no page
  let dBegun = 0;
  let dTook = 0;

  const Refresh = (bAsked) => {
    dBegun = performance.now();
    Send("refresh", Number(bAsked));
  };

  const Refreshed = (bTryAgain) => {
    if (dBegun > 0) dTook = performance.now() - dBegun;
    dBegun = 0;
    bUnread = bTryAgain;
    Schedule();
  };

  const Schedule = () => {
    clearTimeout(iTick);
    const iSeconds = iEvery === 0 && bUnread ? TryAgain : iEvery;
    if (iSeconds > 0) iTick = setTimeout(Tick, Math.max(iSeconds * 1000, Share * dTook));
  };

  /** Nothing is refreshed unasked that nobody sees, or that somebody is busy with. */
  const Tick = () => {
    const oState = aStates[Front()];
    // One that the program had no time for is not waited for without end.
    const bReading = dBegun > 0 && performance.now() - dBegun < 30000;
    const bBusy = bReading || document.visibilityState !== "visible" || document.querySelector("dialog[open]") !== null;
    const bMay = bFailure || (oState?.bLoaded && oState.oAgent.InUse() !== "true");
    if (bOpen && !bBusy && bMay) Refresh(false);
    Schedule();
  };

  // ---- the line about the connection --------------------------------------------

  const Say = (sText, bGone = false) => {
    const oLine = document.getElementById("line");
    if (oLine === null) return;
    oLine.children[0].textContent = sText;
    oLine.children[1].textContent = bOver ? "Load again" : "Try now";
    oLine.children[1].onclick = () => (bOver ? location.reload() : Renew());
    oLine.hidden = sText === "";
    document.body.classList.toggle("gone", bGone);
  };

  // ---- the message window --------------------------------------------------------

  const CloseMessage = () => {
    const oWindow = document.getElementById("message");
    if (oWindow === null) return;
    oWindow.dataset.answered = "";
    oWindow.remove();
    aFrames.length = aStates.length = iMessage;
    FocusFront();
  };

  const OpenMessage = () => {
    CloseMessage();
    const oFrame = Make("iframe", { title: "Message" });
    const oClose = Captioned(Make("button", { type: "button" }), "&Close");
    const oWindow = Make("dialog", { id: "message" }, {}, Make("h2", { id: "messagecaption", textContent: "Message" }), oFrame,
      Make("div", { className: "buttons" }, {}, oClose));
    oWindow.setAttribute("aria-labelledby", "messagecaption");
    oClose.onclick = () => oWindow.close();
    oWindow.addEventListener("close", () => "answered" in oWindow.dataset || Send("closed"));
    document.body.append(oWindow);
    aFrames[iMessage] = oFrame;
    aStates[iMessage] = NewState();
    // The keyboard waits here until there is a page that knows what Escape means.
    oClose.autofocus = true;
    oWindow.showModal();
  };

  /** Its page and the topic in it: the keyboard, Escape, and the theme, which a topic does not know of. */
  const TendMessage = (oPage) => {
    const OnKey = (oEvent) => {
      if (oEvent.key !== "Escape") return;
      oEvent.stopImmediatePropagation();
      document.getElementById("message")?.close();
    };
    const OnTopicKey = (oEvent) => {
      if (oEvent.altKey && !oEvent.ctrlKey && PressMnemonic(oEvent.key)) oEvent.preventDefault();
      OnKey(oEvent);
    };
    const oSystem = matchMedia("(prefers-color-scheme: dark)");
    const DrawTopic = () => {
      const oTopic = oPage.document.querySelector("iframe")?.contentDocument;
      if (oTopic) oTopic.documentElement.dataset.theme = (Theme() === "" ? oSystem.matches : Theme() === "dark") ? "dark" : "light";
    };
    oSystem.onchange = DrawTopic;
    oPage.addEventListener("keydown", OnKey, true);
    oPage.document.addEventListener("load", ({ target }) => {
      if (target.localName !== "iframe") return;
      const oTopic = target.contentDocument;
      // Nothing, or what makes way for a topic without a word: it would keep the keys for itself.
      if (oTopic === null || oTopic.URL === "about:blank") return;
      DrawTopic();
      oTopic.addEventListener("keydown", OnTopicKey, true);
      // While a topic makes way for another one, nobody in there takes a key.
      oTopic.defaultView.addEventListener("pagehide", () => oPage.document.activeElement === target && oPage.focus());
      target.focus();
    }, true);
  };

  // ---- what a load of the shell would lose -----------------------------------------

  /*
   * The tab and the figures come from the program again. What is the user's own is
   * here: the filters of lists, what they are sorted by, what is pressed, the place.
   */
  const sView = `zelweb-view-${iInstance()}`;
  const NameOf = (oWindow) => oWindow.location.pathname.split("/").at(-1);
  const InPage = (oWindow, sWhat) => [...oWindow.document.querySelectorAll(sWhat)];
  const Filters = "input.zelListFilter";
  const Pressed = ".zelListBar [aria-pressed]";
  const Headings = "tr > th";

  const TakeView = (oWindow) => ({
    sName: NameOf(oWindow),
    aFilters: InPage(oWindow, Filters).map((o) => o.value),
    aPressed: InPage(oWindow, Pressed).map((o) => o.ariaPressed),
    aSorted: InPage(oWindow, Headings).map((o) => o.ariaSort),
    dPlace: oWindow.scrollY,
  });

  let bViewDue = false;

  /** To the page that is filled for the first time since the load. */
  const GiveView = () => {
    const iFrame = Front();
    if (!bViewDue || iFrame < 0 || !aStates[iFrame].bLoaded) return;
    const oWindow = aFrames[iFrame].contentWindow;
    const oView = JSON.parse(sessionStorage.getItem(sView));
    sessionStorage.removeItem(sView);
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

  // ---- the shell's own ---------------------------------------------------------

  const Theme = () => localStorage.getItem("zelweb-theme") ?? "";
  const DrawTheme = () => {
    if (Theme() === "") document.documentElement.removeAttribute("data-theme");
    else document.documentElement.dataset.theme = Theme();
  };

  addEventListener("keydown", (oEvent) => {
    const oBox = [...document.querySelectorAll("dialog[open]")].at(-1);
    if (oBox !== undefined) {
      // A browser would close all of those together that were opened without a click.
      if (oEvent.key === "Escape" && !oEvent.isComposing) {
        oEvent.preventDefault();
        oBox.close();
      }
      if (oEvent.altKey && !oEvent.ctrlKey && PressMnemonic(oEvent.key)) oEvent.preventDefault();
      return;
    }
    if (oEvent.ctrlKey || oEvent.metaKey || oEvent.shiftKey) return;
    if (oEvent.altKey) return void (PressMnemonic(oEvent.key) && oEvent.preventDefault());
    const iFrame = Front();
    if (!aKeys.includes(oEvent.keyCode) || (iFrame < 0 && !bFailure && !bOver)) return;
    oEvent.preventDefault();
    if (bOver) return void (oEvent.key === "F5" && location.reload());
    if (bFailure) return void (oEvent.key === "F5" && Refresh(true));
    SendText(`["agent",${iFrame}]\n["key",${aStates[iFrame].iSerial},${oEvent.keyCode}]`);
  });

  DrawTheme();
  addEventListener("DOMContentLoaded", () => {
    aFrames.push(...document.querySelectorAll("#frames iframe"));
    const oTheme = document.getElementById("theme");
    const oEvery = document.getElementById("every");
    iEvery = Number(localStorage.getItem("zelweb-every") ?? 0);
    oEvery.value = iEvery;
    oEvery.onchange = () => {
      iEvery = Number(oEvery.value);
      localStorage.setItem("zelweb-every", iEvery);
      Schedule();
    };
    document.getElementById("refresh").onclick = () => {
      Refresh(true);
      aFrames[Front()]?.focus();
    };
    document.querySelector("#failure button").onclick = () => Refresh(true);
    oTheme.value = Theme();
    oTheme.onchange = () => {
      localStorage.setItem("zelweb-theme", oTheme.value);
      DrawTheme();
      Send("theme", oTheme.value);
    };
    bReady = true;
    for (const sText of aEarly.splice(0)) Receive(sText);
  });
  Connect();
})();
