#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Date.h"
#include "zelwbr3/platform/MessageBox.h"
#include "zelwbr3/platform/TextBox.h"

#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3 {

/// A modal dialog as the control describes it: everything that it says, asks
/// and decides. A platform draws it (DialogBox) and writes into its fields what
/// the user enters.
///
/// The tab order is the order of the fields, then of the buttons. In captions of
/// fields and buttons, "&" marks the mnemonic; in all other texts, which may
/// contain the instance's name, it is an ordinary character.
struct Dialog {
  enum class Answer { OK, Quick, Cancel };

  struct Button {
    Answer Gives;
    std::string Name;
    std::string Caption;
  };

  /// An input with its caption before it and a note after it.
  struct Field {
    enum class Kind {
      TextBox,   ///< one line; value in Text
      Password,  ///< the same, and nobody can read it on the screen
      CheckBox,  ///< value in Checked
      Date,      ///< value in When; its time is left unchanged
      Time,      ///< value in When; its date is left unchanged
    };

    Kind What;
    std::string Name;
    std::string Caption;
    std::string Note = {};

    std::string Text = {};
    bool Checked = false;
    Date When = {};

    /// Called for every key that would write or delete a character, with the
    /// character's code, 8 for Backspace. False discards the key. Not called for
    /// pasted text. Empty = every key is accepted.
    std::function<bool(Long)> TakesKey = {};
    /// Called when the field gets the focus. May be empty.
    std::function<void(ZELWbr3::TextBox&)> Entered = {};
  };

  std::string Name;     ///< such as "frmShutdown"
  std::string Caption;  ///< of the window
  MessageBox::Icon Picture;
  /// The text above the fields, lines separated by "\n". If TextIsHTML is set, it
  /// is markup of text, entities, `<b>`, `<br>` and
  /// `<img src="exclamation" alt="…">`, which is the platform's own picture of that
  /// name, as large as the text.
  std::string Text;
  bool TextIsHTML = false;
  std::string Frame = {};  ///< caption of a frame around the fields; empty = no frame
  std::vector<Field> Fields = {};
  /// Escape and closing the window press the one that gives Cancel.
  std::vector<Button> Buttons;
  /// Index of the button that Enter presses. For a question that stops something
  /// it is the one that does not.
  std::size_t DefaultButton = 0;

  /// Called when a button other than Cancel was pressed; returns why the dialog
  /// cannot be confirmed with the present values. The platform shows that text
  /// and keeps the dialog open; with an empty text it closes. May be empty itself.
  std::function<std::string()> Complaint = {};
};

}  // namespace ZELWbr3
