#pragma once

#include "zelwbr3/platform/Dialog.h"

#include <exception>
#include <functional>
#include <vector>

#include <wx/dialog.h>
#include <wx/sizer.h>

class wxButton;

namespace ZELWbr3::Desktop {

/// The window of one dialog or message box: picture and text above, the fields
/// below them with captions and notes, the buttons at the end.
class DialogWindow : public wxDialog {
 public:
  /// oDialog outlives the window, which writes what was entered into it. With
  /// oHelp there is a Help button, which calls it and leaves the window open.
  DialogWindow(wxWindow* oParent, Dialog& oDialog, std::function<void()> oHelp = {});

  /// Returns when a button was pressed and nothing speaks against it. Raises
  /// what oHelp has raised, which closes the window.
  Dialog::Answer Ask();

 private:
  wxSizer* MakeText();
  wxSizer* MakeFields();
  wxSizer* MakeButtons();
  wxWindow* MakeInput(wxWindow& oOwner, Dialog::Field& oField);
  wxWindow* MakeTextBox(wxWindow& oOwner, Dialog::Field& oField);
  /// Takes a text that must be read in full over on confirmation; Read answers
  /// what is wrong with it.
  template <typename Input>
  void ReadFrom(Input* oInput, Date& dInto, std::string (*Read)(const std::string&, Date&));
  wxButton* MakeButton(wxSizer& oRow, int iID, const std::string& sCaption, std::function<void()> oPressed);
  /// Alt with the caption's mnemonic does this.
  void AddMnemonic(const std::string& sCaption, const std::function<void()>& oAction);
  void Press(Dialog::Answer eAnswer);
  void Complain(const std::string& sComplaint);
  void ShowHelp();

  Dialog& m_oDialog;
  std::function<void()> m_oHelp;
  std::exception_ptr m_oError;  ///< none may leave a handler of the toolkit
  Dialog::Answer m_eAnswer = Dialog::Answer::Cancel;
  /// Each takes one input's value over into its field, and answers why it cannot.
  std::vector<std::function<std::string()>> m_readers;
  std::vector<wxAcceleratorEntry> m_mnemonics;
};

}  // namespace ZELWbr3::Desktop
