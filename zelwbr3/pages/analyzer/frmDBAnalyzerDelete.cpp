#include "zelwbr3/pages/analyzer/frmDBAnalyzerDelete.h"

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modDate.h"

namespace ZELWbr3 {

std::optional<Date> frmDBAnalyzerDelete::DeleteProtSets(const Date& dToday) {
  using Kind = Dialog::Field::Kind;
  Dialog oDialog{
      .Name = "frmDBAnalyzerDelete",
      .Caption = "Delete Protocol Sets",
      .Picture = MessageBox::Icon::Question,
      .Text =
          "To delete Database Analyzer protocol sets specify a date below."
          "<br><br>"
          "<img src=\"exclamation\" alt=\"Warning:\"> "
          "All protocol set until the specified date will have deleted.",
      .TextIsHTML = true,
      .Fields = {{.What = Kind::Date, .Name = "inpDate", .Caption = "&Date:", .When = dToday}},
      .Buttons = {{Dialog::Answer::OK, "cmdOK", "OK"}, {Dialog::Answer::Cancel, "cmdCancel", "&Cancel"}},
  };
  Date& dDate = oDialog.Fields[0].When;
  oDialog.Complaint = [&] { return modDate::Complaint(dDate); };
  if (m_oDialogBox.Show(oDialog) != Dialog::Answer::OK) return std::nullopt;
  return dDate;
}

}  // namespace ZELWbr3
