#include "desktop/DesktopCommandlist.h"

#include "tests/desktop/TestWindow.h"

#include <wx/button.h>
#include <wx/sizer.h>

namespace ZELWbr3::Desktop {
namespace {

class DesktopCommandlistTest : public TestWindow {
 protected:
  DesktopCommandlistTest() : Commandlist(*Frame) {
    Frame->SetSizer(new wxBoxSizer(wxVERTICAL));
    Frame->GetSizer()->Add(Commandlist.Window(), wxSizerFlags().Expand());
    Connected = Commandlist.ItemClick.Connect([this](Long lPageType, const ZELCmd3::CommandItem& oItem) {
      Clicks += std::to_string(lPageType) + ":" + std::to_string(oItem.Key) + " ";
    });
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
  Connection Connected;
  std::string Clicks;
};

TEST_F(DesktopCommandlistTest, DrawsTheListOfThePageInFront) {
  Commandlist.Add(2, {1, "&Online", 0});
  Commandlist.Add(2, ZELCmd3::CommandItem::MakeSeparator(2));
  Commandlist.Add(2, {3, "O&ffline \xC3\xBC", 0, false});
  Commandlist.Add(5, {1, "&Refresh", 0});
  Commandlist.BringToFront(2);
  WaitForRow("Online | (Offline \xC3\xBC) ");
  Commandlist.Enable(2, 3, true);
  Commandlist.Enable(2, 1, false);
  WaitForRow("(Online) | Offline \xC3\xBC ");
  Commandlist.BringToFront(5);
  WaitForRow("Refresh ");
  Commandlist.BringToFront(7);
  WaitForRow("");
}

TEST_F(DesktopCommandlistTest, MnemonicsAndTheKeyboardClick) {
  Commandlist.Add(2, {7, "&Online", 0});
  Commandlist.Add(2, {8, "O&ffline", 0, false});
  Commandlist.BringToFront(2);
  WaitForRow("Online (Offline) ");
  Press("alt+f alt+o");
  WaitFor("a click", [&] { return !Clicks.empty(); });
  EXPECT_EQ(Clicks, "2:7 ");
}

TEST_F(DesktopCommandlistTest, AClickMayReplaceTheList) {
  const auto oConnected = Commandlist.ItemClick.Connect([this](Long, const ZELCmd3::CommandItem&) {
    Commandlist.Reset(2);
    Commandlist.Add(2, {9, "&New", 0});
    WaitForRow("New ");
  });
  Commandlist.Add(2, {7, "&Old", 0});
  Commandlist.BringToFront(2);
  WaitForRow("Old ");
  Press("alt+o");
  WaitForRow("New ");
}

}  // namespace
}  // namespace ZELWbr3::Desktop
