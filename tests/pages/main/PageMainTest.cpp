#include "pages/main/PageMain.h"

#include "dom/Style.h"
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

  /// The shown rows of the hot-standby table: label with ">" for an arrow,
  /// value and role.
  std::vector<std::string> Nodes() {
    std::vector<std::string> nodes;
    Element* oRow = At("rowHotStandbyOfficial").parentElement()->firstElementChild();
    for (; oRow != nullptr; oRow = oRow->nextElementSibling()) {
      const auto oCells = oRow->cells();
      if (oRow->style().display() == "none" || oCells.size() < 3) continue;
      const bool bArrow = oCells[0]->className() == "zelTblCellAltArrowLeft";
      EXPECT_TRUE(bArrow || oCells[0]->className() == "zelTblCellAltNoImage");
      nodes.push_back((bArrow ? ">" : "") + oCells[0]->innerText() + "|" + oCells[1]->innerText() + "|" +
                      oCells[2]->innerText());
    }
    return nodes;
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
  EXPECT_EQ(Property("imgInstance", "State"), "5");
  EXPECT_EQ(Property("imgInstance", "BackColor"), "16777215");
  EXPECT_EQ(Property("imgInstance", "InstanceType"), "0");
  EXPECT_EQ(Property("imgInstance", "HotStandby"), "false");
  EXPECT_EQ(Property("imgInstance", "Wait"), "false");

  EXPECT_EQ(Text("General.Name.Val"), "DEMO");
  EXPECT_EQ(Text("General.Version.Val"), "Kernel 7");
  EXPECT_EQ(Text("General.OS.Val"), "Linux (6.1)");
  EXPECT_EQ(Text("General.RunDir.Val"), "/var/lib/demo");
  EXPECT_EQ(Text("General.StartOn.Val"), "2026-01-02 03:04:05");
  EXPECT_EQ(Text("General.DBAnalyzer.Val"), "On");
  EXPECT_EQ(Text("General.AutoUpdateStatistics.Val"), "On");
  EXPECT_EQ(Text("General.AutoLog.Val"), "Off");
  EXPECT_EQ(Text("DataCache.Total.Val"), "1,024 KB");
  EXPECT_EQ(Text("DataCache.HitRate.Val"), "99 %");

  EXPECT_FALSE(IsShown("divFrmWait"));
  EXPECT_TRUE(IsShown("divFrmCnt"));
  EXPECT_TRUE(IsShown("divFrmFtr"));
  for (const char* sHidden : {"divTopWarning", "Snapshot.Tab", "Warnings.Tab", "tabHotStandby", "General.OMSMemAna.Row",
                              "DataCache.Used.Row", "State.LogAutoOwerwrite.Row", "State.LogWriteOff.Row"}) {
    EXPECT_FALSE(IsShown(sHidden)) << sHidden;
  }
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
  for (const char* sText : {"txtData", "txtLog", "txtSessions"}) EXPECT_EQ(Text(sText), " ") << sText;
  EXPECT_EQ(Text("General.Name.Val"), "");
  for (const char* sHidden :
       {"divTopWarning", "General.StartOn.Row", "GeneralRight.Tab", "DataCache.Tab", "Warnings.Tab"}) {
    EXPECT_FALSE(IsShown(sHidden)) << sHidden;
  }
}

