#pragma once

#include "platform/Dialog.h"

#include <functional>
#include <vector>

#include <wx/dialog.h>
#include <wx/sizer.h>

class wxTextCtrl;

namespace ZELWbr3::Desktop {

/// The window of one dialog: picture and text above, the fields below them with
/// captions and notes, the buttons at the end.
class DialogWindow : public wxDialog {
 public:
  /// oDialog outlives the window, which writes what was entered into it.
  DialogWindow(wxWindow* oParent, Dialog& oDialog);

  /// Returns when a button was pressed and nothing speaks against it.
  Dialog::Answer Ask();

 private:
  wxSizer* MakeText();
  wxSizer* MakeFields();
  wxSizer* MakeButtons();
  wxWindow* MakeInput(wxWindow& oOwner, Dialog::Field& oField);
  wxWindow* MakeTextBox(wxWindow& oOwner, Dialog::Field& oField);
  wxWindow* MakeDate(wxWindow& oOwner, Dialog::Field& oField);
  wxWindow* MakeTime(wxWindow& oOwner, Dialog::Field& oField);
  /// Alt with the caption's mnemonic goes to the input.
  void AddMnemonic(const std::string& sCaption, wxWindow& oInput);
  void Press(Dialog::Answer eAnswer);

  Dialog& m_oDialog;
  Dialog::Answer m_eAnswer = Dialog::Answer::Cancel;
  /// Each takes one input's value over into its field.
  std::vector<std::function<void()>> m_readers;
  std::vector<wxAcceleratorEntry> m_mnemonics;
};

}  // namespace ZELWbr3::Desktop
