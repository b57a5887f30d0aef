#include "zelwbr3/pages/main/PageMain.h"

#include "tests/support/Shown.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace ZELWbr3 {

namespace {

class PageMainTest : public Testing::Shown {
 protected:
  PageMainTest() { Control->PreferredUnit(0); }

  Testing::TestDatabase::TestState& State() { return *Instance->State; }
  void HasVersion(int lVersion) { Instance->VersionNumber = Instance->ReleaseNumber = lVersion; }

  /// The project's page file, changed: every occurrence of a text.
  void ChangedPageFile(const std::string& sOld, const std::string& sNew) {
    std::ifstream oFile(ZELWBR3_SOURCE_DIR "/html/Main.htm");
    std::string sHTML{std::istreambuf_iterator<char>(oFile), {}};
    ASSERT_NE(sHTML.find(sOld), std::string::npos);
    for (auto i = sHTML.find(sOld); i != std::string::npos; i = sHTML.find(sOld, i + sNew.size())) {
      sHTML.replace(i, sOld.size(), sNew);
    }
    PageFile("Main", sHTML);
  }

  std::string Bar(const std::string& sID) {
    std::string sBar;
    for (const char* sProperty : {"ColdPercent", "MediumPercent", "HotPercent", "Percent"}) {
      sBar += (sBar.empty() ? "" : " ") + Property(sID, sProperty);
    }
    return sBar;
  }

  /// The shown rows of the hot-standby table, then the nodes' rows with an arrow.
  std::string Nodes() {
    std::string sNodes = Rows("tabHotStandby");
    for (const std::string sRow : {"Official", "Node1", "Node2", "Node3"}) {
      const Element* oRow = Find("rowHotStandby" + sRow);
      if (oRow != nullptr && oRow->cells(0)->className() == "zelTblCellAltArrowLeft") sNodes += ">" + sRow;
    }
    return sNodes;
  }
  using Lines = std::vector<std::string>;
};

}  // namespace

TEST_F(PageMainTest, ShowsAnInstanceThatIsOnline) {
  ShowMain();
  EXPECT_EQ(Text("txtName"), "DEMO");
  EXPECT_EQ(Text("txtState"), "Online");
  EXPECT_EQ(Bar("pbrData"), "70 80 95 10");
  EXPECT_EQ(Bar("pbrLog"), "60 75 90 5");
  EXPECT_EQ(Bar("pbrSessions"), "50 65 85 6");
  EXPECT_EQ(Text("txtData"), "Total: 8,000 KB Perm: 640 KB Temp: 160 KB Used: 800 KB Free: 7,200 KB ");
  EXPECT_EQ(Text("txtLog"), "Total: 4,000 KB Used: 400 KB Free: 3,600 KB ");
  EXPECT_EQ(Text("txtSessions"), "Used: 3 Free: 47");
  std::string sPicture;
  for (const char* sProperty : {"State", "BackColor", "InstanceType", "HotStandby", "Wait"}) {
    sPicture += Property("imgInstance", sProperty) + " ";
  }
  EXPECT_EQ(sPicture, "5 16777215 0 false false ");
  EXPECT_EQ(Texts({"General.Name.Val", "General.Version.Val", "General.OS.Val", "General.RunDir.Val",
                   "General.StartOn.Val", "General.DBAnalyzer.Val", "General.AutoUpdateStatistics.Val",
                   "General.AutoLog.Val", "DataCache.Total.Val", "DataCache.HitRate.Val"}),
            "DEMO|Kernel 7|Linux (6.1)|/var/lib/demo|2026-01-02 03:04:05|On|On|Off|1,024 KB|99 %");

  EXPECT_EQ(
      ShownOf({"divFrmWait", "divFrmCnt", "divFrmFtr", "divTopWarning", "Snapshot.Tab", "Warnings.Tab", "tabHotStandby",
               "General.OMSMemAna.Row", "DataCache.Used.Row", "State.LogAutoOwerwrite.Row", "State.LogWriteOff.Row"}),
      "divFrmCnt divFrmFtr");
  EXPECT_EQ(Platform.ScreenPointer().MousePointer(), 0);
  EXPECT_EQ(Log, Lines{"PageComplete Main"});
}