TEST_F(PageMainTest, ThePictureAndTheCommandsFollowTheState) {
  struct Case {
    int Status;
    const char* Picture;
    const char* Commands;
  };
  const Case cases[] = {
      {5, "5", "2 &Offline, 3 &Admin, (4 &Online), 5 -, (6 Restart &Until)"},
      {0, "2", "2 &Offline, 3 &Admin, 4 &Online, 5 -, 6 Restart &Until"},
      {1, "2", "(2 &Offline), 3 &Admin, 4 &Online, 5 -, 6 Restart &Until"},
      {2, "3", "(2 &Offline), 3 &Admin, 4 &Online, 5 -, 6 Restart &Until"},
      {3, "4", "2 &Offline, (3 &Admin), 4 &Online, 5 -, 6 Restart &Until"},
      {6, "2", "2 &Offline, (3 &Admin), 4 &Online, 5 -, 6 Restart &Until"},  // as they were
      {4, "4", "2 &Offline, 3 &Admin, 4 &Online, 5 -, 6 Restart &Until"},
  };
  for (const Case& oCase : cases) {
    SCOPED_TRACE(oCase.Status);
    State().status = oCase.Status;
    ShowMain();
    EXPECT_EQ(Property("imgInstance", "State"), oCase.Picture);
    EXPECT_EQ(Commands(), oCase.Commands);
  }
  for (const auto& [iRole, bWarning, bLocked] :
       {std::tuple(2, false, true), {3, false, true}, {2, true, false}, {1, false, false}, {3, true, false}}) {
    Instance->Role = iRole;
    Instance->StandbyWarning = bWarning;
    ShowMain();
    EXPECT_EQ(Commands() == "(2 &Offline), (3 &Admin), (4 &Online), 5 -, (6 Restart &Until)", bLocked) << iRole;
  }
  EXPECT_EQ(Commandlist->Items()[0].Picture, 41);
  EXPECT_EQ(Commandlist->Items()[4].Picture, 109);
}

TEST_F(PageMainTest, AFullDataAreaGoesBeforeAFullLog) {
  HasVersion(0x07020000);
  State().anyAreaFull = State().dataFull = State().logFull = true;
  ShowMain();
  EXPECT_EQ(Text("txtState"), "Online (Full)");
  EXPECT_EQ(Bar("pbrData"), "70 80 95 100");
  EXPECT_EQ(Text("txtData"), "Data Area Full");
  EXPECT_EQ(Text("txtLog"), "Log Area Full");
  EXPECT_TRUE(IsShown("divTopWarning"));
  EXPECT_TRUE(IsShown("rowTopWarningInfo"));
  EXPECT_EQ(Text("txtTopWarning"), "Data Area Full");
  EXPECT_EQ(At("txtTopWarningInfo").innerHTML(),
            "To extend the data area add a data volume. (Instance-&gt;Configuration-&gt;<a href=\"\" "
            "class=\"zelLnkFunction\" id=\"guicmd00065\">Volumes</a>)");
  EXPECT_TRUE(IsShown("Warnings.Tab"));
  EXPECT_TRUE(IsShown("Warnings.DBFull.Row"));
  EXPECT_EQ(Text("Warnings.DBFull.Val"), "Yes");
  EXPECT_FALSE(IsShown("Warnings.LogFull.Row"));  // not before 7.3
  Log.clear();
  Click("guicmd00065");
  EXPECT_EQ(Log, Lines{"Command 65"});

  HasVersion(0x07030000);
  State().dataFull = false;
  ShowMain();
  EXPECT_EQ(Text("txtTopWarning"), "Log Area Full");
  EXPECT_EQ(Text("txtTopWarningInfo"),
            "To empty the log area make a log backup or turn AutoLog on. (Instance->Backup->Backup Wizard)");
  EXPECT_TRUE(IsShown("Warnings.LogFull.Row"));
  EXPECT_FALSE(IsShown("Warnings.DBFull.Row"));
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

  struct Case {
    int Version;
    bool BadVolumes, Analyzer, AutoExtend;
  };
  for (const Case& oCase : {Case{0x0703FFFF, true, false, false}, Case{0x07040000, false, true, false},
                            Case{0x07060009, false, true, false}, Case{0x0706000A, false, true, true}}) {
    HasVersion(oCase.Version);
    ShowMain();
    EXPECT_EQ(IsShown("Warnings.BadVol.Row"), oCase.BadVolumes) << std::hex << oCase.Version;
    EXPECT_EQ(IsShown("Warnings.Tab"), oCase.BadVolumes) << std::hex << oCase.Version;
    EXPECT_EQ(IsShown("General.DBAnalyzer.Row"), oCase.Analyzer) << std::hex << oCase.Version;
    EXPECT_EQ(IsShown("General.AutoExtend.Row"), oCase.AutoExtend) << std::hex << oCase.Version;
    EXPECT_EQ(IsShown("General.AutoUpdateStatistics.Row"), oCase.AutoExtend) << std::hex << oCase.Version;
  }
}

