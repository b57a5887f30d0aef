#include "tests/support/StorageShown.h"

namespace ZELWbr3::Testing {

namespace {

constexpr int F5 = 116;

class StoragePages : public StorageShown {
 protected:
  StoragePages() {
    auto& oData = Configured->DataVolumes.volumes;
    oData.resize(4);
    oData[0].info2 = "/mirror/DISK1";
    oData[1].kind = 2;  // a log volume
    oData[2].configured = false;
    oData[3].name = "/data/<b>DISK4</b>";
    oData[3].size = 0;
    oData[3].io1 = -1;
    oData[3].io2 = 0;
    oData[3].io3 = 1234567;
    oData[3].io4 = -2;
    auto& oLog = Configured->LogVolumes.volumes;
    oLog.resize(2);
    oLog[1].kind = 2;
    oLog[1].name = "/log/DISK1";
  }
};

}  // namespace

TEST_F(StoragePages, DataAreaListsItsOwnVolumesInUseOnEveryTab) {
  Configured->Add("MAXDATAVOLUMES").description = "";
  ShowDataArea();
  EXPECT_EQ(Rows("tabVolumeHeader"), "Volumes|2\nMaximum Number of Volumes|11\nCurrent Size|2,000 Pages\n");
  EXPECT_EQ(Rows("tabVolumes"),
            "1|/data/DISK1|1,000 Pages|File|/mirror/DISK1\n"
            "2|/data/<b>DISK4</b>|0 Pages|File|\n");
  EXPECT_EQ(Rows("tabSettings"), "MAXDATAVOLUMES|1|\n");
  EXPECT_EQ(Rows("tabUsageHeader"),
            "Current Size|2,000 Pages|100.00%\nUsed|500 Pages|25.00%\nFree|1,500 Pages|75.00%\n");
  EXPECT_EQ(Rows("tabUsage"),
            "1|/data/DISK1|1,000 Pages|250 Pages|750 Pages|25.00%\n"
            "2|/data/<b>DISK4</b>|0 Pages|250 Pages|750 Pages|0.00%\n");
  EXPECT_EQ(Rows("tabIO"), "1|/data/DISK1|1|2|3|4\n2|/data/<b>DISK4</b>||0|1,234,567|-2\n");
  EXPECT_EQ(Text("LocaleDecimalSymbole") + Text("LocaleDecimalPlaces") + Text("LocaleThousendGroupingSymbole"), ".2,");
  EXPECT_TRUE(IsShown("divFrmCnt"));
  EXPECT_FALSE(IsShown("divFrmWait"));
}

TEST_F(StoragePages, SharesOfAnAreaWithoutAWholeAreZero) {
  Configured->DataSizes[0] = -1;
  ShowDataArea();
  EXPECT_EQ(Text("txtUsedPct"), "0.00%");
  EXPECT_EQ(Text("txtFree"), "-501 Pages");
  EXPECT_EQ(In("tabUsageHeader", "txtCurrentSizePct").innerText(), "100.00%");

  Configured->DataSizes = {100, 16777217, 0, 0, 0, 0};  // a single has no room for the last digit
  Configured->VersionNumber = 0x07030000;
  ShowDataArea();
  EXPECT_EQ(Text("txtPermUsablePct"), "16777216.00%");
}

TEST_F(StoragePages, TheKernelsVersionDecidesAboutRowsAndParametersOfTheDataArea) {
  for (const char* sName :
       {"MAXDATADEVSPACES", "MAXDATAVOLUMES", "MAXDATAPAGES", "RESERVED_REDO_SIZE", "_MIRRORED_DATA"}) {
    Configured->Add(sName);
  }
  struct Case {
    int Version;
    bool OldRows;
    std::string Parameters;
  };
  const std::string sOld =
      "MAXDATADEVSPACES|1|What for\nMAXDATAPAGES|1|What for\nRESERVED_REDO_SIZE|1|What for\n_MIRRORED_DATA|1|What "
      "for\n";
  for (const Case& o : {Case{0x07010000, true, sOld}, Case{0x0703FFFF, true, sOld},
                        Case{0x07040000, false, "MAXDATADEVSPACES|1|What for\n"},
                        Case{0x0704FFFF, false, "MAXDATADEVSPACES|1|What for\n"},
                        Case{0x07050000, false, "MAXDATAVOLUMES|1|What for\n"}}) {
    SCOPED_TRACE(o.Version);
    Configured->VersionNumber = o.Version;
    ShowDataArea();
    EXPECT_EQ(ShownOf({"rowReservedSize", "rowTotalSize", "rowPermUsable", "rowReservedRedo"}),
              o.OldRows ? "rowReservedSize rowTotalSize rowPermUsable rowReservedRedo" : "");
    EXPECT_EQ(Texts({"txtReservedSize", "txtTotalSize", "txtPermUsable", "txtPermUsablePct", "txtReservedRedo",
                     "txtReservedRedoPct"}),
              o.OldRows ? "16 Pages|4,000 Pages|1,900 Pages|95.00%|40 Pages|2.00%" : "|||||");
    EXPECT_EQ(Rows("tabSettings"), o.Parameters);
  }
}

TEST_F(StoragePages, AParameterThatCannotBeReadCostsItsRowAndNoMore) {
  Configured->Add("MAXDATAVOLUMES");
  Configured->Raises = {"Parameter.Value"};
  ExpectError("-1000 Parameter.Value cannot be read");
  ShowDataArea();
  EXPECT_EQ(Rows("tabSettings"), "");
  EXPECT_EQ(Text("txtUsed"), "500 Pages");
}

TEST_F(StoragePages, WithoutFiguresTheirTabsAreDisabledAndEmpty) {
  for (const int iStatus : {2, 3, 4}) {
    SCOPED_TRACE(iStatus);
    Configured->State->status = iStatus;
    ShowDataArea();
    for (const char* sTab : {"tbsTab2DataArea", "tbsTab3DataArea"}) {
      EXPECT_EQ(ClassOf(sTab), "zelTbsLabelOffDsbl");
      Click(sTab);
    }
    EXPECT_EQ(At("tbsTabStripDataArea").getAttribute("selectedtab"), "0");
    EXPECT_EQ(Rows("tabUsage") + Rows("tabIO") + Text("txtUsed"), "");
    EXPECT_NE(Rows("tabVolumes"), "");

    ShowLogArea();
    for (const char* sTab : {"tbsTab2LogArea", "tbsTab3LogArea", "tbsTab4LogArea"}) {
      EXPECT_EQ(ClassOf(sTab), "zelTbsLabelOffDsbl");
    }
    EXPECT_EQ(Text("txtLogPagesWritten") + Text("txtUsed") + Rows("tabIO"), "");
  }
  EXPECT_EQ(Configured->Uses("Activity.Refresh"), 0u);
}

TEST_F(StoragePages, AFullAreaIsSaidOnTopAndDisablesTheDetailTabs) {
  Configured->State->anyAreaFull = Configured->State->logFull = true;
  ShowLogArea();
  EXPECT_TRUE(IsShown("divTopWarning"));
  EXPECT_EQ(Text("txtTopWarning"), "Log Area Full");
  for (const char* sTab : {"tbsTab2LogArea", "tbsTab3LogArea", "tbsTab4LogArea"}) {
    EXPECT_EQ(ClassOf(sTab), "zelTbsLinkOffDsbl");
    Click(sTab);
  }
  EXPECT_EQ(At("tbsTabStripLogArea").getAttribute("selectedtab"), "0");
  EXPECT_EQ(Text("txtUsed"), "60 Pages");  // filled all the same
  Click("guicmd00035");
  EXPECT_EQ(Log.back(), "Command 35");

  ShowDataArea();
  EXPECT_EQ(ClassOf("tbsTab1DataArea"), "zelTbsLinkOff");
  EXPECT_EQ(ClassOf("tbsTab3DataArea"), "zelTbsLinkOffDsbl");
}

TEST_F(StoragePages, AnAreaThatCannotBeRefreshedShowsItsVolumesOnly) {
  Configured->Fails = {"DataArea.Refresh", "LogArea.Refresh"};
  Configured->Add("MAXDATAVOLUMES");
  ExpectError("-24988 SQL error");
  ShowDataArea();
  EXPECT_NE(Rows("tabVolumes"), "");
  EXPECT_EQ(Rows("tabSettings") + Rows("tabUsage") + Rows("tabIO") + Text("LocaleDecimalSymbole"), "");
  EXPECT_TRUE(IsShown("divFrmCnt"));
  Click("tbsTab3DataArea");
  EXPECT_EQ(At("tbsTabStripDataArea").getAttribute("selectedtab"), "3");

  ExpectError("-24988 SQL error");
  ShowLogArea();
  EXPECT_EQ(Rows("tabVolumes"), "1|/log/DISK1|1,000 Pages|File|\n");
  EXPECT_FALSE(IsShown("tabLogModeSingle"));
}

TEST_F(StoragePages, ARefreshKeepsTheTabUnlessItHasBecomeEmpty) {
  ShowDataArea();
  Click("tbsTab3DataArea");
  const std::string sRows = Rows("tabIO");
  EXPECT_TRUE(Key(F5));
  EXPECT_EQ(Rows("tabIO"), sRows);
  EXPECT_TRUE(IsShown("tbsContent3DataArea"));
  EXPECT_FALSE(IsShown("tbsContent0DataArea"));

  Configured->State->status = 4;
  Key(F5);
  EXPECT_EQ(At("tbsTabStripDataArea").getAttribute("selectedtab"), "0");
  EXPECT_EQ(ClassOf("tbsTab3DataArea"), "zelTbsLabelOffDsbl");
}

TEST_F(StoragePages, OneOfTheTablesOfALogSettingIsShown) {
  const auto Tables = [this] {
    return ShownOf({"tabLogModeUnknown", "tabLogModeSingle", "tabLogModeMirrored", "tabLogModeWrongVersion"}) + " " +
           ShownOf({"tabLogOverwriteUnknown", "tabLogOverwriteNormal", "tabLogOverwriteOverwrite",
                    "tabLogOverwriteWrongVersion"}) +
           " " +
           ShownOf({"tabRedoLogUnknown", "tabRedoLogActivated", "tabRedoLogDeactivated", "tabRedoLogWrongVersion"});
  };
  const std::vector<std::string> modes = {"tabLogModeUnknown tabLogOverwriteOverwrite",
                                          "tabLogModeSingle tabLogOverwriteNormal",
                                          "tabLogModeMirrored tabLogOverwriteUnknown", " "};  // 3 and -1 are no codes
  const std::vector<std::string> redoLogs = {"tabRedoLogUnknown", "tabRedoLogActivated", "tabRedoLogDeactivated", ""};
  for (const auto& [iVersion, bModesKnown, bRedoLogKnown] : {std::tuple(0x07030000, true, false),
                                                             {0x07040000, true, false},
                                                             {0x07040001, false, false},
                                                             {0x070401FF, false, false},
                                                             {0x07040200, false, true},
                                                             {0x070402FF, false, true},
                                                             {0x07040300, true, true}}) {
    SCOPED_TRACE(iVersion);
    Configured->VersionNumber = iVersion;
    Configured->Calls.clear();
    for (const int iCode : {0, 1, 2, 3}) {
      Configured->LogMode = Configured->RedoLog = iCode;
      Configured->Overwrite = 2 - iCode;
      ShowLogArea();
      const auto i = static_cast<std::size_t>(iCode);
      EXPECT_EQ(Tables(), (bModesKnown ? modes[i] : "tabLogModeWrongVersion tabLogOverwriteWrongVersion") + " " +
                              (bRedoLogKnown ? redoLogs[i] : "tabRedoLogWrongVersion"));
    }
    EXPECT_EQ(Configured->Uses("Settings.LogMode"), bModesKnown ? 4u : 0u);
    EXPECT_EQ(Configured->Uses("Settings.RedoLog"), bRedoLogKnown ? 4u : 0u);
  }
}

TEST_F(StoragePages, TheBuildDecidesWhatCountsTheLogVolumesAndAMissingParameterEndsTheList) {
  Configured->Add("LOG_SEGMENT_SIZE", 1);
  Configured->Add("MAXARCHIVELOGS", 9);
  Configured->BuildNumber = 0x07040300;
  ShowLogArea();
  EXPECT_EQ(Rows("tabSettingsParams"), "MAXARCHIVELOGS|1|What for\nLOG_SEGMENT_SIZE|1|What for\n");
  EXPECT_EQ(ClassOf("PARAMLOG_SEGMENT_SIZE") + ClassOf("PARAMMAXARCHIVELOGS"), "zelTblCellParExtzelTblCellParNon");

  Configured->BuildNumber = 0x07040301;  // wants MAXLOGVOLUMES, which is missing
  Configured->Calls.clear();
  ShowLogArea();
  EXPECT_EQ(Rows("tabSettingsParams"), "");
  EXPECT_EQ(Configured->Uses("Parameters.Item LOG_SEGMENT_SIZE"), 0u);
}

TEST_F(StoragePages, LogAreaShowsItsFigures) {
  ShowLogArea();
  EXPECT_EQ(Rows("tabVolumeHeader"), "Volumes|1\nMaximum Number of Volumes|4\nCurrent Size|512 Pages\n");
  EXPECT_EQ(Rows("tabUsageHeader"),
            "Current Size|512 Pages|100.00%\nLog Segment|100 Pages|20.00%\nFree|400 Pages|80.00%\n"
            "Used|60 Pages|12.00%\nNot Saved|30 Pages|6.00%\nSince the Last Log Backup|15 Pages|3.00%\n");
  EXPECT_EQ(Rows("tabIO"), "1|/log/DISK1|1|2|3|4\n");
  EXPECT_EQ(Rows("tabActivity"),
            "Log Pages Written|1,234,567\nWaits for the Log Writer|0\nGroup Commits|8\nLog I/O Queue Overflows|\n");
  EXPECT_EQ(Configured->Uses("Activity.Refresh"), 1u);

  Configured->Fails = {"Activity.Refresh"};
  ExpectError("-24988 SQL error");
  ShowLogArea();
  EXPECT_EQ(Text("txtLogPagesWritten"), "");
  EXPECT_EQ(Text("txtUsed"), "60 Pages");
}

}  // namespace ZELWbr3::Testing
