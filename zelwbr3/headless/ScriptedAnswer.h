#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/Dialog.h"

#include <string>
#include <vector>

namespace ZELWbr3::Headless {

/// One scripted answer: the button to press, and what to enter into the dialog
/// before that.
struct ZELWBR3_EXPORT ScriptedAnswer {
  /// A value for one field.
  struct Entry {
    std::string Name;
    std::string Value;
  };

  std::string Text;  ///< as it was written
  std::string Word;  ///< ok, cancel, yes, no or quick
  std::vector<Entry> Entries;

  /// Parses "WORD" or "ok name=value …": date=YYYY-MM-DD, time=HH:MM:SS,
  /// config=, number= and interval= as typed, delete= and reconnect= yes or no.
  /// A value ends at the next known name, so it may contain blanks. Throws
  /// std::invalid_argument that says what is wrong. A date or time that does not
  /// exist is accepted: the dialog rejects it.
  static ScriptedAnswer Parse(const std::string& sText);

  /// Enters the values into a dialog's fields, text key by key; presses no
  /// button. Returns the first "name=" that the dialog has no field for, empty
  /// if it has all.
  std::string Enter(Dialog& oDialog) const;
};

}  // namespace ZELWbr3::Headless