TEST_F(PageMainTest, ADisconnectedInstanceHasNoFigures) {
  Instance->IsConnected = false;
  State().status = 0;
  State().infoAvailable = false;
  State().stateText = "Unknown";
  State().anyAreaFull = State().dataFull = true;  // stale
  ShowMain();
  EXPECT_EQ(Property("imgInstance", "State"), "1");
  EXPECT_EQ(Text("txtState"), "Unknown (Full)");
  EXPECT_EQ(Bar("pbrData"), "70 80 95 -1");
  EXPECT_EQ(Bar("pbrLog"), "60 75 90 -1");
  EXPECT_EQ(Bar("pbrSessions"), "-1");  // without limits
  EXPECT_EQ(Texts({"txtData", "txtLog", "txtSessions", "General.Name.Val"}), " | | |");
  EXPECT_EQ(ShownOf({"divTopWarning", "General.StartOn.Row", "GeneralRight.Tab", "DataCache.Tab", "Warnings.Tab"}), "");
}

TEST_F(PageMainTest, ThePictureFollowsTheState) {
  for (const auto& [iStatus, sPicture] :
       {std::pair(5, "5"), {0, "2"}, {1, "2"}, {2, "3"}, {3, "4"}, {6, "2"}, {4, "4"}}) {
    State().status = iStatus;
    ShowMain();
    EXPECT_EQ(Property("imgInstance", "State"), sPicture) << iStatus;
  }
}

TEST_F(PageMainTest, AFullDataAreaGoesBeforeAFullLog) {
  HasVersion(0x07020000);
  State().anyAreaFull = State().dataFull = State().logFull = true;
  ShowMain();
  EXPECT_EQ(Text("txtState"), "Online (Full)");
  EXPECT_EQ(Bar("pbrData"), "70 80 95 100");
  EXPECT_EQ(Text("txtData"), "Data Area Full");
  EXPECT_EQ(Text("txtLog"), "Log Area Full");
  const auto Shown = [this] {
    return ShownOf(
        {"divTopWarning", "rowTopWarningInfo", "Warnings.Tab", "Warnings.DBFull.Row", "Warnings.LogFull.Row"});
  };
  EXPECT_EQ(Shown(), "divTopWarning rowTopWarningInfo Warnings.Tab Warnings.DBFull.Row");  // the log not before 7.3
  EXPECT_EQ(Text("txtTopWarning"), "Data Area Full");
  EXPECT_EQ(At("txtTopWarningInfo").innerHTML(),
            "To extend the data area add a data volume. (Instance-&gt;Configuration-&gt;<a href=\"\" "
            "class=\"zelLnkFunction\" id=\"guicmd00065\">Volumes</a>)");
  EXPECT_EQ(Text("Warnings.DBFull.Val"), "Yes");
  Log.clear();
  Click("guicmd00065");
  EXPECT_EQ(Log, Lines{"Command 65"});

  HasVersion(0x07030000);
  State().dataFull = false;
  ShowMain();
  EXPECT_EQ(Text("txtTopWarning"), "Log Area Full");
  EXPECT_EQ(Text("txtTopWarningInfo"),
            "To empty the log area make a log backup or turn AutoLog on. (Instance->Backup->Backup Wizard)");
  EXPECT_EQ(Shown(), "divTopWarning rowTopWarningInfo Warnings.Tab Warnings.LogFull.Row");
  Log.clear();
  Click("guicmd00035");
  EXPECT_EQ(Log, Lines{"Command 35"});

  State().status = 3;  // the areas have no figures then, the warning stands
  ShowMain();
  EXPECT_EQ(Text("txtLog"), " ");
  EXPECT_TRUE(IsShown("divTopWarning"));
  State().status = 2;
  ShowMain();
  EXPECT_FALSE(IsShown("divTopWarning"));
}

TEST_F(PageMainTest, OlderVersionsShowLess) {
  State().badVolumes = 2;
  State().sessionsUsed = 1234;
  State().sessionsMax = 12345;
  HasVersion(0x0701FFFF);
  ShowMain();
  EXPECT_EQ(Text("txtData"), "Total: 8,000 KB Perm: 640 KB Temp: 160 KB Used: 800 KB ");
  EXPECT_EQ(Text("txtLog"), "Total: 4,000 KB Used: 400 KB ");
  EXPECT_EQ(Text("txtSessions"), "Used: 1,234 ");
  HasVersion(0x07020000);
  ShowMain();
  EXPECT_EQ(Text("txtSessions"), "Used: 1,234 Free: 11,111");

  for (const auto& [iVersion, sRows] :
       {std::pair(0x0703FFFF, "Warnings.BadVol.Row Warnings.Tab"),
        {0x07040000, "General.DBAnalyzer.Row"},
        {0x07060009, "General.DBAnalyzer.Row"},
        {0x0706000A, "General.DBAnalyzer.Row General.AutoExtend.Row General.AutoUpdateStatistics.Row"}}) {
    HasVersion(iVersion);
    ShowMain();
    EXPECT_EQ(ShownOf({"Warnings.BadVol.Row", "Warnings.Tab", "General.DBAnalyzer.Row", "General.AutoExtend.Row",
                       "General.AutoUpdateStatistics.Row"}),
              sRows)
        << std::hex << iVersion;
  }
}

