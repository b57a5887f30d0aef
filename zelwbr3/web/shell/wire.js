/*
 * The line to the session; its other end is the server's Wire.
 *
 * A message is a flat JSON list of whole numbers and strings; some have another list
 * behind it, in a line of its own. Both sides count the messages that they get and
 * keep those that the other one has not confirmed, so a lost connection loses none.
 *
 * Its shell has
 *   iInstance             the instance's number
 *   Greeting()            what the session is told about the browser
 *   Receive(sKind, ...a)  takes a message
 *   Say(sText, bGone)     shows how the connection is
 *   Leave()               keeps what the next load is to know of this one
 *   End()                 nobody takes anything any more
 */
const zelwbr3Wire = (oShell) => {
  "use strict";

  const sSession = `zelweb-session-${oShell.iInstance}`;
  /** Tells this load of the shell from every other one. */
  const sLoad = Array.from(crypto.getRandomValues(new Uint32Array(4)), (i) => i.toString(36)).join("");

  // A load that follows another one in the same tab has its session; a tab that was
  // copied has its number, too, but the first one goes on.
  const sLeft = `zelweb-left-${oShell.iInstance}`;
  const bLeft = sessionStorage.getItem(sLeft) !== null;
  sessionStorage.removeItem(sLeft);
  addEventListener("pagehide", () => sessionStorage.setItem(sLeft, ""));

  let oSocket; // null when it is gone
  let bOpen = false; // takes messages
  let bReady = false; // the shell takes messages
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

  const Connect = () => {
    clearTimeout(iTimer);
    if (bOver || oSocket) return;
    const bFirst = oSocket === undefined;
    const oNew = new WebSocket(`${location.protocol === "https:" ? "wss" : "ws"}://${location.host}/socket`);
    oSocket = oNew;
    oNew.onopen = () => {
      const sNumber = sessionStorage.getItem(sSession) ?? "";
      oNew.send(JSON.stringify(["hello", oShell.iInstance, sNumber, sLoad, iGot, Number(bGreeted), Number(bLeft), ...oShell.Greeting()]));
      // No session has had anything of this load: nothing has to be asked first.
      if (bFirst) SendKept();
    };
    oNew.onmessage = ({ data }) => oNew === oSocket && (bReady ? Receive(data) : aEarly.push(data));
    oNew.onclose = () => Lose(oNew);
    iTimer = setTimeout(Lose, Patience, oNew);
  };

  const Drop = () => {
    clearTimeout(iTimer);
    oSocket?.close();
    oSocket = null;
    bOpen = false;
    aEarly.length = 0;
  };

  const Lose = (oLost) => {
    if (oLost !== oSocket) return;
    Drop();
    if (bOver) return;
    oShell.Say("The connection to the server is gone. Trying again…", true);
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
    Drop();
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
    sessionStorage.setItem(sSession, sNumber);
    clearTimeout(iTimer);
    bGreeted = true;
    iAttempts = 0;
    Confirmed(iArrived);
    iSilent = 0;
    if (!bOpen) SendKept();
    oShell.Say("", false);
  };

  const Confirmed = (iArrived) => {
    aKept = aKept.slice(iArrived - iConfirmed);
    iConfirmed = iArrived;
  };

  const Over = (sText) => {
    bOver = true;
    sessionStorage.removeItem(sSession);
    oShell.End();
    oShell.Say(sText, true);
  };

  // What is about the connection itself is not counted.
  const oControls = {
    welcome: Welcome,
    got: Confirmed,
    pong: () => {},
    reload: () => {
      bOver = true;
      sessionStorage.removeItem(sSession);
      oShell.Leave();
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
      oShell.Receive(sKind, ...aItems, iBody < 0 ? undefined : sText.slice(iBody + 1));
    } catch (oError) {
      console.error(sKind, oError);
    }
  };

  /** What has come before is taken now. */
  const Ready = () => {
    bReady = true;
    for (const sText of aEarly.splice(0)) Receive(sText);
  };

  return { Connect, Renew, Ready, Send, SendText, IsOpen: () => bOpen, IsOver: () => bOver };
};
