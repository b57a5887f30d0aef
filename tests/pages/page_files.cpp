// What a page makes of its page file, beyond what tests/pictures show.

#include "tests/support/Shown.h"
#include "zelwbr3/base/ReadFile.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3::Testing {
namespace {

/// The main page with a changed page file: every occurrence of a text.
struct ChangedMain : Shown {
  ChangedMain(const std::string& sOld, const std::string& sNew, const std::string& sRecording,
              const Changes& changes = {})
      : Shown(sRecording, changes) {
    std::string sHTML = ReadFile(ZELWBR3_SOURCE_DIR "/html/Main.htm");
    auto i = sHTML.find(sOld);
    if (i == std::string::npos) throw std::runtime_error("Not in Main.htm: " + sOld);
    for (; i != std::string::npos; i = sHTML.find(sOld, i + sNew.size())) sHTML.replace(i, sOld.size(), sNew);
    PageFile("Main", sHTML);
    Show("Main");
  }
};

std::string WithId(const std::string& sID) { return "id=\"" + sID + "\""; }

TEST(PageFile, IsNamedWithTheElementThatItLacks) {
  for (const char* sID :
       {"imgInstance", "txtState", "pbrSessions", "State.LogWriteOff.Row", "Warnings.HistLost.Val", "tabHotStandby"}) {
    ChangedMain o(WithId(sID), WithId("other"), "new-7.6");
    EXPECT_EQ(o.Lines(), "box Error [exclamation ok]: The page file Main.htm has no element \"" + std::string(sID) +
                             "\" -> ok\npage Main\n");
    EXPECT_TRUE(o.IsShown("divFrmCnt"));
  }
  // The frame's own elements may be missing.
  for (const char* sID : {"divTopWarning", "divFrmWait", "divFrmFtr", "txtTopWarningInfo", "rowTopWarningInfo"}) {
    ChangedMain o(WithId(sID), WithId("other"), "full-data");
    EXPECT_EQ(o.Lines(), "page Main\n");
  }
}

TEST(PageFile, MayHaveNumberedRowsOfNodes) {
  ChangedMain o("<tr id=\"rowHotStandbyNode\"",
                "<tr id=\"rowHotStandbyNode2\" style=\"display:none\"><th></th><td></td><td>x</td></tr>"
                "<tr id=\"rowHotStandbyNode\"",
                "hot-standby", {R"(HotStandby.Nodes = [{"Name": "a", "Role": 2}, {"Name": "b", "Role": 1}])"});
  // The first node's row is made; it goes after its template.
  const std::string sPicture = o.Picture();
  EXPECT_LT(sPicture.find("\n  Node #2 "), sPicture.find("\n  Node #1 ")) << sPicture;
  EXPECT_NE(sPicture.find("| a ()     | Master\n"), std::string::npos) << sPicture;
}

TEST(PageFile, IsToldHowNumbersAreWrittenForItsScript) {
  Shown o("demo");
  o.Show("DataArea");
  EXPECT_EQ(o.Text("LocaleDecimalSymbole") + o.Text("LocaleDecimalPlaces") + o.Text("LocaleThousendGroupingSymbole"),
            ".2,");
  o.Show("InfoCaches");
  EXPECT_EQ(o.Text("LocaleThousendGroupingSymbole"), ",");
}

TEST(PageFile, GetsTheWidthOfAViewsLastColumn) {
  Shown o("demo");
  o.Show("SysInfos");
  o.Click("ITEM1");
  const auto Cell = [&](int iRow, int iCell) { return o.At("tabSysInfo").tBodies(0)->rows(iRow)->cells(iCell); };
  EXPECT_EQ(Cell(0, 2)->width() + "," + Cell(0, 3)->width(), ",100%");
  EXPECT_EQ(Cell(2, 0)->className() + "," + Cell(2, 3)->className(), "zelTblCellStd,zelTblCellStdLast");
}

// Ids that are near those which a page gives to what can be clicked.
TEST(Pages, IgnoreClicksThatAreNotForThem) {
  const auto Told = [](const char* sPage, const std::vector<const char*>& ids) {
    Shown o("demo");
    o.Show(sPage);
    std::string sTold = o.Lines();
    for (const char* sID : ids) {
      sTold += o.Browser->ActPageObj()->HandleOnClick(sID) ? "taken\n" : "left\n";
      sTold += o.Lines();
    }
    return sTold;
  };
  EXPECT_EQ(Told("InfoCaches", {"", "PARA"}), "page InfoCaches\nleft\nleft\n");
  EXPECT_EQ(Told("Sessions", {"ITE", "ITEM99"}), "page Sessions\nleft\ntaken\n");
  EXPECT_EQ(Told("SysDD", {"ITEM"}), "page SysDD76\nleft\n");
  // A number that cannot be read means the view zero, which there is not.
  const std::string sError = "page SysInfos\ntaken\nbegin\nbox Error [exclamation ok]: ";
  EXPECT_TRUE(Told("SysInfos", {"ITEMx1"}).starts_with(sError));
  EXPECT_NE(Told("SysInfos", {"ITEM99999999999999"}).find("\"ITEM99999999999999\""), std::string::npos);
}

TEST(Pages, TakeTheirKeysOnly) {
  for (const char* sPage : {"Main", "DataArea", "Parameters", "SysInfos", "DBAnalyzer", "History"}) {
    Shown o("demo");
    o.Show(sPage);
    EXPECT_FALSE(o.Key(65));
    EXPECT_TRUE(o.Key(116));
    EXPECT_TRUE(o.Key(27));
  }
}

TEST(Pages, AskTheInstanceOnce) {
  Shown o("demo");
  o.Show("LogArea");
  EXPECT_EQ(o.Uses("Activity.Refresh"), 1);
  o.Show("Parameters");
  for (const int iTab : {1, 2, 1, 0}) o.Click("tbsTab" + std::to_string(iTab) + "Parameters");
  EXPECT_EQ(o.Uses("Parameters.Load"), 3);
  // A history that was unfolded is not read again.
  o.Click("PHISTCACHE_SIZE");
  o.Database->OnRead = [](const std::string& sMember) { ADD_FAILURE() << sMember; };
  o.Click("PHISTCACHE_SIZE");
  o.Click("PHISTCACHE_SIZE");
}

TEST(Pages, KeepHistoriesOpenOnlyWhileTheyAreSeen) {
  Shown o("demo");
  const auto IsOpen = [&o] { return o.At("PHISTCACHE_SIZE").className() == "zelTblCellExpOpen"; };
  o.Show("Parameters");
  o.Click("PHISTCACHE_SIZE");
  o.Key(116);
  EXPECT_TRUE(IsOpen());
  EXPECT_EQ(o.At("PHISTCACHE_SIZE").parentElement()->nextElementSibling()->id(), "rowItem");
  o.Click("PHISTCACHE_SIZE");
  o.Key(116);
  EXPECT_FALSE(IsOpen());
  o.Click("PHISTCACHE_SIZE");
  o.Show("InfoActivity");
  o.Show("Parameters");
  EXPECT_FALSE(IsOpen());
}

}  // namespace
}  // namespace ZELWbr3::Testing
