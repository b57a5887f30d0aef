#include "zelwbr3/desktop/DesktopCommandlist.h"

#include "tests/desktop/TestWindow.h"

#include <wx/button.h>
#include <wx/sizer.h>

namespace ZELWbr3::Desktop {
namespace {

class DesktopCommandlistTest : public TestWindow {
 protected:
  DesktopCommandlistTest() : Commandlist(*Frame, Platform->Pump()) {
    Frame->SetSizer(new wxBoxSizer(wxVERTICAL));
    Frame->GetSizer()->Add(Commandlist.Window(), wxSizerFlags().Expand());
  }

  /// What the row shows; disabled ones in brackets, separators as a bar.
  std::string Shown() const {
    std::string sShown;
    for (const wxWindow* oWindow : Commandlist.Window()->GetChildren()) {
      const auto* oButton = dynamic_cast<const wxButton*>(oWindow);
      const std::string sText = oButton == nullptr ? "|" : oButton->GetLabelText().utf8_string();
      sShown += (oWindow->IsThisEnabled() ? sText : "(" + sText + ")") + " ";
    }
    return sShown;
  }
  void WaitForRow(const std::string& sRow) {
    WaitFor(("the row " + sRow + "instead of " + Shown()).c_str(), [&] { return Shown() == sRow; });
  }

  DesktopCommandlist Commandlist;
};

TEST_F(DesktopCommandlistTest, MnemonicsClickAndAClickMayReplaceTheList) {
  const auto oConnected = Commandlist.ItemClick.Connect([this](Long lPageType, const ZELCmd3::CommandItem& oItem) {
    EXPECT_EQ(lPageType, 2);
    EXPECT_EQ(oItem.Key, 7);
    Commandlist.Reset(2);
    Commandlist.Add(2, {9, "&New", 0});
    WaitForRow("New ");
  });
  Commandlist.Add(2, {7, "&Old", 0});
  Commandlist.Add(2, ZELCmd3::CommandItem::MakeSeparator(3));
  Commandlist.Add(2, {8, "O&ffline \xC3\xBC", 0, false});
  Commandlist.Add(5, {1, "&Refresh", 0});
  Commandlist.BringToFront(2);
  WaitForRow("Old | (Offline \xC3\xBC) ");
  Press("alt+f alt+o");
  WaitForRow("New ");
}

}  // namespace
}  // namespace ZELWbr3::Desktop
