#include "zelwbr3/desktop/DialogWindow.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/desktop/Accessible.h"
#include "zelwbr3/desktop/DateInput.h"

#include <gtk/gtk.h>
#include <wx/accel.h>
#include <wx/artprov.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/statbmp.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <algorithm>

namespace ZELWbr3::Desktop {

namespace {

constexpr int Gap = 8;
constexpr int TextWidth = 440;

/// A longer text is scrolled: it must not push the buttons off the screen.
constexpr std::size_t LongText = 1500;  // bytes
constexpr int LongTextLines = 20;

wxString Shown(const std::string& sText) { return wxString::FromUTF8(Text::Clean(sText)); }

std::string UTF8(const wxString& sText) { return std::string(sText.utf8_str()); }

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

/// Keeps a label to the width of a text that is read with ease, and lets a name
/// without blanks go on in the next line. The toolkit's own wrapping breaks no
/// word, takes markup away, and signs with it.
wxStaticText* Fitted(wxStaticText* oLabel) {
  const int iWidth = oLabel->FromDIP(TextWidth);
  if (oLabel->GetBestSize().GetWidth() <= iWidth) return oLabel;
  auto* oNative = GTK_LABEL(oLabel->GetHandle());
  gtk_label_set_line_wrap(oNative, TRUE);
  gtk_label_set_line_wrap_mode(oNative, PANGO_WRAP_WORD_CHAR);
  PangoAttrList* oAttributes = pango_attr_list_new();
  pango_attr_list_insert(oAttributes, pango_attr_insert_hyphens_new(FALSE));
  gtk_label_set_attributes(oNative, oAttributes);
  pango_attr_list_unref(oAttributes);
  // Before it is on the screen, the widget itself measures one line.
  PangoLayout* oLayout = pango_layout_copy(gtk_label_get_layout(oNative));
  pango_layout_set_width(oLayout, iWidth * PANGO_SCALE);
  pango_layout_set_wrap(oLayout, PANGO_WRAP_WORD_CHAR);
  int iHeight = 0;
  pango_layout_get_pixel_size(oLayout, nullptr, &iHeight);
  g_object_unref(oLayout);
  oLabel->SetMinSize(wxSize(iWidth, iHeight));
  return oLabel;
}

wxWindow* PlainText(wxWindow* oParent, const std::string& sText) {
  if (sText.size() > LongText || std::ranges::count(sText, '\n') > LongTextLines) {
    return new wxTextCtrl(oParent, wxID_ANY, Shown(sText), wxDefaultPosition,
                          oParent->FromDIP(wxSize(TextWidth, TextWidth / 2)), wxTE_MULTILINE | wxTE_READONLY);
  }
  auto* oLabel = new wxStaticText(oParent, wxID_ANY, "");
  oLabel->SetLabelText(Shown(sText));
  return Fitted(oLabel);
}

wxWindow* MarkupText(wxWindow* oParent, const std::string& sMarkup) {
  auto* oLabel = new wxStaticText(oParent, wxID_ANY, "");
  // The toolkit would take "_" for a mnemonic.
  gtk_label_set_markup(GTK_LABEL(oLabel->GetHandle()), Text::Clean(LabelMarkup(sMarkup)).c_str());
  oLabel->InvalidateBestSize();
  return Fitted(oLabel);
}

}  // namespace

DialogWindow::DialogWindow(wxWindow* oParent, Dialog& oDialog, std::function<void()> oHelp)
    : wxDialog(oParent, wxID_ANY, Shown(oDialog.Caption)), m_oDialog(oDialog), m_oHelp(std::move(oHelp)) {
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
  AccessibleName(*oPicture, bQuestion ? "Question" : "Warning");
  auto* oRow = new wxBoxSizer(wxHORIZONTAL);
  oRow->Add(oPicture, wxSizerFlags().Top().Border(wxRIGHT, 2 * Gap));

  if (!m_oDialog.TextIsHTML) {
    oRow->Add(PlainText(this, m_oDialog.Text), wxSizerFlags(1).CenterVertical());
    return oRow;
  }
  // What follows the picture in the text stands beside it.
  auto* oText = new wxBoxSizer(wxVERTICAL);
  const auto iImage = m_oDialog.Text.find("<img");
  oText->Add(MarkupText(this, m_oDialog.Text.substr(0, iImage)));
  if (iImage != std::string::npos) {
    const auto iEnd = m_oDialog.Text.find('>', iImage);
    auto* oLine = new wxBoxSizer(wxHORIZONTAL);
    oLine->Add(new wxStaticBitmap(this, wxID_ANY, wxArtProvider::GetBitmapBundle(wxART_WARNING, wxART_MENU)),
               wxSizerFlags().CenterVertical().Border(wxRIGHT, Gap));
    oLine->Add(MarkupText(this, Text::Trim(m_oDialog.Text.substr(iEnd + 1))), wxSizerFlags(1).CenterVertical());
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
  auto* oGrid = new wxFlexGridSizer(2, FromDIP(wxSize(Gap, Gap)));
  oGrid->AddGrowableCol(1);
  for (Dialog::Field& oField : m_oDialog.Fields) {
    oGrid->Add(new wxStaticText(oOwner, wxID_ANY, Shown(oField.Caption)), wxSizerFlags().CenterVertical());
    wxWindow* oInput = MakeInput(*oOwner, oField);
    oInput->SetName(Shown(oField.Name));
    AddMnemonic(oField.Caption, [oInput] {
      oInput->SetFocus();
      if (auto* oCheck = dynamic_cast<wxCheckBox*>(oInput)) oCheck->SetValue(!oCheck->GetValue());
    });
    auto* oLine = new wxBoxSizer(wxHORIZONTAL);
    const bool bText = oField.What == Dialog::Field::Kind::TextBox || oField.What == Dialog::Field::Kind::Password;
    oLine->Add(oInput, wxSizerFlags(bText && oField.Note.empty() ? 1 : 0).CenterVertical());
    if (bText && !oField.Note.empty()) {
      oLine->Add(PlainText(oOwner, oField.Note), wxSizerFlags().CenterVertical().Border(wxLEFT, Gap));
    }
    oGrid->Add(oLine, wxSizerFlags().Expand().CenterVertical());
  }
  oOuter->Add(oGrid, wxSizerFlags(1).Expand().Border(wxALL, m_oDialog.Frame.empty() ? 0 : Gap));
  return oOuter;
}

template <typename Input>
void DialogWindow::ReadFrom(Input* oInput, Date& dInto, std::string (*Read)(const std::string&, Date&)) {
  m_readers.push_back([oInput, &dInto, Read] {
    const std::string sComplaint = Read(UTF8(oInput->GetValue()), dInto);
    if (!sComplaint.empty()) {
      oInput->SetFocus();
      oInput->SelectAll();
    }
    return sComplaint;
  });
}

wxWindow* DialogWindow::MakeInput(wxWindow& oOwner, Dialog::Field& oField) {
  switch (oField.What) {
    case Dialog::Field::Kind::CheckBox: {
      // The note is the box's own text, so that a click on it counts.
      auto* oCheck = new wxCheckBox(&oOwner, wxID_ANY, wxControl::EscapeMnemonics(Shown(oField.Note)));
      oCheck->SetValue(oField.Checked);
      m_readers.push_back([oCheck, &oField] {
        oField.Checked = oCheck->GetValue();
        return std::string();
      });
      return oCheck;
    }
    case Dialog::Field::Kind::Date: {
      auto* oInput = new DateInput(&oOwner, oField.When);
      ReadFrom(oInput, oField.When, [](const auto& sText, Date& d) { return DayFormat().Read(sText, d); });
      return oInput;
    }
    case Dialog::Field::Kind::Time: {
      auto* oInput = new wxTextCtrl(&oOwner, wxID_ANY, Shown(TimeFormat::Write(oField.When)));
      ReadFrom(oInput, oField.When, TimeFormat::Read);
      return oInput;
    }
    default:
      return MakeTextBox(oOwner, oField);
  }
}

wxWindow* DialogWindow::MakeTextBox(wxWindow& oOwner, Dialog::Field& oField) {
  auto* oBox = new wxTextCtrl(&oOwner, wxID_ANY, Shown(oField.Text), wxDefaultPosition,
                              FromDIP(wxSize(oField.Note.empty() ? 240 : 96, -1)),
                              oField.What == Dialog::Field::Kind::Password ? wxTE_PASSWORD : 0);
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
  m_readers.push_back([oBox, &oField] {
    oField.Text = UTF8(oBox->GetValue());
    return std::string();
  });
  return oBox;
}

void DialogWindow::AddMnemonic(const std::string& sCaption, const std::function<void()>& oAction) {
  const auto iMark = sCaption.find('&');
  if (iMark == std::string::npos || iMark + 1 >= sCaption.size()) return;
  const int iKey = wxToupper(static_cast<unsigned char>(sCaption[iMark + 1]));
  // The fields come first and keep their keys.
  if (std::ranges::any_of(m_mnemonics, [=](const auto& oTaken) { return oTaken.GetKeyCode() == iKey; })) return;
  const int iCommand = wxWindow::NewControlId();
  m_mnemonics.emplace_back(wxACCEL_ALT, iKey, iCommand);
  Bind(
      wxEVT_MENU, [oAction](wxCommandEvent&) { oAction(); }, iCommand);
}

wxSizer* DialogWindow::MakeButtons() {
  auto* oRow = new wxBoxSizer(wxHORIZONTAL);
  for (const Dialog::Button& oButton : m_oDialog.Buttons) {
    const Dialog::Answer eAnswer = oButton.Gives;
    const int iID = eAnswer == Dialog::Answer::OK       ? wxID_OK
                    : eAnswer == Dialog::Answer::Cancel ? wxID_CANCEL
                                                        : wxWindow::NewControlId();
    wxButton* oShown = MakeButton(*oRow, iID, oButton.Caption, [this, eAnswer] { Press(eAnswer); });
    oShown->SetName(Shown(oButton.Name));
    if (&oButton != &m_oDialog.Buttons.at(m_oDialog.DefaultButton)) continue;
    oShown->SetDefault();
    gtk_style_context_add_class(gtk_widget_get_style_context(oShown->GetHandle()), GTK_STYLE_CLASS_SUGGESTED_ACTION);
    if (m_oDialog.Fields.empty()) oShown->SetFocus();
  }
  if (m_oHelp) MakeButton(*oRow, wxID_HELP, "&Help", [this] { ShowHelp(); });
  SetEscapeId(FindWindow(wxID_CANCEL) != nullptr ? wxID_CANCEL : wxID_OK);
  return oRow;
}

wxButton* DialogWindow::MakeButton(wxSizer& oRow, int iID, const std::string& sCaption,
                                   std::function<void()> oPressed) {
  auto* oButton = new wxButton(this, iID, Shown(sCaption));
  AddMnemonic(sCaption, oPressed);
  oButton->Bind(wxEVT_BUTTON, [oPressed = std::move(oPressed)](wxCommandEvent&) { oPressed(); });
  oRow.Add(oButton, wxSizerFlags().Border(wxLEFT, oRow.IsEmpty() ? 0 : Gap));
  return oButton;
}

Dialog::Answer DialogWindow::Ask() {
  ShowModal();
  if (m_oError != nullptr) std::rethrow_exception(m_oError);
  return m_eAnswer;
}

void DialogWindow::ShowHelp() {
  try {
    m_oHelp();
  } catch (...) {
    m_oError = std::current_exception();
    EndModal(wxID_CANCEL);
  }
}

void DialogWindow::Press(Dialog::Answer eAnswer) {
  std::string sComplaint;
  for (const auto& oRead : m_readers) {
    const std::string sWrong = oRead();
    if (sComplaint.empty()) sComplaint = sWrong;
  }
  if (eAnswer != Dialog::Answer::Cancel) {
    if (sComplaint.empty() && m_oDialog.Complaint) sComplaint = m_oDialog.Complaint();
    if (!sComplaint.empty()) return Complain(sComplaint);
  }
  m_eAnswer = eAnswer;
  EndModal(wxID_OK);
}

void DialogWindow::Complain(const std::string& sComplaint) {
  Dialog oComplaint{.Name = "",
                    .Caption = m_oDialog.Caption,
                    .Picture = MessageBox::Icon::Exclamation,
                    .Text = sComplaint,
                    .Buttons = {{Dialog::Answer::OK, "cmdOK", "&OK"}}};
  DialogWindow(this, oComplaint).Ask();
}

}  // namespace ZELWbr3::Desktop
