#include "zelwbr3/pages/main/frmOnlineUntil.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modDate.h"

namespace ZELWbr3 {

std::optional<Date> frmOnlineUntil::OnlineUntil(const std::string& sInstanceName, const Date& dStart) {
  using Kind = Dialog::Field::Kind;
  Dialog oDialog{
      .Name = "frmOnlineUntil",
      .Caption = "Restart Until",
      .Picture = MessageBox::Icon::Question,
      .Text = "Enter date and time to restart the database instance <b>'" + Text::EscapeHTML(sInstanceName) +
              "'</b> until a specific time.<br>"
              "<br>"
              "<img src=\"exclamation\" alt=\"Warning:\"> "
              "Data after the specified time will be lost.",
      .TextIsHTML = true,
      .Fields = {{.What = Kind::Date, .Name = "inpUntilDate", .Caption = "&Date:", .When = dStart},
                 {.What = Kind::Time, .Name = "inpUntilTime", .Caption = "&Time:", .When = dStart}},
      .Buttons = {{Dialog::Answer::OK, "cmdOK", "OK"}, {Dialog::Answer::Cancel, "cmdCancel", "&Cancel"}},
  };
  const auto Chosen = [&oDialog] {
    const Date& dDay = oDialog.Fields[0].When;
    const Date& dTime = oDialog.Fields[1].When;
    return Date{dDay.Year, dDay.Month, dDay.Day, dTime.Hour, dTime.Minute, dTime.Second};
  };
  oDialog.Complaint = [&] { return modDate::Complaint(Chosen()); };
  if (m_oDialogBox.Show(oDialog) != Dialog::Answer::OK) return std::nullopt;
  return Chosen();
}

}  // namespace ZELWbr3
