#include "tests/support/Told.h"
#include "zelwbr3/pages/monitor/PageSessions.h"
#include "zelwbr3/pages/monitor/PageSysDD.h"
#include "zelwbr3/pages/monitor/PageSysInfos.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

constexpr int Enter = 13;
constexpr int Escape = 27;

TEST(MonitorSessions, EachSessionIsARow) {
  Told oTold(R"json("Sessions": [{"Index": 17, "Name": " T17 ", "Field1": "1", "Field2": "", "Field3": "three",
      "Field4": "(null)", "Field5": " "}, {"Index": -3, "Name": "", "Field1": "<b>"}])json");
  oTold.Show(oTold.Browser.PageSessions());
  EXPECT_EQ(oTold.Rows("tabSessions"),
            "Session|Process|Program|User|Since|Lock\n"
            "T17|1|~|three|(null)|~\n"
            "|<b>|~|~|~|~\n");
  EXPECT_EQ(oTold.Find("ITEM17")->innerText(), "T17");
  EXPECT_NE(oTold.Find("ITEM-3"), nullptr);
  EXPECT_EQ(oTold.Text("txtFormFooter"), "Rows 2 / 2");

  // A click selects a session and shows nothing, and an unknown one neither.
  oTold.Lines();
  oTold.Click("ITEM17");
  EXPECT_TRUE(oTold.Browser.PageSessions()->HandleOnClick("ITEM99"));
  EXPECT_EQ(oTold.Lines(), "");
  EXPECT_FALSE(oTold.Browser.PageSessions()->HandleOnClick("ITE"));
}

TEST(MonitorSessions, NoSessionsAndAListThatCannotBeRefreshed) {
  Told oNone("\"Connected\": true");
  oNone.Show(oNone.Browser.PageSessions());
  EXPECT_EQ(oNone.Text("txtFormFooter"), "Rows 0 / 0");

  Told oFailing("\"Sessions\": [{\"Index\": 1, \"Name\": \"old\"}]", "\"fails\": [\"Sessions.Refresh\"]");
  oFailing.Show(oFailing.Browser.PageSessions());
  EXPECT_EQ(oFailing.Lines(), "box Error [exclamation ok]: -24988 SQL error -> ok\npage Sessions\n");
  EXPECT_EQ(oFailing.Text("txtFormFooter"), "Rows 1 / 1");
}

const std::string Views = R"json("SysInfos": [
    {"Index": 1, "Name": " FIRST ", "Description": "", "Columns": [{"Name": "A"}], "Rows": []},
    {"Index": 12, "Name": "TWELVE", "Description": "(null)", "Columns": [{"Name": "B"}], "Rows": []},
    {"Index": 2, "Name": "SECOND", "Description": "two", "Columns": [{"Name": "C"}], "Rows": []}])json";

TEST(MonitorSysInfos, EachViewIsALinkWithItsDescription) {
  Told oTold(Views, "\"fails\": [\"SysInfos.Refresh\"]");  // shown as it is
  oTold.Show(oTold.Browser.PageSysInfos());
  EXPECT_EQ(oTold.Lines(), "box Error [exclamation ok]: -24988 SQL error -> ok\npage SysInfos\n");
  EXPECT_EQ(oTold.Rows("tabSysInfos"), "View|Description\nFIRST|~\nTWELVE|\nSECOND|two\n");
  const Element* oCell = oTold.Find("ITEM12");
  ASSERT_NE(oCell, nullptr);
  EXPECT_EQ(oCell->firstElementChild()->id(), "ITEM12");
  EXPECT_EQ(oCell->firstElementChild()->tagName(), "a");
}

TEST(MonitorSysInfos, AClickOrEnterOpensTheViewOfThatIndex) {
  Told oTold(Views);
  oTold.Show(oTold.Browser.PageSysInfos());
  oTold.Lines();
  oTold.Click("ITEM12");
  EXPECT_EQ(oTold.Text("txtFormTitle"), "System Information - TWELVE");
  EXPECT_EQ(oTold.Lines(), "begin\npage SysInfo\ncomplete\n");
  oTold.Key(Escape);
  EXPECT_EQ(oTold.Lines(), "page SysInfos\n");

  oTold.Platform.FrontFrame().Focus("ITEM2");
  oTold.Key(Enter);
  EXPECT_EQ(oTold.Text("txtFormTitle"), "System Information - SECOND");
  oTold.Lines();
  oTold.Click("btnClose");
  EXPECT_EQ(oTold.Lines(), "page SysInfos\n");
}

TEST(MonitorSysInfos, AnIdWithoutANumberMeansViewZero) {
  Told oTold(Views);
  oTold.Show(oTold.Browser.PageSysInfos());
  oTold.Lines();
  EXPECT_TRUE(oTold.Browser.PageSysInfos()->HandleOnClick("ITEMx1"));
  EXPECT_TRUE(oTold.Lines().starts_with("begin\nbox Error"));
  oTold.Browser.PageSysInfos()->HandleOnClick("ITEM99999999999999");
  EXPECT_NE(oTold.Lines().find("ITEM99999999999999"), std::string::npos) << "an error that names it";
}

TEST(MonitorSysDD, ALinkOpensTheTableOfTheDictionary) {
  for (const std::string sMinor : {"4", "5", "6"}) {
    Told oTold("\"Version\": {\"Major\": 7, \"Minor\": " + sMinor +
               R"json(}, "SQLTables": [{"Owner": "SYSDD", "Name": "TABLES", "Columns": [{"Name": "T"}],
                     "Rows": [["A"]]}])json");
    oTold.Show(oTold.Browser.PageSysDD());
    EXPECT_EQ(oTold.Lines(), "page SysDD7" + sMinor + "\n");
    EXPECT_FALSE(oTold.Browser.PageSysDD()->HandleOnClick("ITEM"));
    EXPECT_EQ(oTold.Lines(), "");
    oTold.Click("ITEM_TABLES");
    EXPECT_EQ(oTold.Lines(), "begin\npage SQLTable\ncomplete\n");
    EXPECT_EQ(oTold.Text("txtFormTitle"), "SYSDD.TABLES");
    EXPECT_EQ(oTold.Rows("tabSQLTable"), "T\nA\n");
  }
}

}  // namespace
}  // namespace ZELWbr3::Testing
