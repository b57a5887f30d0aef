#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/headless/ScriptedAnswer.h"
#include "zelwbr3/platform/DialogBox.h"
#include "zelwbr3/platform/MessageBox.h"

#include <deque>
#include <string>

namespace ZELWbr3::Headless {

/// Answers message boxes and dialogs from a script, in order. A box without a
/// scripted answer is cancelled. A box that only offers OK takes the next answer
/// only if that is ok.
class ZELWBR3_EXPORT ScriptedAnswers : public MessageBox, public DialogBox {
 public:
  struct Box {
    std::string Text;
    std::string Title;
    Buttons Offered;
    Icon Picture;
    MessageBox::Answer Given;
  };

  /// A dialog after it was answered: its fields hold what was entered.
  struct AnsweredDialog {
    const Dialog& Shown;
    Dialog::Answer Given;
  };

  /// Throws like ScriptedAnswer::Parse.
  void Add(const std::string& sAnswer) { m_answers.push_back(ScriptedAnswer::Parse(sAnswer)); }
  bool Empty() const { return m_answers.empty(); }

  MessageBox::Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  Dialog::Answer Show(Dialog& oDialog) override;

  /// A box was shown and answered.
  Event<const Box&> Shown;
  /// A dialog was shown and answered.
  Event<const AnsweredDialog&> DialogShown;
  /// The box or dialog did not take the scripted answer and was cancelled; the
  /// text says why.
  Event<const std::string&> Unsuitable;

 private:
  /// Enters an answer into a dialog and returns the button pressed; Cancel if the
  /// dialog does not take the answer.
  Dialog::Answer Press(Dialog& oDialog, const ScriptedAnswer& oAnswer);

  std::deque<ScriptedAnswer> m_answers;
};

/// The words for buttons, icons and answers in scripts and event logs.
ZELWBR3_EXPORT const char* Word(MessageBox::Buttons eButtons);
ZELWBR3_EXPORT const char* Word(MessageBox::Icon eIcon);
ZELWBR3_EXPORT const char* Word(MessageBox::Answer eAnswer);
ZELWBR3_EXPORT const char* Word(Dialog::Answer eAnswer);

/// Everything a dialog says: its text, then one line per field.
ZELWBR3_EXPORT std::string FullText(const Dialog& oDialog);

}  // namespace ZELWbr3::Headless
