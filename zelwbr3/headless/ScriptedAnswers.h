#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/headless/ScriptedAnswer.h"
#include "zelwbr3/platform/DialogBox.h"
#include "zelwbr3/platform/MessageBox.h"

#include <deque>
#include <string>

namespace ZELWbr3::Headless {

/// Answers message boxes and dialogs from a script, in order. A box that the
/// script has no answer for is answered with its cancelling choice; one that
/// can only be confirmed takes nothing from the script unless that is its turn
/// to say ok.
class ScriptedAnswers : public MessageBox, public DialogBox {
 public:
  struct Box {
    std::string Text;
    std::string Title;
    Buttons Offered;
    Icon Picture;
    MessageBox::Answer Given;
  };

  /// A dialog after its answer: its fields hold what was entered.
  struct AnsweredDialog {
    const Dialog& Shown;
    Dialog::Answer Given;
  };

  /// Throws as ScriptedAnswer::Parse.
  void Add(const std::string& sAnswer) { m_answers.push_back(ScriptedAnswer::Parse(sAnswer)); }
  bool Empty() const { return m_answers.empty(); }

  MessageBox::Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  Dialog::Answer Show(Dialog& oDialog) override;

  /// A box was shown and answered.
  Event<const Box&> Shown;
  /// A dialog was shown and answered.
  Event<const AnsweredDialog&> DialogShown;
  /// An answer that the box or dialog does not offer or cannot be confirmed
  /// with: says which. It was cancelled.
  Event<const std::string&> Unsuitable;

 private:
  /// What presses which button; Cancel when the answer does not fit.
  Dialog::Answer Press(Dialog& oDialog, const ScriptedAnswer& oAnswer);

  std::deque<ScriptedAnswer> m_answers;
};

/// The words by which buttons, icons and answers are written.
const char* Word(MessageBox::Buttons eButtons);
const char* Word(MessageBox::Icon eIcon);
const char* Word(MessageBox::Answer eAnswer);
const char* Word(Dialog::Answer eAnswer);

/// All that a dialog says: its text, then a line for each of its fields.
std::string FullText(const Dialog& oDialog);

}  // namespace ZELWbr3::Headless
