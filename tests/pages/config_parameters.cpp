#include "tests/support/StorageShown.h"
#include "zelwbr3/pages/config/PageParameter.h"

namespace ZELWbr3::Testing {

namespace {

constexpr int F5 = 116;
constexpr int Escape = 27;

const Date Jan1{2026, 1, 1, 8, 0, 0};
const Date Jan1Late{2026, 1, 1, 9, 30, 0};
const Date Feb2{2026, 2, 2, 10, 0, 0};

class ConfigurationPages : public StorageShown {
 protected:
  ConfigurationPages() {
    auto& oCache = Configured->Add("  CACHE SIZE ", 0);
    oCache.history = {{Jan1, "", "", "10", ""}, {Feb2, "", "10", "", ""}};
    Configured->Add("SECOND", 0).value = "";
    Configured->Add("EXT", 1);
    Configured->Add("SUP", 2).description = "";
    Configured->Add("INFO", 3);
    Configured->Add("OTHER", 7);
    Configured->Changes = {{Jan1, " INFO ", "1", "2", "operator"},
                           {Jan1Late, "OTHER", "", "2", ""},
                           {Feb2, "GONE", "3", "", "x"},
                           {Jan1, "EXT", "1", "2", "y"}};
  }

  void ShowParameter(const std::string& sName) {
    Control->PageParameter()->Show(Configured, Configured->Parameters()->Item(sName));
  }
  std::string Expander() { return ClassOf("PHISTCACHE SIZE"); }
};

}  // namespace

TEST_F(ConfigurationPages, EachGroupHasItsTabWhichIsFilledOnce) {
  ShowParameters();
  EXPECT_EQ(Rows("tabGeneral"), "|CACHE SIZE|1|What for\n|SECOND|~|What for\n");
  EXPECT_EQ(Rows("tabExtended") + Rows("tabSupport"), "");
  EXPECT_EQ(ClassOf("PARAMCACHE SIZE"), "zelTblCellParGen");
  EXPECT_EQ(Expander(), "zelTblCellExpClosed");

  Log.clear();
  Click("tbsTab1Parameters");
  EXPECT_EQ(Log, (std::vector<std::string>{"ActionBegin", "ActionComplete false"}));
  EXPECT_EQ(Rows("tabExtended"), "|EXT|1|What for\n");
  EXPECT_EQ(ClassOf("PARAMEXT"), "zelTblCellParExt");
  Click("tbsTab2Parameters");
  EXPECT_EQ(Rows("tabSupport"), "|SUP|1|~\n");
  EXPECT_EQ(ClassOf("PARAMSUP"), "zelTblCellParSup");
  EXPECT_TRUE(IsShown("tbsContent2Parameters"));

  Click("tbsTab1Parameters");
  EXPECT_EQ(Configured->Uses("Parameters.Load"), 3u);

  // A refresh fills anew: the first tab, and the one that the user looks at.
  Configured->Add("EXT2", 1);
  Key(F5);
  EXPECT_EQ(Rows("tabExtended"), "|EXT|1|What for\n|EXT2|1|What for\n");
  EXPECT_EQ(Rows("tabSupport"), "");
  EXPECT_EQ(At("tbsTabStripParameters").getAttribute("selectedtab"), "1");
}

TEST_F(ConfigurationPages, AListThatCannotBeFetchedIsTriedAgainAtTheNextClick) {
  for (const char* sFails : {"Parameters.Load", "Parameters.Read"}) {
    SCOPED_TRACE(sFails);
    Configured->Fails = {sFails};
    ExpectError("-24988 SQL error");
    ShowParameters();
    EXPECT_EQ(Rows("tabGeneral"), "");
    EXPECT_TRUE(IsShown("divFrmCnt"));
    Configured->Fails.clear();
    Click("tbsTab0Parameters");
    EXPECT_NE(Rows("tabGeneral"), "");
  }
  // Nothing is listed twice after a failure in its middle.
  Configured->Raises = {"Parameter.Value"};
  ExpectError("-1000 Parameter.Value cannot be read");
  ShowParameters();
  Configured->Raises.clear();
  Click("tbsTab0Parameters");
  EXPECT_EQ(Rows("tabGeneral"), "");
}

TEST_F(ConfigurationPages, TheHistoryUnfoldsBelowItsRowAndIsReadOnce) {
  ShowParameters();
  const std::string sClosed = Rows("tabGeneral");
  const std::string sOpen =
      "|CACHE SIZE|1|What for\n"
      "|2026-01-01 08:00:00|~|10\n"
      "|2026-02-02 10:00:00|10|~\n"
      "|SECOND|~|What for\n";
  Click("PHISTCACHE SIZE");
  EXPECT_EQ(Rows("tabGeneral"), sOpen);
  EXPECT_EQ(Expander(), "zelTblCellExpOpen");
  EXPECT_EQ(At("PHISTCACHE SIZE").parentElement()->nextElementSibling()->id(), "rowItem");
  Click("PHISTCACHE SIZE");
  EXPECT_EQ(Rows("tabGeneral"), sClosed);
  EXPECT_EQ(Expander(), "zelTblCellExpClosed");
  EXPECT_FALSE(At("PHISTCACHE SIZE").parentElement()->hasAttribute("expanded"));
  Click("PHISTCACHE SIZE");
  EXPECT_EQ(Rows("tabGeneral"), sOpen);
  EXPECT_EQ(Expander(), "zelTblCellExpOpen");
  EXPECT_EQ(Configured->Uses("Parameter.HistoryCount"), 1u);
  EXPECT_EQ(Configured->Uses("Parameters.Item CACHE SIZE"), 1u);

  // The next row's history is its own.
  Click("PHISTSECOND");
  EXPECT_EQ(ClassOf("PHISTSECOND"), "zelTblCellExpDsbl");
  Click("PHISTSECOND");
  EXPECT_EQ(ClassOf("PHISTSECOND"), "zelTblCellExpClosed");
  EXPECT_EQ(Rows("tabGeneral"), sOpen);
}

TEST_F(ConfigurationPages, AHistoryThatCannotBeReadLeavesTheRowClosed) {
  ShowParameters();
  const std::string sClosed = Rows("tabGeneral");
  Configured->Raises = {"Parameter.HistoryNewValue"};  // the second entry's
  ExpectError("-1000 Parameter.HistoryNewValue cannot be read");
  Click("PHISTCACHE SIZE");
  EXPECT_EQ(Rows("tabGeneral"), sClosed);
  EXPECT_EQ(Expander(), "zelTblCellExpClosed");

  Configured->Raises.clear();
  Configured->Listed.front().exists = false;
  ExpectError("-24988 SQL error");
  Click("PHISTCACHE SIZE");
  EXPECT_EQ(Rows("tabGeneral"), sClosed);

  Configured->Listed.front().exists = true;
  Click("PHISTCACHE SIZE");
  EXPECT_EQ(Expander(), "zelTblCellExpOpen");
}

TEST_F(ConfigurationPages, TheHistoryByDateHasARowForEachDayInARow) {
  Configured->Fails = {"ParameterHistory.Open"};
  ExpectError("-24988 SQL error");
  ShowParameters();
  Click("tbsTab3Parameters");
  EXPECT_EQ(Rows("tabHistoryDate"), "");
  Configured->Fails.clear();
  Click("tbsTab0Parameters");
  Click("tbsTab3Parameters");
  const std::string sRows =
      "2026-01-01\n08:00:00|INFO|1|2|operator\n09:30:00|OTHER|~|2|~\n"
      "2026-02-02\n10:00:00|GONE|3|~|x\n"
      "2026-01-01\n08:00:00|EXT|1|2|y\n";
  EXPECT_EQ(Rows("tabHistoryDate"), sRows);
  EXPECT_EQ(ClassOf("PARAMINFO"), "zelTblCellParInf");
  EXPECT_EQ(ClassOf("PARAMOTHER"), "zelTblCellParNon");
  EXPECT_EQ(ClassOf("PARAMGONE"), "zelTblCellParNon");
  EXPECT_EQ(ClassOf("PARAMEXT"), "zelTblCellParExt");
  Click("tbsTab0Parameters");
  Click("tbsTab3Parameters");
  EXPECT_EQ(Rows("tabHistoryDate"), sRows);

  // One that does not exist any more: an error, and the page all the same.
  ExpectError("-24988 SQL error");
  Click("PARAMGONE");
  EXPECT_EQ(Text("txtFormTitle"), "Parameter");
  EXPECT_TRUE(IsShown("divFrmCnt"));
  EXPECT_EQ(Text("txtName"), "");
}

TEST_F(ConfigurationPages, NamesAreTakenByTheLetter) {
  const std::string sName = "PARAM\"><b id='x'>PHIST";
  Configured->Add(sName, 0).history = {{Jan1, "", "1", "2", ""}};
  Configured->Listed.back().value = "<i>&amp;</i>";
  ShowParameters();
  Click("PHIST" + sName);
  EXPECT_EQ(ClassOf("PHIST" + sName), "zelTblCellExpOpen");
  Click("PARAM" + sName);
  EXPECT_EQ(Text("txtName"), sName);
  EXPECT_EQ(Text("txtActVal"), "<i>&amp;</i>");
}

TEST_F(ConfigurationPages, AParameterShowsWhatItIsGoingToBe) {
  auto& o = Configured->Listed.front();
  o.value = "10";
  o.newValue = "20";
  o.newValueOnline = "10";
  o.explanation = "Line 1\n  Line 2";
  struct Case {
    int Status, Release, Version;
    bool Online;
  };
  for (const Case& oCase : {Case{5, 0x07060000, 0x0706000C, true}, Case{4, 0x07060000, 0x0706000C, false},
                            Case{5, 0x0705FFFF, 0x0706000C, false}, Case{5, 0x07060000, 0x0706000B, false}}) {
    Configured->State->status = oCase.Status;
    Configured->ReleaseNumber = oCase.Release;
    Configured->VersionNumber = oCase.Version;
    ShowParameter("CACHE SIZE");
    EXPECT_EQ(Text("txtActVal"), "10");
    EXPECT_EQ(IsShown("rowNewVal"), !oCase.Online);
    EXPECT_EQ(Text("txtNewVal"), oCase.Online ? "" : "20");
  }
  EXPECT_TRUE(IsShown("rowExplain"));
  EXPECT_EQ(Text("txtExplain"), "Line 1\n  Line 2");
  EXPECT_EQ(Text("txtName"), "  CACHE SIZE ");
  EXPECT_EQ(Rows("tabHistory"), "2026-01-01 08:00:00|~|10\n2026-02-02 10:00:00|10|~\n");

  ShowParameter("SECOND");
  EXPECT_FALSE(IsShown("rowExplain"));
  EXPECT_EQ(Rows("tabHistory"), "");
  EXPECT_EQ(ClassOf("celName"), "zelParamGenLrg");
  ShowParameter("OTHER");
  EXPECT_EQ(ClassOf("celName"), "zelParamNonLrg");
}

TEST_F(ConfigurationPages, AParametersPageIsClosedByButtonsKeyAndCommandList) {
  Control->PageParameter()->Commandlist(Commandlist);
  ShowMain();
  const std::function<void()> closings[] = {[&] { Click("btnFormClose"); }, [&] { Click("btnClose"); },
                                            [&] { Key(Escape); }, [&] { Commandlist->ClickItem(1); }};
  for (const auto& Close : closings) {
    ShowParameter("SECOND");
    EXPECT_EQ(Commands(), "1 &Close");
    Close();
    EXPECT_EQ(Text("txtFormTitle"), "Instance Overview");
  }
}

}  // namespace ZELWbr3::Testing
