#include "headless/ScriptedAnswers.h"

#include <algorithm>
#include <span>

namespace ZELWbr3::Headless {

namespace {

using Answer = MessageBox::Answer;

/// What a box offers, the cancelling choice last.
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

MessageBox::Answer ScriptedAnswers::Show(const std::string& sText, const std::string& sTitle, Buttons eButtons,
                                         Icon eIcon) {
  const auto oOffered = Offered(eButtons);
  const auto Says = [this](Answer eAnswer) { return m_answers.front() == Word(eAnswer); };
  Answer eGiven = oOffered.back();
  if (!m_answers.empty() && (oOffered.size() > 1 || Says(Answer::OK))) {
    const auto it = std::ranges::find_if(oOffered, Says);
    if (it != oOffered.end()) {
      eGiven = *it;
    } else {
      Unsuitable.Raise("the box \"" + sTitle + "\" does not offer the answer " + m_answers.front());
    }
    m_answers.pop_front();
  }
  Shown.Raise({sText, sTitle, eButtons, eIcon, eGiven});
  return eGiven;
}

}  // namespace ZELWbr3::Headless
