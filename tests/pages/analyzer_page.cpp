// The database analyzer's page: what it shows in which state, and what its
// commands ask and call.

#include "tests/support/Told.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {
namespace {

constexpr int Start = 2;
constexpr int Stop = 3;
constexpr int Delete = 5;

/// A control that shows the analyzer's page for an analyzer with these
/// members.
class Analyzer : public Told {
 public:
  explicit Analyzer(const std::string& sAnalyzer, const std::string& sRecording = "")
      : Told("\"Analyzer\": " + sAnalyzer, sRecording) {
    Show(Browser.PageDBAnalyzer());
  }

  /// The rows that tell the state, as far as they are shown.
  std::string StateRows() {
    std::string sRows;
    for (const char* sID : {"rowStarted", "rowStopped", "rowUnknown", "rowError"}) {
      if (IsShown(sID)) sRows += (sRows.empty() ? "" : " ") + std::string(sID);
    }
    return sRows;
  }
  std::string Details() {
    std::string sDetails;
    for (const char* sID :
         {"txtInfo", "txtConfigFile", "txtProtDir", "txtInterval", "txtReconnect", "txtProcessID", "txtSessionID"}) {
      sDetails += "[" + Text(sID) + "]";
    }
    return sDetails;
  }
  /// The visible rows of the protocol sets, a line each.
  std::string Sets() {
    std::string sSets;
    for (Element* oRow = Find("tabProtSets")->tBodies(0)->firstElementChild(); oRow != nullptr;
         oRow = oRow->nextElementSibling()) {
      if (oRow->getAttribute("style").find("none") != std::string::npos) continue;
      for (const Element* oCell : oRow->cells()) sSets += "[" + oCell->innerText() + "]";
      sSets += "\n";
    }
    return sSets;
  }
};

constexpr const char* Running =
    "{\"State\": 1, \"StartTime\": \"2026-03-02 07:00\", \"Info\": \"<b>12</b>\", \"ConfigFile\": \"a.cfg\", "
    "\"ProtocolDir\": \"/p\", \"Interval\": 60, \"Reconnect\": \"yes\", \"ProcessID\": \"4711\", \"SessionID\": "
    "\"39\", \"HasError\": true, \"ErrorText\": \"2 warnings\"}";

TEST(AnalyzerPage, ShowsHowTheAnalyzerRuns) {
  Analyzer o(Running);
  EXPECT_EQ(o.Lines(), "page DBAnalyzer\n");
  EXPECT_EQ(o.StateRows(), "rowStarted rowError");
  EXPECT_EQ(o.Text("txtStarted"), "2026-03-02 07:00");
  EXPECT_EQ(o.Text("txtError"), "2 warnings");
  EXPECT_EQ(o.Details(), "[<b>12</b>][a.cfg][/p][60 sec.][yes][4711][39]");
  EXPECT_EQ(o.Items(), "(Start) Stop Delete Protocols");
  EXPECT_FALSE(o.IsShown("divFrmWait"));
  EXPECT_TRUE(o.IsShown("divFrmCnt"));
}

TEST(AnalyzerPage, ShowsOnlyTheStateOfAnAnalyzerThatDoesNotRun) {
  const auto Expect = [](const std::string& sAnalyzer, const std::string& sRows, const std::string& sItems) {
    Analyzer o(sAnalyzer);
    EXPECT_EQ(o.Lines(), "page DBAnalyzer\n") << sAnalyzer;
    EXPECT_EQ(o.StateRows(), sRows) << sAnalyzer;
    EXPECT_EQ(o.Details(), "[][][][][][][]") << sAnalyzer;
    EXPECT_EQ(o.Items(), sItems) << sAnalyzer;
  };
  const std::string sRest = ", \"Info\": \"old\", \"Interval\": 900, \"ProcessID\": \"1\"}";
  Expect("{\"State\": 0" + sRest, "", "(Start) (Stop) Delete Protocols");
  Expect("{\"State\": 2" + sRest, "rowStopped", "Start (Stop) Delete Protocols");
  Expect("{\"State\": 7" + sRest, "rowUnknown", "(Start) (Stop) Delete Protocols");
  Expect("{\"State\": -1" + sRest, "rowUnknown", "(Start) (Stop) Delete Protocols");
  Expect("null", "rowUnknown", "(Start) (Stop) Delete Protocols");
}

TEST(AnalyzerPage, ListsProtocolSetsAsTheInstanceGivesThem) {
  Analyzer o(
      "{\"State\": 2, \"ProtocolSets\": [{\"Date\": \"2026-03-02T07:00:00\", \"Texts\": [\"a\", \"b\", \"c\", \"too "
      "much\"]}, "
      "{\"Date\": \"2026-02-01T00:00:01\", \"Texts\": [\"<i>\"]}, {\"Texts\": []}]}");
  EXPECT_EQ(o.Sets(),
            "[2026-03-02 07:00:00][a][b][c]\n"
            "[2026-02-01 00:00:01][<i>][ ][ ]\n"
            "[ ][ ][ ][ ]\n");
}

TEST(AnalyzerPage, ReportsWhatCannotBeRead) {
  Analyzer oSets(Running, "\"fails\": [\"Analyzer.ProtocolSets\"]");
  EXPECT_EQ(oSets.Lines(), "box Error [exclamation ok]: -24988 SQL error -> ok\npage DBAnalyzer\n");
  EXPECT_EQ(oSets.Sets(), "");
  EXPECT_EQ(oSets.Text("txtProcessID"), "4711");

  Analyzer oState(Running, "\"raises\": [\"Analyzer.State\"]");
  EXPECT_EQ(oState.Lines(), "box Error [exclamation ok]: -24988 SQL error -> ok\npage DBAnalyzer\n");
  EXPECT_EQ(oState.Items(), "(Start) (Stop) Delete Protocols");
  oState.Answer("ok date=2026-03-01");
  oState.Item(Delete);
  EXPECT_EQ(oState.Lines(),
            "begin\ndialog frmDBAnalyzerDelete -> ok\ncall Analyzer.DeleteProtocols(\"20260301\")\n"
            "box Error [exclamation ok]: -24988 SQL error -> ok\ncomplete\n");
}

TEST(AnalyzerPage, StartsTheAnalyzerWithTheOptionsEntered) {
  Analyzer o("{\"State\": 2}");
  o.Lines();
  o.Answer("ok config=  my dir/a b.cfg  number=1a2 interval=-6 0 delete=yes reconnect=yes");
  o.Item(Start);
  EXPECT_EQ(o.Lines(),
            "begin\ndialog frmDBAnalyzerStart -> ok\n"
            "call Analyzer.Start(\"my dir/a b.cfg\", 12, 60, true, true)\ncomplete\n");
  EXPECT_EQ(o.StateRows(), "rowStarted");
  EXPECT_EQ(o.Items(), "(Start) Stop Delete Protocols");

  Analyzer oDefaults("{\"State\": 2}");
  oDefaults.Lines();
  oDefaults.Answer("ok");
  oDefaults.Item(Start);
  EXPECT_EQ(oDefaults.Lines(),
            "begin\ndialog frmDBAnalyzerStart -> ok\ncall Analyzer.Start(\"\", 0, 0, false, false)\ncomplete\n");
}

TEST(AnalyzerPage, CallsNothingWhenADialogIsCancelled) {
  Analyzer o("{\"State\": 2}");
  o.Lines();
  o.Item(Start);
  o.Item(Delete);
  EXPECT_EQ(o.Lines(),
            "begin\ndialog frmDBAnalyzerStart -> cancel\ncomplete\n"
            "begin\ndialog frmDBAnalyzerDelete -> cancel\ncomplete\n");
  EXPECT_EQ(o.Items(), "Start (Stop) Delete Protocols");
}

TEST(AnalyzerPage, DisablesItsItemsAndShowsTheWaitCursorMeanwhile) {
  Analyzer o("{\"State\": 2}");
  std::string sSeen;
  const auto Look = [&](const std::string& sWhere) {
    sSeen +=
        sWhere + ": pointer " + std::to_string(o.Platform.ScreenPointer().MousePointer()) + ", " + o.Items() + "\n";
  };
  o.OnAsked = Look;
  o.OnCall = Look;
  o.Answer("ok");
  o.Item(Start);
  Look("end");
  EXPECT_EQ(sSeen,
            "frmDBAnalyzerStart: pointer 0, (Start) (Stop) (Delete Protocols)\n"
            "Analyzer.Start: pointer 11, (Start) (Stop) (Delete Protocols)\n"
            "end: pointer 0, (Start) Stop Delete Protocols\n");
}

TEST(AnalyzerPage, ShowsAFailureAndKeepsWhatItShowed) {
  Analyzer o(Running, "\"fails\": [\"Analyzer.Stop\"]");
  o.Lines();
  o.Item(Stop);
  EXPECT_EQ(o.Lines(), "begin\ncall Analyzer.Stop()\nbox Error [exclamation ok]: -24988 SQL error -> ok\ncomplete\n");
  EXPECT_EQ(o.StateRows(), "rowStarted rowError");
  EXPECT_EQ(o.Items(), "(Start) Stop Delete Protocols");

  Analyzer oRaising("{\"State\": 2}", "\"raises\": [\"Analyzer.Start\"]");
  oRaising.Lines();
  oRaising.Answer("ok");
  oRaising.Item(Start);
  EXPECT_EQ(oRaising.Lines(),
            "begin\ndialog frmDBAnalyzerStart -> ok\ncall Analyzer.Start(\"\", 0, 0, false, false)\n"
            "box Error [exclamation ok]: -24988 SQL error -> ok\ncomplete\n");
  EXPECT_EQ(oRaising.Items(), "Start (Stop) Delete Protocols");
}

TEST(AnalyzerPage, DeletesProtocolSetsUpToADay) {
  Analyzer o(
      "{\"State\": 1, \"ProtocolSets\": [{\"Date\": \"2026-03-02T07:00:00\", \"Texts\": [\"new\"]}, {\"Date\": "
      "\"2026-03-01T23:59:59\", \"Texts\": [\"old\"]}, {\"Date\": \"2026-02-01T00:00:00\", \"Texts\": [\"older\"]}]}");
  o.Lines();
  o.Answer("ok date=2026-03-01");
  o.Item(Delete);
  EXPECT_EQ(o.Lines(),
            "begin\ndialog frmDBAnalyzerDelete -> ok\ncall Analyzer.DeleteProtocols(\"20260301\")\ncomplete\n");
  EXPECT_EQ(o.Sets(), "[2026-03-02 07:00:00][new][ ][ ]\n");
}

TEST(AnalyzerPage, OffersNothingToDoWithoutAnAnalyzer) {
  Analyzer o("null");
  o.Lines();
  o.Answer("ok");
  o.Item(Delete);
  EXPECT_EQ(o.Lines(), "begin\nbox Error [exclamation ok]: The database analyzer is unknown -> ok\ncomplete\n");
  EXPECT_EQ(o.Items(), "(Start) (Stop) Delete Protocols");
}

TEST(AnalyzerPage, WorksWithoutACommandListAndAfterItIsGone) {
  Analyzer o("{\"State\": 1}");
  const auto oPage = o.Browser.PageDBAnalyzer();
  oPage->Commandlist(nullptr);
  o.Lines();
  oPage->Command(Stop);
  EXPECT_EQ(o.Lines(), "begin\ncall Analyzer.Stop()\ncomplete\n");
  EXPECT_EQ(o.StateRows(), "rowStopped");

  o.Browser.CleanUp();
  oPage->Command(Start);
  EXPECT_EQ(o.Lines(), "");

  // Cleaned up while it asks.
  Analyzer oAsking("{\"State\": 2}");
  oAsking.Lines();
  oAsking.OnAsked = [&](const std::string&) { oAsking.Browser.CleanUp(); };
  oAsking.Item(Start);
  EXPECT_EQ(oAsking.Lines(), "begin\ndialog frmDBAnalyzerStart -> cancel\n");
}

TEST(AnalyzerPage, ClosesToTheDefaultPage) {
  Analyzer o("null");
  o.Lines();
  o.Key(27);
  EXPECT_EQ(o.Lines(), "page Default\n");
  EXPECT_EQ(o.Items(), "");
}

}  // namespace
}  // namespace ZELWbr3::Testing