TEST_F(PageMainTest, TheLogRowSaysHowTheLogIsWritten) {
  const auto Rows = [this] {
    std::string sRows;
    for (const char* sID : {"State.Log.Row", "State.LogAutoOwerwrite.Row", "State.LogWriteOff.Row"}) {
      sRows += IsShown(sID) ? '1' : '0';
    }
    return sRows;
  };
  Instance->Log->autoOverwrite = 2;
  State().historyLost = true;
  ShowMain();
  EXPECT_EQ(Rows(), "010");
  EXPECT_EQ(Text("txtLog"), "");
  EXPECT_FALSE(IsShown("Warnings.HistLost.Row"));  // of no concern then
  Instance->Log->writeOff = 2;
  ShowMain();
  EXPECT_EQ(Rows(), "001");
  Instance->Log->autoOverwrite = 1;
  ShowMain();
  EXPECT_EQ(Rows(), "001");
  EXPECT_EQ(Text("txtLog"), "");
  Instance->Log->writeOff = 0;
  ShowMain();
  EXPECT_EQ(Rows(), "100");
  EXPECT_TRUE(IsShown("Warnings.HistLost.Row"));
  State().infoAvailable = false;
  ShowMain();
  EXPECT_EQ(Rows(), "101");  // as the page file has it
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
  for (const char* sSwitch : {"AutoLog", "CmdMon", "ResMon", "OMSMemAna", "DBTrace", "AutoExtend"}) {
    EXPECT_EQ(Text(std::string("General.") + sSwitch + ".Val"), "On") << sSwitch;
    EXPECT_TRUE(IsShown(std::string("General.") + sSwitch + ".Row")) << sSwitch;
  }
  EXPECT_EQ(Text("General.AutoUpdateStatistics.Val"), "Unknown");
  EXPECT_EQ(Text("General.DBAnalyzer.Val"), "Off");
  EXPECT_EQ(Text("General.Name.Val"), "DEMO (12)");
  EXPECT_EQ(Text("txtName"), "DEMO");
  EXPECT_TRUE(IsShown("DataCache.Used.Row"));
  EXPECT_EQ(Text("DataCache.Used.Val"), "512 KB");
  EXPECT_TRUE(IsShown("Snapshot.Tab"));
  EXPECT_EQ(Text("Snapshot.ID.Val"), "SNAP 7");
  EXPECT_EQ(Text("Snapshot.Created.Val"), "2026-05-06 07:08:09");
  EXPECT_EQ(Text("Snapshot.Size.Val"), "2,048 KB");
  EXPECT_EQ(Text("Warnings.BadIdx.Val"), "4");
  EXPECT_TRUE(IsShown("Warnings.Tab"));
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
  for (const auto& [iUnit, sText] : {std::pair(-1, "1,073,840,128 Bytes"),
                                     {0, "1,048,672 KB"},
                                     {1, "1,024.09 MB"},
                                     {2, "1.00 GB"},
                                     {3, "131,084 Pages"},
                                     {4, "1.00 GB"}}) {
    Control->PreferredUnit(iUnit);
    ShowMain();
    EXPECT_EQ(Text("DataCache.Total.Val"), sText);
  }
  Control->PreferredUnit(5);
  ExpectError("Subscript out of range: there is no unit 6");
  ShowMain();
}

