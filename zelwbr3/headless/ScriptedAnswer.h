#pragma once

#include "zelwbr3/platform/Dialog.h"

#include <string>
#include <vector>

namespace ZELWbr3::Headless {

/// One answer of a script: what is pressed, and what is entered into a dialog
/// before.
struct ScriptedAnswer {
  /// What is entered into one field.
  struct Entry {
    std::string Name;
    std::string Value;
  };

  std::string Text;  ///< as it was written
  std::string Word;  ///< ok, cancel, yes, no or quick
  std::vector<Entry> Entries;

  /// Reads "WORD" or "ok name=value …". A value goes on until the next name
  /// that is known, so it may have blanks in it: date=YYYY-MM-DD,
  /// time=HH:MM:SS, config=, number= and interval= as typed, delete= and
  /// reconnect= yes or no. Throws std::invalid_argument that says what is
  /// wrong with it; a date or time that does not exist is not.
  static ScriptedAnswer Parse(const std::string& sText);

  /// Presses nothing yet, but enters the entries into a dialog's fields, text
  /// key by key. Says what the dialog has no field for; empty when all went in.
  std::string Enter(Dialog& oDialog) const;
};

}  // namespace ZELWbr3::Headless
