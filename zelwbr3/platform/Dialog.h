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
/// The tab order is that of the fields, then of the buttons. "&" stands before
/// a mnemonic in the captions of fields and buttons, and for itself in all
/// other texts, which may name the instance.
struct Dialog {
  enum class Answer { OK, Quick, Cancel };

  struct Button {
    Answer Gives;
    std::string Name;
    std::string Caption;
  };

  /// An input with its caption before it and a note behind it.
  struct Field {
    enum class Kind {
      TextBox,   ///< one line; value in Text
      CheckBox,  ///< value in Checked
      Date,      ///< value in When, of which the time is kept as it is
      Time,      ///< value in When, of which the date is kept as it is
    };

    Kind What;
    std::string Name;
    std::string Caption;
    std::string Note = {};

    std::string Text = {};
    bool Checked = false;
    Date When = {};

    /// Asked for every key that would write or delete a character: the
    /// character's code, 8 for Backspace. False discards the key. Pasted text
    /// is not asked for. Empty = every key passes.
    std::function<bool(Long)> TakesKey = {};
    /// Called when the keyboard comes to the field. May be empty.
    std::function<void(ZELWbr3::TextBox&)> Entered = {};
  };

  std::string Name;     ///< such as "frmShutdown"
  std::string Caption;  ///< of the window
  MessageBox::Icon Picture;
  /// What the dialog says above the fields, lines ended by "\n". When
  /// TextIsHTML it is markup of text, entities, <b>, <br> and
  /// <img src="exclamation" alt="…">, the platform's own picture of that name
  /// as large as the text.
  std::string Text;
  bool TextIsHTML = false;
  std::string Frame = {};  ///< caption of a frame around the fields; empty = no frame
  std::vector<Field> Fields = {};
  /// The first is the default button; the one that gives Cancel is also what
  /// Escape and closing the window press.
  std::vector<Button> Buttons;

  /// Asked when a button other than Cancel was pressed: why the fields cannot
  /// be confirmed as they stand. The platform shows that text and keeps the
  /// dialog open; an empty one lets it close. May be empty itself.
  std::function<std::string()> Complaint = {};
};

}  // namespace ZELWbr3