TEST_F(PageMainTest, TheLogRowSaysHowTheLogIsWritten) {
  const auto Rows = [this] {
    ShowMain();
    return ShownOf({"State.Log.Row", "State.LogAutoOwerwrite.Row", "State.LogWriteOff.Row", "Warnings.HistLost.Row"});
  };
  Instance->Log->autoOverwrite = 2;
  State().historyLost = true;  // of no concern then
  EXPECT_EQ(Rows(), "State.LogAutoOwerwrite.Row");
  EXPECT_EQ(Text("txtLog"), "");
  Instance->Log->writeOff = 2;
  EXPECT_EQ(Rows(), "State.LogWriteOff.Row");
  Instance->Log->autoOverwrite = 1;
  EXPECT_EQ(Rows(), "State.LogWriteOff.Row");
  EXPECT_EQ(Text("txtLog"), "");
  Instance->Log->writeOff = 0;
  EXPECT_EQ(Rows(), "State.Log.Row Warnings.HistLost.Row");
  State().infoAvailable = false;
  ShowMain();
  EXPECT_TRUE(IsShown("State.LogWriteOff.Row"));  // as the page file has it
}

TEST_F(PageMainTest, ShowsSwitchesAnObjectStoreASnapshotAndWarnings) {
  State().autoLog = State().cmdMon = State().resMon = State().omsMemAna = State().dbTrace = State().autoExtend = true;
  State().autoUpdateStatistics = 0;
  State().badIndexes = 4;
  Instance->Ana->state = 2;
  Instance->Type = 1;
  Instance->Number = 12;
  Instance->Snap->exists = true;
  Instance->Standby->enabled = true;
  ShowMain();
  EXPECT_EQ(
      ShownOf({"General.AutoLog.Row", "General.CmdMon.Row", "General.ResMon.Row", "General.OMSMemAna.Row",
               "General.DBTrace.Row", "General.AutoExtend.Row", "DataCache.Used.Row", "Snapshot.Tab", "Warnings.Tab"}),
      "General.AutoLog.Row General.CmdMon.Row General.ResMon.Row General.OMSMemAna.Row General.DBTrace.Row "
      "General.AutoExtend.Row DataCache.Used.Row Snapshot.Tab Warnings.Tab");
  EXPECT_EQ(Texts({"General.AutoLog.Val", "General.CmdMon.Val", "General.ResMon.Val", "General.OMSMemAna.Val",
                   "General.DBTrace.Val", "General.AutoExtend.Val", "General.AutoUpdateStatistics.Val",
                   "General.DBAnalyzer.Val", "General.Name.Val", "txtName", "DataCache.Used.Val", "Snapshot.ID.Val",
                   "Snapshot.Created.Val", "Snapshot.Size.Val", "Warnings.BadIdx.Val"}),
            "On|On|On|On|On|On|Unknown|Off|DEMO (12)|DEMO|512 KB|SNAP 7|2026-05-06 07:08:09|2,048 KB|4");
  EXPECT_EQ(Property("imgInstance", "InstanceType"), "1");
  EXPECT_EQ(Property("imgInstance", "HotStandby"), "true");

  Instance->Ana = nullptr;
  State().autoUpdateStatistics = 3;
  ShowMain();
  EXPECT_EQ(Text("General.DBAnalyzer.Val"), "Unknown");
  EXPECT_EQ(Text("General.AutoUpdateStatistics.Val"), "");
}

TEST_F(PageMainTest, ShowsSizesInTheHostsUnit) {
  State().cacheTotal = 131072 + 12;
  Control->PreferredUnit(-1);
  ShowMain();
  EXPECT_EQ(Text("DataCache.Total.Val"), "1,073,840,128 Bytes");
  Control->PreferredUnit(5);
  ExpectError("Subscript out of range: there is no unit 6");
  ShowMain();
}

