#pragma once

#include "platform/Event.h"
#include "platform/MessageBox.h"

#include <deque>
#include <string>

namespace ZELWbr3::Headless {

/// Answers message boxes from a script, in order. A box that the script has no
/// answer for is answered with its cancelling choice; one that can only be
/// confirmed takes nothing from the script unless that is its turn to say ok.
class ScriptedAnswers : public MessageBox {
 public:
  struct Box {
    std::string Text;
    std::string Title;
    Buttons Offered;
    Icon Picture;
    Answer Given;
  };

  /// One word: ok, cancel, yes, no, quick, with what a dialog is filled with
  /// behind it.
  void Add(const std::string& sAnswer) { m_answers.push_back(sAnswer); }
  bool Empty() const { return m_answers.empty(); }

  Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;

  /// A box was shown and answered.
  Event<const Box&> Shown;
  /// An answer that the box does not offer: says which. The box was cancelled.
  Event<const std::string&> Unsuitable;

 private:
  std::deque<std::string> m_answers;
};

/// The words by which buttons, icons and answers are written.
const char* Word(MessageBox::Buttons eButtons);
const char* Word(MessageBox::Icon eIcon);
const char* Word(MessageBox::Answer eAnswer);

}  // namespace ZELWbr3::Headless
