#include "desktop/DialogWindow.h"

#include "dom/Text.h"

#include <wx/accel.h>
#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/datectrl.h>
#include <wx/dateevt.h>
#include <wx/msgdlg.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>
#include <wx/timectrl.h>

namespace ZELWbr3::Desktop {

namespace {

constexpr int Gap = 8;
constexpr int TextWidth = 440;

wxString Shown(const std::string& sText) { return wxString::FromUTF8(Text::Clean(sText)); }

std::string UTF8(const wxString& sText) { return std::string(sText.utf8_str()); }

wxDateTime ToWx(const Date& dDate) {
  return wxDateTime(static_cast<wxDateTime::wxDateTime_t>(dDate.Day), static_cast<wxDateTime::Month>(dDate.Month - 1),
                    dDate.Year, static_cast<wxDateTime::wxDateTime_t>(dDate.Hour),
                    static_cast<wxDateTime::wxDateTime_t>(dDate.Minute),
                    static_cast<wxDateTime::wxDateTime_t>(dDate.Second));
}

/// A text box as the core knows it.
class ShownTextBox : public TextBox {
 public:
  explicit ShownTextBox(wxTextCtrl& oBox) : m_oBox(oBox) {}

  std::string Text() const override { return UTF8(m_oBox.GetValue()); }
  void SelStart(Long lStart) override { m_oBox.SetSelection(lStart, lStart); }
  void SelLength(Long lLength) override {
    long lFrom = 0;
    long lTo = 0;
    m_oBox.GetSelection(&lFrom, &lTo);
    m_oBox.SetSelection(lFrom, lFrom + lLength);
  }

 private:
  wxTextCtrl& m_oBox;
};

/// Keys that write or delete a character have their code; all others, such as
/// arrows and shortcuts, have none.
int Character(const wxKeyEvent& oEvent) {
  const int iKey = oEvent.GetUnicodeKey();
  if (oEvent.HasModifiers() || iKey == WXK_NONE || iKey == WXK_TAB || iKey == WXK_RETURN || iKey == WXK_ESCAPE)
    return 0;
  return iKey;
}

/// The label's markup that the toolkit knows: line ends instead of <br>.
std::string LabelMarkup(std::string sMarkup) {
  static const std::string Break = "<br>";
  for (auto i = sMarkup.find(Break); i != std::string::npos; i = sMarkup.find(Break, i)) {
    sMarkup.replace(i, Break.size(), "\n");
  }
  while (sMarkup.ends_with('\n')) sMarkup.pop_back();
  return sMarkup;
}

wxStaticText* MarkupLabel(wxWindow* oParent, const std::string& sMarkup) {
  auto* oLabel = new wxStaticText(oParent, wxID_ANY, "");
  oLabel->SetLabelMarkup(Shown(LabelMarkup(sMarkup)));
  return oLabel;
}

}  // namespace

DialogWindow::DialogWindow(wxWindow* oParent, Dialog& oDialog)
    : wxDialog(oParent, wxID_ANY, Shown(oDialog.Caption)), m_oDialog(oDialog) {
  auto* oAll = new wxBoxSizer(wxVERTICAL);
  oAll->Add(MakeText(), wxSizerFlags(1).Expand().Border(wxALL, 2 * Gap));
  if (!oDialog.Fields.empty()) oAll->Add(MakeFields(), wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, 2 * Gap));
  oAll->Add(MakeButtons(), wxSizerFlags().Right().Border(wxALL, 2 * Gap));
  SetAcceleratorTable(wxAcceleratorTable(static_cast<int>(m_mnemonics.size()), m_mnemonics.data()));
  SetSizerAndFit(oAll);
  CentreOnParent();
}

