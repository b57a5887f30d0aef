/*
 * What the shell draws: elements with captions whose letters Alt presses, and the boxes
 * of a session. They know nothing of the connection: Send is what the answers go to.
 */
const zelwbr3Draw = (() => {
  "use strict";

  const Pairs = (aItems, iCount) =>
    Array.from({ length: Math.floor(aItems.length / iCount) }, (_, i) => aItems.slice(i * iCount, (i + 1) * iCount));

  const Make = (sTag, oProperties = {}, oData = {}, ...aChildren) => {
    const o = Object.assign(document.createElement(sTag), oProperties);
    Object.assign(o.dataset, oData);
    o.append(...aChildren);
    return o;
  };

  /** Gives an element a caption in which "&" marks the letter for Alt. */
  const Captioned = (oElement, sCaption) => {
    const iMark = sCaption.indexOf("&");
    if (iMark < 0 || iMark + 1 >= sCaption.length) {
      oElement.append(sCaption);
      return oElement;
    }
    oElement.dataset.mnemonic = sCaption[iMark + 1].toLowerCase();
    oElement.title = `Alt+${sCaption[iMark + 1].toUpperCase()}`;
    oElement.append(sCaption.slice(0, iMark), Make("u", { textContent: sCaption[iMark + 1] }), sCaption.slice(iMark + 2));
    return oElement;
  };

  /** Alt with a letter: in the box that is open, or among the commands. */
  const PressMnemonic = (sKey) => {
    const oWhere = [...document.querySelectorAll("dialog[open]")].at(-1) ?? document.getElementById("commands");
    const o = [...oWhere.querySelectorAll("[data-mnemonic]")].find((oEach) => oEach.dataset.mnemonic === sKey.toLowerCase());
    if (o === undefined) return false;
    if (o.control) o.control.focus();
    if (!o.control || o.control.type === "checkbox") (o.control ?? o).click();
    return true;
  };

  // ---- boxes -------------------------------------------------------------------

  const ShowBox = (Send, iBox, sName, sCaption, sPicture, sFrame, bHelp, ...aRest) => {
    const Take = (iCount) => aRest.splice(0, iCount);
    const List = (iCount) => Pairs(Take(Take(1)[0] * iCount), iCount);
    const aRuns = List(2);
    const aFields = List(8);
    const aButtons = List(3);
    const [iDefault] = Take(1);
    document.getElementById(`box${iBox}`)?.remove();

    const oBox = Make("dialog", { id: `box${iBox}` }, { name: sName });
    oBox.setAttribute("aria-labelledby", `box${iBox}caption`);
    if (aFields.length === 0) oBox.setAttribute("role", "alertdialog");
    const oForm = Make("form", { method: "dialog", noValidate: true });
    oBox.append(Make("h2", { id: `box${iBox}caption`, textContent: sCaption }), oForm);

    const oText = Make("div", { className: "text", id: `box${iBox}text` });
    for (const [sKind, sText] of aRuns) {
      if (sKind === "text") oText.append(sText);
      else if (sKind === "img") oText.append(Make("span", { className: "sign", textContent: "⚠ " }), Make("b", { textContent: sText }));
      else oText.append(Make(sKind, sKind === "b" ? { textContent: sText } : {}));
    }
    if (oText.textContent.length > 1500) {
      oText.classList.add("long");
      oText.tabIndex = 0;
    }
    oBox.setAttribute("aria-describedby", oText.id);
    const oSign = Make("div", { className: `picture ${sPicture}`, textContent: sPicture === "question" ? "?" : "!" });
    oSign.setAttribute("aria-hidden", "true");
    oForm.append(Make("div", { className: "message" }, {}, oSign, oText));

    const aInputs = aFields.map(([sKind, sField, sLabel, sNote, sValue, bRestricted, sTaken, bEntered], i) => {
      const oInput = Make("input", { type: sKind, name: sField, className: "field", id: `box${iBox}field${i}`, autocomplete: "off" });
      if (sKind === "time") oInput.step = 1;
      if (sKind === "checkbox") oInput.checked = sValue === "1";
      else oInput.value = sValue;
      if (bRestricted) {
        oInput.addEventListener("beforeinput", (oEvent) => {
          const bTyped = oEvent.inputType === "insertText" && [...(oEvent.data ?? "")].some((s) => !sTaken.includes(s));
          const bDeleted = oEvent.inputType === "deleteContentBackward" && !sTaken.includes("\b");
          if (bTyped || bDeleted) oEvent.preventDefault();
        });
      }
      if (bEntered) {
        oInput.addEventListener("focus", () => {
          oInput.dataset.entered = "";
          Send("entered", iBox, i, oInput.value);
        });
        // Who is already at work in it is not disturbed by an answer that comes late.
        for (const sEvent of ["keydown", "pointerdown", "beforeinput", "blur"]) oInput.addEventListener(sEvent, () => delete oInput.dataset.entered);
      }
      return oInput;
    });
    if (aInputs.length > 0) {
      const oFields = Make(sFrame === "" ? "div" : "fieldset", { className: "fields" });
      if (sFrame !== "") oFields.append(Make("legend", { textContent: sFrame }));
      aFields.forEach(([sKind, , sLabel, sNote], i) => {
        const oLabel = Captioned(Make("label", { htmlFor: aInputs[i].id }), sLabel);
        const oNote = Make("label", { htmlFor: aInputs[i].id, className: "note", textContent: sNote });
        oFields.append(oLabel, Make("span", {}, {}, aInputs[i], sNote === "" ? "" : oNote));
      });
      oForm.append(oFields);
    }

    const iCancel = Math.max(aButtons.findIndex(([, , bCancel]) => bCancel), 0);
    const Values = () => aInputs.map((o) => (o.type === "checkbox" ? (o.checked ? "1" : "0") : o.value));
    const Press = (iButton) => {
      // A date that is not one in full is said by the browser itself.
      const oBad = iButton === iCancel && aButtons[iButton][2] ? undefined : aInputs.find((o) => o.validity.badInput);
      if (oBad !== undefined) return void oBad.reportValidity();
      Send("pressed", iBox, iButton, ...Values());
    };
    const oRow = Make("div", { className: "buttons" });
    aButtons.forEach(([sButton, sText], i) => {
      const oButton = Captioned(Make("button", { type: "button", name: sButton }), sText);
      oButton.onclick = () => Press(i);
      if (i === iDefault) oButton.classList.add("default");
      oRow.append(oButton);
    });
    if (bHelp) {
      const oHelp = Captioned(Make("button", { type: "button" }), "&Help");
      oHelp.onclick = () => Send("help", iBox);
      oRow.append(oHelp);
    }
    oForm.append(oRow);
    oForm.onsubmit = (oEvent) => oEvent.preventDefault();
    oBox.addEventListener("keydown", (oEvent) => {
      if (oEvent.key === "Enter" && oEvent.target.matches("input")) {
        oEvent.preventDefault();
        Press(iDefault);
      }
    });
    // Escape: a browser lets it be held up only once, so the answer hangs on the end.
    oBox.addEventListener("close", () => "answered" in oBox.dataset || Send("pressed", iBox, iCancel, ...Values()));
    document.body.append(oBox);
    oBox.showModal();
    (aInputs[0] ?? oRow.children[iDefault]).focus();
  };

  return { Pairs, Make, Captioned, PressMnemonic, ShowBox };
})();