TEST_F(PageMainTest, ShowsTheNodesOfAHotStandby) {
  Instance->Role = 1;
  Instance->StandbyWarning = true;
  Instance->Standby->nodes = {
      {"alpha", "ok", 2, true}, {"unKNOWN", "", 1}, {"beta", "", 1}, {"UNKNOWN", "", 7}, {"gamma", "sync", 0}};
  const Lines expected = {">Virtual Server Name|virtual|", ">Node #1|alpha (ok)|Master", "Node #2|Unknown|Standby",
                          "Node #3|beta ()|Standby",       "Node #4|Unknown| ",          "Node #5|gamma (sync)| "};
  ShowMain();
  EXPECT_TRUE(IsShown("tabHotStandby"));
  EXPECT_TRUE(IsShown("rowHotStandbyWarning"));
  EXPECT_EQ(Nodes(), expected);
  EXPECT_EQ(At("rowHotStandbyNode3").cells(1)->innerText(), "beta ()");
  EXPECT_FALSE(IsShown("rowHotStandbyNode"));
  EXPECT_TRUE(Key(116));  // a second fill stands in a document of its own
  EXPECT_EQ(Nodes(), expected);

  Instance->Role = 3;
  Instance->StandbyWarning = false;
  Instance->Standby->nodes = {{"UNKNOWN", "", 2}, {"UNKNOWN", "", 1}};
  ShowMain();
  EXPECT_FALSE(IsShown("rowHotStandbyWarning"));
  EXPECT_EQ(Nodes(), (Lines{"Virtual Server Name|virtual|", "Node #1|Unknown|Master", "Node #2|Unknown|Standby"}));
}

TEST_F(PageMainTest, UsesTheNumberedRowsThatThePageFileHas) {
  ChangedPageFile("<tr id=\"rowHotStandbyNode\"",
                  "<tr id=\"rowHotStandbyNode2\" style=\"display:none\"><th></th><td></td><td>x</td></tr>"
                  "<tr id=\"rowHotStandbyNode\"");
  Instance->Role = 1;
  Instance->Standby->nodes = {{"alpha", "ok", 2}, {"beta", "ok", 1}};
  ShowMain();
  // The first node's row is made; it goes behind its template.
  EXPECT_EQ(Nodes(),
            (Lines{">Virtual Server Name|virtual|", "Node #2|beta (ok)|Standby", "Node #1|alpha (ok)|Master"}));
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

  HasVersion(0x07010000);  // where nothing is subtracted
  ShowMain();
  HasVersion(0x07060010);
  State().dataUsed = 100;
  State().sessionsUsed = -2147483647;
  State().sessionsMax = 2;
  ExpectError("Overflow: 2147483649 does not fit into 32 bits");
  ShowMain();
  State().sessionsUsed = 0;
  ShowMain();
  EXPECT_EQ(Text("txtSessions"), "Used:  Free: 2");

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

  // While the document is being replaced the page is deaf.
  Control->Refresh(0);
  Platform.MessagePump().Turn();
  Log.clear();
  Platform.FrontFrame().Click("btnFormClose");
  EXPECT_FALSE(Platform.FrontFrame().Key(116));
  Commandlist->ClickItem(2);
  EXPECT_TRUE(Log.empty());
}

TEST_F(PageMainTest, ShowsHostileTextsAsTheyAre) {
  const std::string sHostile = "<script>alert('x')</script> & \"q\" \xE2\x80\xA8 ";
  Instance->Name = sHostile;
  State().stateText = std::string("a\0b\xFF", 4);
  ShowMain();
  EXPECT_EQ(Text("txtName"), sHostile);
  EXPECT_EQ(Text("txtState"),
            "a\xEF\xBF\xBD"
            "b\xEF\xBF\xBD");
  EXPECT_EQ(At("txtName").firstElementChild(), nullptr);
}

TEST_F(PageMainTest, ReadsEverythingAnewAtEachFill) {
  ShowMain();
  const auto calls = std::exchange(Instance->Calls, {});
  EXPECT_FALSE(calls.empty());
  Instance->Calls.clear();
  ShowMain();
  EXPECT_EQ(Instance->Calls, calls);
}

}  // namespace ZELWbr3
