/*
 * The shell: four frames for the control's pages and its commands. It carries out what
 * the server sends and sends back what the user does. It knows no page and decides
 * nothing.
 */
(() => {
  "use strict";

  const { Pairs, Make, Captioned, PressMnemonic, ShowBox } = zelwbr3Draw;

  const iInstance = Number(/\/instance\/(\d+)$/.exec(location.pathname)?.[1] ?? 0);
  /** Where this tab keeps what the next load is to have again. */
  const sView = `zelweb-view-${iInstance}`;
  const sNext = `zelweb-next-${iInstance}`;

  const oWire = zelwbr3Wire({
    iInstance,
    Greeting: () => [Theme(), ...zelwbr3Locale()],
    Receive: (sKind, ...aItems) => oMessages[sKind](...aItems),
    Say: (sText, bGone) => Say(sText, bGone),
    Leave: () => sessionStorage.setItem(sNext, document.querySelector("#pages [aria-current]")?.dataset.name ?? ""),
    End: () => {
      for (const oBox of document.querySelectorAll("dialog")) oBox.remove();
    },
  });
  const { Send, SendText } = oWire;

  /** The page that the session after one that has ended is to show. */
  let sWanted = sessionStorage.getItem(sNext) ?? "";
  sessionStorage.removeItem(sNext);

  addEventListener("pagehide", () => {
    const oFrame = aFrames[Front()];
    if (oFrame !== undefined) sessionStorage.setItem(sView, zelwbr3View.Take(oFrame.contentWindow));
  });

  const aFrames = [];
  /** Of each frame: the number of its navigation, its agent, and what waits for its load. */
  const NewState = () => ({ iSerial: 0, oAgent: null, oWindow: null, bLoaded: false, aWaiting: [] });
  const aStates = [0, 1, 2, 3].map(NewState);
  /** The frame of the message window. */
  const iMessage = 4;

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
        if (oWire.IsOver() && /^\["key",\d+,116\]/.test(sMessage)) location.reload();
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

  let bViewDue = false;

  /** To the page that is filled for the first time since the load. */
  const GiveView = () => {
    const iFrame = Front();
    if (!bViewDue || iFrame < 0 || !aStates[iFrame].bLoaded) return;
    const sKept = sessionStorage.getItem(sView);
    sessionStorage.removeItem(sView);
    zelwbr3View.Give(aFrames[iFrame].contentWindow, sKept);
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
    if (oWire.IsOpen() && !bBusy && bMay) Refresh(false);
    Schedule();
  };

  // ---- the line about the connection --------------------------------------------

  const Say = (sText, bGone) => {
    const oLine = document.getElementById("line");
    if (oLine === null) return;
    oLine.children[0].textContent = sText;
    oLine.children[1].textContent = oWire.IsOver() ? "Load again" : "Try now";
    oLine.children[1].onclick = () => (oWire.IsOver() ? location.reload() : oWire.Renew());
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
    if (!aKeys.includes(oEvent.keyCode) || (iFrame < 0 && !bFailure && !oWire.IsOver())) return;
    oEvent.preventDefault();
    if (oWire.IsOver()) return void (oEvent.key === "F5" && location.reload());
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
    oWire.Ready();
  });
  oWire.Connect();
})();