wxSizer* DialogWindow::MakeText() {
  const bool bQuestion = m_oDialog.Picture == MessageBox::Icon::Question;
  auto* oPicture = new wxStaticBitmap(
      this, wxID_ANY, wxArtProvider::GetBitmapBundle(bQuestion ? wxART_QUESTION : wxART_WARNING, wxART_MESSAGE_BOX));
  auto* oRow = new wxBoxSizer(wxHORIZONTAL);
  oRow->Add(oPicture, wxSizerFlags().Top().Border(wxRIGHT, 2 * Gap));

  if (!m_oDialog.TextIsHTML) {
    auto* oLabel = new wxStaticText(this, wxID_ANY, "");
    oLabel->SetLabelText(Shown(m_oDialog.Text));
    oLabel->Wrap(FromDIP(TextWidth));
    oRow->Add(oLabel, wxSizerFlags(1).CenterVertical());
    return oRow;
  }
  // What follows the picture in the text stands beside it.
  auto* oText = new wxBoxSizer(wxVERTICAL);
  const auto iImage = m_oDialog.Text.find("<img");
  auto* oAbove = MarkupLabel(this, m_oDialog.Text.substr(0, iImage));
  // Wrapping takes the markup away, so only a text that needs it is wrapped.
  if (oAbove->GetBestSize().GetWidth() > FromDIP(2 * TextWidth)) oAbove->Wrap(FromDIP(TextWidth));
  oText->Add(oAbove);
  if (iImage != std::string::npos) {
    const auto iEnd = m_oDialog.Text.find('>', iImage);
    auto* oLine = new wxBoxSizer(wxHORIZONTAL);
    oLine->Add(new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmapBundle(wxART_WARNING, wxART_MENU)),
               wxSizerFlags().CenterVertical().Border(wxRIGHT, Gap));
    oLine->Add(MarkupLabel(this, Text::Trim(m_oDialog.Text.substr(iEnd + 1))), wxSizerFlags(1).CenterVertical());
    oText->Add(oLine, wxSizerFlags().Border(wxTOP, Gap));
  }
  oRow->Add(oText, wxSizerFlags(1).CenterVertical());
  return oRow;
}

wxSizer* DialogWindow::MakeFields() {
  wxWindow* oOwner = this;
  wxSizer* oOuter = nullptr;
  if (m_oDialog.Frame.empty()) {
    oOuter = new wxBoxSizer(wxVERTICAL);
  } else {
    auto* oFrame = new wxStaticBoxSizer(wxVERTICAL, this, Shown(m_oDialog.Frame));
    oOwner = oFrame->GetStaticBox();
    oOuter = oFrame;
  }
  auto* oGrid = new wxFlexGridSizer(3, FromDIP(wxSize(Gap, Gap)));
  oGrid->AddGrowableCol(1);
  for (Dialog::Field& oField : m_oDialog.Fields) {
    oGrid->Add(new wxStaticText(oOwner, wxID_ANY, Shown(oField.Caption)), wxSizerFlags().CenterVertical());
    wxWindow* oInput = MakeInput(*oOwner, oField);
    oInput->SetName(Shown(oField.Name));
    AddMnemonic(oField.Caption, *oInput);
    oGrid->Add(oInput, wxSizerFlags().Expand().CenterVertical());
    auto* oNote = new wxStaticText(oOwner, wxID_ANY, "");
    oNote->SetLabelText(Shown(oField.Note));
    oGrid->Add(oNote, wxSizerFlags().CenterVertical());
  }
  oOuter->Add(oGrid, wxSizerFlags(1).Expand().Border(wxALL, m_oDialog.Frame.empty() ? 0 : Gap));
  return oOuter;
}

wxWindow* DialogWindow::MakeInput(wxWindow& oOwner, Dialog::Field& oField) {
  switch (oField.What) {
    case Dialog::Field::Kind::CheckBox: {
      auto* oCheck = new wxCheckBox(&oOwner, wxID_ANY, "");
      oCheck->SetValue(oField.Checked);
      m_readers.push_back([oCheck, &oField] { oField.Checked = oCheck->GetValue(); });
      return oCheck;
    }
    case Dialog::Field::Kind::Date:
      return MakeDate(oOwner, oField);
    case Dialog::Field::Kind::Time:
      return MakeTime(oOwner, oField);
    default:
      return MakeTextBox(oOwner, oField);
  }
}

