#include "tests/support/Told.h"
#include "zelwbr3/pages/history/PageHistory.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

const std::string Backups = R"json("History": {"BlockSize": 2, "Items": [
    {"Label": "LOG_17", "Action": "SAVE LOG", "Kind": 3, "Date": "2025-12-01T02:30:00", "ReturnCode": -903,
     "ErrorText": "The medium is full", "Fields": [{"Name": "Media", "Value": "tape <1>"}, {"Name": "", "Value": "(null)"}]},
    {"Label": "PAG_2", "Action": "(null)", "Kind": 2, "ReturnCode": 0, "ErrorText": "3 pages skipped"},
    {"Label": "", "Action": "", "Kind": 99, "ReturnCode": 8},
    {"Label": "DAT_3", "Action": "SAVE DATA", "Kind": 1, "Date": "2026-03-01T22:00:00", "ReturnCode": 0}]})json";

TEST(BackupHistory, TheNewestEntriesComeFirstInBlocks) {
  Told oTold(Backups);
  oTold.Show(oTold.Browser.PageHistory());
  EXPECT_EQ(oTold.Rows("tabHistory"),
            "Label|Kind|Action|Date|Return Code|Result\n"
            "DAT_3|Complete Data|SAVE DATA|2026-03-01 22:00:00|0|Done\n"
            "LOG_17|Log|SAVE LOG|2025-12-01 02:30:00|-903|Failed\n");
  EXPECT_EQ(oTold.Text("txtFormFooter"), "Rows: 2");
  EXPECT_EQ(oTold.Items(), "&Close Read &More Read &All");
  EXPECT_FALSE(oTold.IsShown("divTopWarning"));

  oTold.Item(3);
  EXPECT_EQ(oTold.Text("txtFormFooter"), "Rows: 4");
  std::string sClasses;
  for (const std::size_t iRow : {2u, 3u, 4u, 5u}) {
    sClasses += oTold.Find("tabHistory")->tBodies(0)->rows(iRow)->className() + "\n";
  }
  EXPECT_EQ(sClasses, "zelHistComplete\nzelHistLog zelHistFailed\nzelHistIncremental\nzelHistOther zelHistFailed\n");
  EXPECT_TRUE(oTold.Rows("tabHistory").ends_with("PAG_2|Incremental Data|~|~|0|Done\n~|Other|~|~|8|Failed\n"));
}

TEST(BackupHistory, AClickShowsTheEntry) {
  Told oTold(Backups);
  oTold.Show(oTold.Browser.PageHistory());
  oTold.Lines();
  oTold.Click("ITEM2");
  EXPECT_EQ(oTold.Lines(), "begin\npage HistoryItem\ncomplete\n");
  EXPECT_EQ(oTold.Text("txtFormTitle"), "Backup - LOG_17");
  EXPECT_EQ(oTold.Rows("tabHistoryItem"),
            "Label|LOG_17\nKind|Log\nAction|SAVE LOG\nDate|2025-12-01 02:30:00\nReturn Code|-903\n");
  EXPECT_EQ(oTold.Rows("tabHistoryItemFields"), "Media|tape <1>\n~|~\n");
  EXPECT_TRUE(oTold.IsShown("divError"));
  EXPECT_EQ(oTold.Text("txtErrorText"), "The medium is full");

  // Back to the list, which is as it was.
  oTold.Key(27);
  EXPECT_EQ(oTold.Lines(), "page History\n");
  oTold.Click("ITEM1");
  EXPECT_FALSE(oTold.IsShown("divError"));
  EXPECT_FALSE(oTold.IsShown("tabHistoryItemFields"));

  // A backup that did not fail may have something to say, too.
  oTold.Show(oTold.Browser.PageHistory());
  oTold.Item(3);
  oTold.Click("ITEM3");
  EXPECT_EQ(oTold.Text("txtErrorTitle") + ": " + oTold.Text("txtErrorText"), "Message: 3 pages skipped");
  EXPECT_EQ(oTold.Find("divError")->className(), "zelNote");
}

TEST(BackupHistory, LostEmptyAndUnreadable) {
  Told oLost("\"StateInfo\": {\"HistoryLost\": true}");
  oLost.Show(oLost.Browser.PageHistory());
  EXPECT_TRUE(oLost.IsShown("divTopWarning"));
  EXPECT_EQ(oLost.Text("txtTopWarning"), "Backup History Lost");
  EXPECT_EQ(oLost.Text("txtFormFooter"), "Rows: 0");
  EXPECT_EQ(oLost.Items(), "&Close (Read &More) (Read &All)");

  Told oFailing(Backups, "\"fails\": [\"History.Open\"]");
  oFailing.Show(oFailing.Browser.PageHistory());
  EXPECT_EQ(oFailing.Lines(), "box Error [exclamation ok]: -24988 SQL error -> ok\npage History\n");
  EXPECT_EQ(oFailing.Text("txtFormFooter"), "Rows: 0");
}

}  // namespace
}  // namespace ZELWbr3::Testing
