// The framework's small modules and classes.

#include "tests/support/ChangedRecording.h"
#include "zelwbr3/framework/CommandLists.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/framework/modCheckCommands.h"
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

TEST(clsHourglass, NestsAndNeverStaysBehind) {
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

TEST(modCheckCommands, OffersAFeatureFromItsReleaseOn) {
  using namespace modCheckCommands;
  const auto oDatabase = std::make_shared<Testing::ChangedRecording>("");
  const auto Offered = [&](const char* sRelease, const char* sNumber, const char* sStatus) {
    oDatabase->Change({std::string("Version.Release = ") + sRelease, std::string("Version.Number = ") + sNumber,
                       std::string("StateInfo.Status = ") + sStatus});
    const bool bExtend = CheckAutoExtend(oDatabase);
    EXPECT_EQ(CheckAutoUpdateStatistics(oDatabase), bExtend);
    return std::pair(bExtend, CheckOnlineFeature(oDatabase));
  };
  EXPECT_EQ(Offered("0x07060000", "0x07060009", "5"), std::pair(false, false));
  EXPECT_EQ(Offered("0x07060000", "0x0706000A", "5"), std::pair(true, false));
  EXPECT_EQ(Offered("0x07060000", "0x0706000C", "5"), std::pair(true, true));
  EXPECT_EQ(Offered("0x07060000", "0x0706000C", "4"), std::pair(true, false));
  EXPECT_EQ(Offered("0x0705FFFF", "0x0706000C", "5"), std::pair(false, false));
}

TEST(CommandLists, ShowsTheListOfThePageInFront) {
  HeadlessCommandlist oLists;
  int iChanges = 0;
  const auto oChanged = oLists.Changed.Connect([&] { ++iChanges; });
  std::vector<std::string> clicks;
  const auto oClicked = oLists.ItemClick.Connect([&](Long lPageType, const CommandItem& oItem) {
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

TEST(Event, HandlersComeAndGoWhileItIsRaised) {
  std::string sCalls;
  auto oEvent = std::make_unique<Event<const std::string&>>();
  Connection oSecond;
  Connection oThird;
  const auto oFirst = oEvent->Connect([&](const std::string& s) {
    sCalls += "1" + s;
    oSecond.Disconnect();
    if (s == "a") oThird = oEvent->Connect([&](const std::string& t) { sCalls += "3" + t; });
  });
  oSecond = oEvent->Connect([&](const std::string& s) { sCalls += "2" + s; });
  oEvent->Raise("a");
  EXPECT_EQ(sCalls, "1a");
  oEvent->Raise("b");
  EXPECT_EQ(sCalls, "1a1b3b");
  const auto oLast = oEvent->Connect([&](const std::string&) { oEvent.reset(); });
  oEvent->Raise("c");
  EXPECT_EQ(sCalls, "1a1b3b1c3c");
}

}  // namespace ZELWbr3
