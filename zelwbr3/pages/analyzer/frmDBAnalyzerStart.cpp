#include "zelwbr3/pages/analyzer/frmDBAnalyzerStart.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/framework/modSelectText.h"

#include <stdexcept>

namespace ZELWbr3 {

namespace {

constexpr int Backspace = 8;

/// The fields, in the order of the dialog.
enum : std::size_t { Config, Number, Interval, Delete, Reconnect };

bool TakesKey(Long lKey) { return lKey == Backspace || (lKey >= '0' && lKey <= '9'); }

Long NumberIn(const Dialog::Field& oField) { return modFormat::ToLong(modFormat::Val(oField.Text)); }

std::string NumberComplaint(const Dialog& oDialog) {
  for (const auto iField : {Number, Interval}) {
    try {
      NumberIn(oDialog.Fields[iField]);
    } catch (const std::overflow_error&) {
      return "The number " + oDialog.Fields[iField].Text + " is too large.";
    }
  }
  return {};
}

}  // namespace

std::optional<frmDBAnalyzerStart::Options> frmDBAnalyzerStart::StartIt() {
  using Kind = Dialog::Field::Kind;
  const auto SelectText = [](TextBox& oTextBox) { modSelectText::SelectText(oTextBox); };
  Dialog oDialog{
      .Name = "frmDBAnalyzerStart",
      .Caption = "Start Database Analyzer",
      .Picture = MessageBox::Icon::Question,
      .Text =
          "For the start of the database analyzer it is possible to specify start options below. If no options "
          "were specified, the database analyzer will use the default options.",
      .Frame = "Start Options",
      .Fields = {{.What = Kind::TextBox, .Name = "txtConfig", .Caption = "&Configuration File:", .Entered = SelectText},
                 {.What = Kind::TextBox,
                  .Name = "txtNumber",
                  .Caption = "&Number:",
                  .Note = "Number of desired evaluations.",
                  .TakesKey = TakesKey,
                  .Entered = SelectText},
                 {.What = Kind::TextBox,
                  .Name = "txtInterval",
                  .Caption = "&Interval:",
                  .Note = "Time interval (in seconds) between two evaluations.",
                  .TakesKey = TakesKey,
                  .Entered = SelectText},
                 {.What = Kind::CheckBox,
                  .Name = "chkDelete",
                  .Caption = "&Delete Protocols:",
                  .Note = "Delete todays protocol files."},
                 {.What = Kind::CheckBox,
                  .Name = "chkReconnect",
                  .Caption = "&Reconnect:",
                  .Note = "Reconnect after a restart of the database instance."}},
      .Buttons = {{Dialog::Answer::OK, "cmdOK", "OK"}, {Dialog::Answer::Cancel, "cmdCancel", "&Cancel"}},
  };
  oDialog.Complaint = [&oDialog] { return NumberComplaint(oDialog); };
  if (m_oDialogBox.Show(oDialog) != Dialog::Answer::OK) return std::nullopt;

  const auto& oFields = oDialog.Fields;
  return Options{
      .Config = Text::Trim(oFields[Config].Text),
      .Number = NumberIn(oFields[Number]),
      .Interval = NumberIn(oFields[Interval]),
      .Delete = oFields[Delete].Checked,
      .Reconnect = oFields[Reconnect].Checked,
  };
}

}  // namespace ZELWbr3
