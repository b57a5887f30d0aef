#include "zelwbr3/headless/ScriptedAnswers.h"

#include <algorithm>
#include <span>

namespace ZELWbr3::Headless {

namespace {

using Answer = MessageBox::Answer;

/// The answers that a box offers, the cancelling one last.
std::span<const Answer> Offered(MessageBox::Buttons eButtons) {
  static constexpr Answer OK[] = {Answer::OK};
  static constexpr Answer OKCancel[] = {Answer::OK, Answer::Cancel};
  static constexpr Answer YesNo[] = {Answer::Yes, Answer::No};
  switch (eButtons) {
    case MessageBox::Buttons::OKCancel:
      return OKCancel;
    case MessageBox::Buttons::YesNo:
      return YesNo;
    default:
      return OK;
  }
}

}  // namespace

const char* Word(MessageBox::Buttons eButtons) {
  switch (eButtons) {
    case MessageBox::Buttons::OKCancel:
      return "okcancel";
    case MessageBox::Buttons::YesNo:
      return "yesno";
    default:
      return "ok";
  }
}

const char* Word(MessageBox::Icon eIcon) { return eIcon == MessageBox::Icon::Question ? "question" : "exclamation"; }

const char* Word(MessageBox::Answer eAnswer) {
  switch (eAnswer) {
    case Answer::Cancel:
      return "cancel";
    case Answer::Yes:
      return "yes";
    case Answer::No:
      return "no";
    default:
      return "ok";
  }
}

const char* Word(Dialog::Answer eAnswer) {
  switch (eAnswer) {
    case Dialog::Answer::Quick:
      return "quick";
    case Dialog::Answer::Cancel:
      return "cancel";
    default:
      return "ok";
  }
}

std::string FullText(const Dialog& oDialog) {
  std::string sText = oDialog.Text;
  if (!oDialog.Frame.empty()) sText += "\n" + oDialog.Frame;
  for (const auto& oField : oDialog.Fields) {
    sText += "\n" + oField.Caption + (oField.Note.empty() ? "" : " " + oField.Note);
  }
  return sText;
}

MessageBox::Answer ScriptedAnswers::Show(const std::string& sText, const std::string& sTitle, Buttons eButtons,
                                         Icon eIcon) {
  const auto oOffered = Offered(eButtons);
  const auto Says = [this](Answer eAnswer) { return m_answers.front().Text == Word(eAnswer); };
  Answer eGiven = oOffered.back();
  if (!m_answers.empty() && (oOffered.size() > 1 || Says(Answer::OK))) {
    const auto it = std::ranges::find_if(oOffered, Says);
    if (it != oOffered.end()) {
      eGiven = *it;
    } else {
      Unsuitable.Raise("the box \"" + sTitle + "\" does not offer the answer " + m_answers.front().Text);
    }
    m_answers.pop_front();
  }
  Shown.Raise({sText, sTitle, eButtons, eIcon, eGiven});
  return eGiven;
}

Dialog::Answer ScriptedAnswers::Show(Dialog& oDialog) {
  Dialog::Answer eGiven = Dialog::Answer::Cancel;
  if (!m_answers.empty()) {
    const ScriptedAnswer oAnswer = std::move(m_answers.front());
    m_answers.pop_front();
    eGiven = Press(oDialog, oAnswer);
  }
  DialogShown.Raise({oDialog, eGiven});
  return eGiven;
}

Dialog::Answer ScriptedAnswers::Press(Dialog& oDialog, const ScriptedAnswer& oAnswer) {
  const auto Refuse = [&](const std::string& sWhy) {
    Unsuitable.Raise("the dialog " + oDialog.Name + sWhy);
    return Dialog::Answer::Cancel;
  };
  const auto oButton =
      std::ranges::find_if(oDialog.Buttons, [&](const auto& o) { return oAnswer.Word == Word(o.Gives); });
  if (oButton == oDialog.Buttons.end()) return Refuse(" does not offer the answer " + oAnswer.Text);
  const std::string sUnknown = oAnswer.Enter(oDialog);
  if (!sUnknown.empty()) return Refuse(" has no field for " + sUnknown);
  if (oButton->Gives != Dialog::Answer::Cancel && oDialog.Complaint) {
    const std::string sComplaint = oDialog.Complaint();
    if (!sComplaint.empty()) return Refuse(" cannot be confirmed: " + sComplaint);
  }
  return oButton->Gives;
}

}  // namespace ZELWbr3::Headless