wxWindow* DialogWindow::MakeTextBox(wxWindow& oOwner, Dialog::Field& oField) {
  auto* oBox = new wxTextCtrl(&oOwner, wxID_ANY, Shown(oField.Text), wxDefaultPosition, FromDIP(wxSize(180, -1)));
  oBox->Bind(wxEVT_CHAR, [&oField](wxKeyEvent& oEvent) {
    const int iCharacter = Character(oEvent);
    if (iCharacter == 0 || !oField.TakesKey || oField.TakesKey(iCharacter)) oEvent.Skip();
  });
  oBox->Bind(wxEVT_SET_FOCUS, [oBox, &oField](wxFocusEvent& oEvent) {
    oEvent.Skip();
    // The toolkit places the cursor after this event.
    if (oField.Entered) {
      oBox->CallAfter([oBox, &oField] {
        ShownTextBox oShown(*oBox);
        oField.Entered(oShown);
      });
    }
  });
  m_readers.push_back([oBox, &oField] { oField.Text = UTF8(oBox->GetValue()); });
  return oBox;
}

wxWindow* DialogWindow::MakeDate(wxWindow& oOwner, Dialog::Field& oField) {
  auto* oPicker = new wxDatePickerCtrl(&oOwner, wxID_ANY, ToWx(oField.When), wxDefaultPosition, wxDefaultSize,
                                       wxDP_DROPDOWN | wxDP_SHOWCENTURY);
  m_readers.push_back([oPicker, &oField] {
    const wxDateTime oDay = oPicker->GetValue();
    oField.When.Year = oDay.GetYear();
    oField.When.Month = oDay.GetMonth() + 1;
    oField.When.Day = oDay.GetDay();
  });
  return oPicker;
}

wxWindow* DialogWindow::MakeTime(wxWindow& oOwner, Dialog::Field& oField) {
  auto* oPicker = new wxTimePickerCtrl(&oOwner, wxID_ANY, ToWx(oField.When));
  m_readers.push_back(
      [oPicker, &oField] { oPicker->GetTime(&oField.When.Hour, &oField.When.Minute, &oField.When.Second); });
  return oPicker;
}

void DialogWindow::AddMnemonic(const std::string& sCaption, wxWindow& oInput) {
  const auto iMark = sCaption.find('&');
  if (iMark == std::string::npos || iMark + 1 >= sCaption.size()) return;
  const int iKey = wxToupper(static_cast<unsigned char>(sCaption[iMark + 1]));
  const int iCommand = wxWindow::NewControlId();
  m_mnemonics.emplace_back(wxACCEL_ALT, iKey, iCommand);
  Bind(
      wxEVT_MENU, [&oInput](wxCommandEvent&) { oInput.SetFocus(); }, iCommand);
}

wxSizer* DialogWindow::MakeButtons() {
  auto* oRow = new wxBoxSizer(wxHORIZONTAL);
  bool bFirst = true;
  for (const Dialog::Button& oButton : m_oDialog.Buttons) {
    const Dialog::Answer eAnswer = oButton.Gives;
    const int iID = eAnswer == Dialog::Answer::OK       ? wxID_OK
                    : eAnswer == Dialog::Answer::Cancel ? wxID_CANCEL
                                                        : wxWindow::NewControlId();
    auto* oShown = new wxButton(this, iID, Shown(oButton.Caption));
    oShown->SetName(Shown(oButton.Name));
    oShown->Bind(wxEVT_BUTTON, [this, eAnswer](wxCommandEvent&) { Press(eAnswer); });
    if (bFirst) oShown->SetDefault();
    oRow->Add(oShown, wxSizerFlags().Border(wxLEFT, bFirst ? 0 : Gap));
    bFirst = false;
  }
  SetEscapeId(wxID_CANCEL);
  return oRow;
}

Dialog::Answer DialogWindow::Ask() {
  ShowModal();
  return m_eAnswer;
}

void DialogWindow::Press(Dialog::Answer eAnswer) {
  for (const auto& oRead : m_readers) oRead();
  if (eAnswer != Dialog::Answer::Cancel && m_oDialog.Complaint) {
    const std::string sComplaint = m_oDialog.Complaint();
    if (!sComplaint.empty()) {
      wxMessageDialog(this, Shown(sComplaint), GetTitle(), wxOK | wxICON_EXCLAMATION).ShowModal();
      return;
    }
  }
  m_eAnswer = eAnswer;
  EndModal(wxID_OK);
}

}  // namespace ZELWbr3::Desktop