TEST_F(PageMainTest, ShowsTheNodesOfAHotStandby) {
  Instance->Role = 1;
  Instance->StandbyWarning = true;
  Instance->Standby->nodes = {
      {"alpha", "ok", 2, true}, {"unKNOWN", "", 1}, {"beta", "", 1}, {"UNKNOWN", "", 7}, {"gamma", "sync", 0}};
  const std::string sExpected =
      "A hot-standby warning is pending.\nVirtual Server Name|virtual|\nNode #1|alpha (ok)|Master\n"
      "Node #2|Unknown|Standby\nNode #3|beta ()|Standby\nNode #4|Unknown|~\nNode #5|gamma (sync)|~\n>Official>Node1";
  ShowMain();
  EXPECT_TRUE(IsShown("tabHotStandby"));
  EXPECT_EQ(Nodes(), sExpected);
  EXPECT_TRUE(Key(116));  // a second fill stands in a document of its own
  EXPECT_EQ(Nodes(), sExpected);

  Instance->Role = 3;
  Instance->StandbyWarning = false;
  Instance->Standby->nodes = {{"UNKNOWN", "", 2}, {"UNKNOWN", "", 1}};
  ShowMain();
  EXPECT_EQ(Nodes(), "Virtual Server Name|virtual|\nNode #1|Unknown|Master\nNode #2|Unknown|Standby\n");
}

TEST_F(PageMainTest, UsesTheNumberedRowsThatThePageFileHas) {
  ChangedPageFile("<tr id=\"rowHotStandbyNode\"",
                  "<tr id=\"rowHotStandbyNode2\" style=\"display:none\"><th></th><td></td><td>x</td></tr>"
                  "<tr id=\"rowHotStandbyNode\"");
  Instance->Standby->nodes = {{"alpha", "ok", 2}, {"beta", "ok", 1}};
  Instance->Role = 1;
  ShowMain();
  // The first node's row is made; it goes behind its template.
  EXPECT_EQ(Nodes(), "Virtual Server Name|virtual|\nNode #2|beta (ok)|Standby\nNode #1|alpha (ok)|Master\n>Official");
}

TEST_F(PageMainTest, AFillThatFailsLeavesWhatWasWritten) {
  State().dataUsed = 1001;
  ExpectError("The instance reports more used than there is: 1001 of 1000 pages of the data area");
  ShowMain();
  EXPECT_EQ(Text("txtState"), "Online");
  EXPECT_EQ(Bar("pbrData"), "70 80 95 10");
  EXPECT_EQ(Text("txtData"), "");
  EXPECT_EQ(Text("txtSessions"), "");
  EXPECT_TRUE(IsShown("divFrmCnt"));
  EXPECT_EQ(Log, Lines{"PageComplete Main"});

  State().dataUsed = 100;
  State().sessionsUsed = -2147483647;
  State().sessionsMax = 2;
  ExpectError("Overflow: 2147483649 does not fit into 32 bits");
  ShowMain();
  State().sessionsUsed = 0;
  for (const char* sMember : {"StateInfo", "Version", "InstanceName", "Status", "LogTotal", "CacheHitRate", "Snapshot",
                              "HotStandby", "LogSettings", "Analyzer"}) {
    Instance->Raises = {sMember};
    ExpectError("-1000 " + std::string(sMember) + " cannot be read");
    ShowMain();
    EXPECT_TRUE(IsShown("divFrmCnt"));
  }
  Instance->Raises = {};
  ShowMain();  // and recovers
}

TEST_F(PageMainTest, NamesTheElementThatThePageFileLacks) {
  for (const char* sID :
       {"imgInstance", "txtState", "pbrSessions", "State.LogWriteOff.Row", "Warnings.HistLost.Val", "tabHotStandby"}) {
    ChangedPageFile("id=\"" + std::string(sID) + "\"", "id=\"other\"");
    ExpectError("The page file Main.htm has no element \"" + std::string(sID) + "\"");
    ShowMain();
    EXPECT_TRUE(IsShown("divFrmCnt"));
  }
  // The frame's own elements may be missing.
  for (const char* sID : {"divTopWarning", "divFrmWait", "divFrmFtr", "txtTopWarningInfo", "rowTopWarningInfo"}) {
    State().anyAreaFull = State().dataFull = true;
    ChangedPageFile("id=\"" + std::string(sID) + "\"", "id=\"other\"");
    ShowMain();
  }
}

TEST_F(PageMainTest, KeysRefreshAndClose) {
  ShowMain();
  State().stateText = "Admin";
  Log.clear();
  EXPECT_TRUE(Key(116));
  EXPECT_EQ(Log, (Lines{"ActionBegin", "PageComplete Main", "ActionComplete false"}));
  EXPECT_EQ(Text("txtState"), "Admin");
  Log.clear();
  EXPECT_TRUE(Key(27));  // there is nothing behind the main page
  EXPECT_EQ(Log, Lines{"PageComplete Main"});
  EXPECT_FALSE(Key(65));
  Log.clear();
  Click("btnFormClose");
  EXPECT_EQ(Log, Lines{"PageComplete Main"});
}

}  // namespace ZELWbr3
