// The framework's small modules and classes.

#include "zelwbr3/framework/CommandLists.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/framework/modCmdEnum.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>

namespace ZELWbr3 {

using Headless::HeadlessCommandlist;
using ZELCmd3::CommandItem;

namespace {

struct Pointer : ScreenPointer {
  Integer MousePointer() const override { return Shown; }
  void MousePointer(Integer iPointer) override { Shown = iPointer; }
  Integer Shown = 2;
};

}  // namespace

TEST(clsHourglass, NestsAndIsGoneInTheEnd) {
  Pointer oScreen;
  {
    clsHourglass oHourglass(oScreen);
    oHourglass.Show();
    oHourglass.Show();
    oHourglass.Hide();
    EXPECT_EQ(oScreen.Shown, 11);
    oHourglass.Hide();
    EXPECT_EQ(oScreen.Shown, 0);
    oHourglass.Hide();
    oHourglass.Show();  // one too many Hides did not unbalance it
    EXPECT_EQ(oScreen.Shown, 11);
    oHourglass.Break();
    EXPECT_EQ(oScreen.Shown, 0);
    oHourglass.Continue();
    EXPECT_EQ(oScreen.Shown, 11);
  }
  EXPECT_EQ(oScreen.Shown, 0);
}

TEST(modCmdEnum, LinksCarryTheirCommand) {
  using namespace modCmdEnum;
  EXPECT_EQ(CommandLink(cmdVolumes, "Volumes"), "<a href=\"\" class=\"zelLnkFunction\" id=\"guicmd00065\">Volumes</a>");
  EXPECT_EQ(CommandLink(cmdBackupWizard, "<&>"),
            "<a href=\"\" class=\"zelLnkFunction\" id=\"guicmd00035\">&lt;&amp;&gt;</a>");
  EXPECT_EQ(LinkedCommand("guicmd00035"), Long(35));
  EXPECT_EQ(LinkedCommand("guicmd123456"), Long(123456));
  for (const char* sID : {"", "guicmd", "guicmd0065", "guicmd-0065", "guicmd 0065", "guicmd0006x", "Guicmd00065",
                          "xguicmd00065", "guicmd99999999999"}) {
    EXPECT_EQ(LinkedCommand(sID), std::nullopt) << sID;
  }
}

TEST(CommandLists, ShowsTheListOfThePageInFront) {
  HeadlessCommandlist oLists;
  int iChanges = 0;
  const ScopedConnection oChanged = oLists.Changed.Connect([&] { ++iChanges; });
  std::vector<std::string> clicks;
  const ScopedConnection oClicked = oLists.ItemClick.Connect([&](Long lPageType, const CommandItem& oItem) {
    clicks.push_back(std::to_string(lPageType) + ":" + oItem.Text);
    if (oItem.Key == 4) oLists.Reset(lPageType);  // a page may tear its own list down
  });

  oLists.Add(2, {2, "two", 0});
  oLists.Add(2, CommandItem::MakeSeparator(3));
  oLists.Add(2, {4, "four", 0});
  oLists.Add(9, {2, "other", 0});
  EXPECT_EQ(iChanges, 0);  // nothing of this is shown yet
  EXPECT_THROW(oLists.ClickItem(2), std::invalid_argument);

  oLists.BringToFront(2);
  oLists.Enable(2, 2, true);
  oLists.Enable(2, 77, false);
  oLists.Enable(9, 2, false);
  EXPECT_EQ(iChanges, 1);
  oLists.Enable(2, 2, false);
  EXPECT_EQ(iChanges, 2);

  oLists.ClickItem(2);                                        // disabled
  EXPECT_THROW(oLists.ClickItem(3), std::invalid_argument);   // a separator
  EXPECT_THROW(oLists.ClickItem(77), std::invalid_argument);  // not there
  oLists.ClickItem(4);
  EXPECT_EQ(clicks, std::vector<std::string>{"2:four"});
  EXPECT_FALSE(oLists.HasList(2));
  EXPECT_TRUE(oLists.HasList(9));
}

}  // namespace ZELWbr3
