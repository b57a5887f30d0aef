#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/headless/ReportWriter.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/shell/Pages.h"

using namespace SQLiteFiles;

namespace {

/// A control that shows the pages of an instance without a screen.
class Viewer {
 public:
  explicit Viewer(const std::shared_ptr<ZELLib3::Database>& oInstance)
      : m_oInstance(oInstance), m_oBrowser(m_oPlatform) {
    m_oBrowser.HTMLPath(std::string(ZELWBR3_SOURCE_DIR) + "/html");
    m_oBrowser.PageMain()->Show(m_oInstance);
  }
  template <class Page>
  std::string Show(std::shared_ptr<Page> (ZELWbr3::Browser::*pPage)()) {
    (m_oBrowser.*pPage)()->Show(m_oInstance);
    return Document();
  }
  std::string Click(const std::string& sID) {
    m_oPlatform.FrontFrame().Click(sID);
    return Document();
  }

 private:
  std::string Document() {
    m_oPlatform.MessagePump().Poll();
    return ZELWbr3::Headless::WriteReport(*m_oBrowser.VisibleDocument(), m_oPlatform.FrontFrame().Folder());
  }

  std::shared_ptr<ZELLib3::Database> m_oInstance;
  ZELWbr3::Headless::HeadlessPlatform m_oPlatform;
  ZELWbr3::Browser m_oBrowser;
};

}  // namespace

// Apart from what only the running process knows: its counters and sessions.
TEST(SQLiteRecording, ShowsTheSamePages) {
  Folder oFolder;
  Application oApplication(oFolder / "a.db", "PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0");
  InsertRows(oApplication, 500);
  oApplication.Run("CREATE INDEX by_v ON t(v); CREATE VIEW seen AS SELECT id FROM t; ANALYZE");
  ZELWbr3::SQLite::Options oOptions;
  oOptions.StateFolder = oFolder / "state";
  oOptions.ReadingLifetime = std::chrono::hours(1);  // counters stand still
  const auto oLive = std::make_shared<ZELWbr3::SQLite::SQLiteDatabase>(oFolder / "a.db", oOptions);
  ASSERT_TRUE(oLive->Parameters()->Load());
  oApplication.Run("PRAGMA user_version=3");
  ASSERT_TRUE(oLive->RegisterCopy("/backup/a.db", {2026, 1, 2, 3, 4, 5}, "nightly"));
  oLive->Shutdown();
  oLive->Online();

  const std::string sRecording = oFolder / "a.json";
  const auto oNotes = ZELWbr3::Recorded::WriteRecording(*oLive, sRecording);
  EXPECT_EQ(std::vector<std::string>{}, oNotes);
  Viewer oFromFile(oLive);
  Viewer oFromRecording(ZELWbr3::Recorded::OpenRecording(sRecording));
  using B = ZELWbr3::Browser;
  EXPECT_EQ(oFromFile.Show(&B::PageDataArea), oFromRecording.Show(&B::PageDataArea));
  EXPECT_EQ(oFromFile.Show(&B::PageLogArea), oFromRecording.Show(&B::PageLogArea));
  EXPECT_EQ(oFromFile.Show(&B::PageInfoCaches), oFromRecording.Show(&B::PageInfoCaches));
  EXPECT_EQ(oFromFile.Show(&B::PageParameters), oFromRecording.Show(&B::PageParameters));
  const std::string sChanges = oFromFile.Click("tbsTab3Parameters");
  EXPECT_NE(std::string::npos, sChanges.find(">user_version<"));
  EXPECT_EQ(sChanges, oFromRecording.Click("tbsTab3Parameters"));
  EXPECT_EQ(oFromFile.Click("PARAMuser_version"), oFromRecording.Click("PARAMuser_version"));
  const std::string sCopies = oFromFile.Show(&B::PageHistory);
  EXPECT_NE(std::string::npos, sCopies.find("nightly"));
  EXPECT_EQ(sCopies, oFromRecording.Show(&B::PageHistory));

  const auto oViews = oLive->SysInfos();
  for (int i = 1; i <= oViews->Count(); ++i) {
    const std::string sName = oViews->Item(i)->Name();
    if (sName == "STATEMENTS" || sName == "COUNTERS" || sName == "MODULES") continue;  // they go on
    const std::string sLink = "ITEM" + std::to_string(i);
    for (Viewer* pViewer : {&oFromFile, &oFromRecording}) pViewer->Show(&B::PageSysInfos);
    EXPECT_EQ(oFromFile.Click(sLink), oFromRecording.Click(sLink)) << sName;
    EXPECT_EQ(oFromFile.Click("btnReadAll"), oFromRecording.Click("btnReadAll")) << sName;
  }

  for (const std::string& sTable : SystemTables()) {
    for (Viewer* pViewer : {&oFromFile, &oFromRecording}) pViewer->Show(&B::PageSysDD);
    EXPECT_EQ(oFromFile.Click("ITEM_" + sTable), oFromRecording.Click("ITEM_" + sTable)) << sTable;
  }
}
