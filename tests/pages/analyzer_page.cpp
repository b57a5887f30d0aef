// The database analyzer's page: what it shows in which state, and what its
// commands ask and call.

#include "tests/support/Told.h"
#include "zelwbr3/pages/analyzer/PageDBAnalyzer.h"

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
  std::string StateRows() { return ShownOf({"rowStarted", "rowStopped", "rowUnknown", "rowError"}); }
  std::string Details() {
    return Texts(
        {"txtInfo", "txtConfigFile", "txtProtDir", "txtInterval", "txtReconnect", "txtProcessID", "txtSessionID"});
  }
  std::string Sets() { return Rows("tabProtSets"); }
};

constexpr const char* Running =
    "{\"State\": 1, \"StartTime\": \"2026-03-02 07:00\", \"Info\": \"<b>12</b>\", \"ConfigFile\": \"a.cfg\", "
    "\"ProtocolDir\": \"/p\", \"Interval\": 60, \"Reconnect\": \"yes\", \"ProcessID\": \"4711\", \"SessionID\": "
    "\"39\", \"HasError\": true, \"ErrorText\": \"2 warnings\"}";

const std::string ErrorBox = "box Error [exclamation ok]: -24988 SQL error -> ok\n";
const std::string Stopped = "rowStopped: Start (Stop) Delete Protocols";

TEST(AnalyzerPage, ShowsHowTheAnalyzerRuns) {
  Analyzer o(Running);
  EXPECT_EQ(o.Lines(), "page DBAnalyzer\n");
  EXPECT_EQ(o.StateRows(), "rowStarted rowError");
  EXPECT_EQ(o.Text("txtStarted"), "2026-03-02 07:00");
  EXPECT_EQ(o.Text("txtError"), "2 warnings");
  EXPECT_EQ(o.Details(), "<b>12</b>|a.cfg|/p|60 sec.|yes|4711|39");
  EXPECT_EQ(o.Items(), "(Start) Stop Delete Protocols");
  EXPECT_FALSE(o.IsShown("divFrmWait"));
  EXPECT_TRUE(o.IsShown("divFrmCnt"));
}

TEST(AnalyzerPage, ShowsOnlyTheStateOfAnAnalyzerThatDoesNotRun) {
  const std::string sRest = ", \"Info\": \"old\", \"Interval\": 900, \"ProcessID\": \"1\"}";
  for (const auto& [sAnalyzer, sShown] : {std::pair("{\"State\": 0" + sRest, ": (Start) (Stop) Delete Protocols"),
                                          {"{\"State\": 2" + sRest, Stopped.c_str()},
                                          {"{\"State\": 7" + sRest, "rowUnknown: (Start) (Stop) Delete Protocols"},
                                          {"null", "rowUnknown: (Start) (Stop) Delete Protocols"}}) {
    SCOPED_TRACE(sAnalyzer);
    Analyzer o(sAnalyzer);
    EXPECT_EQ(o.Lines(), "page DBAnalyzer\n");
    EXPECT_EQ(o.StateRows() + ": " + o.Items(), sShown);
    EXPECT_EQ(o.Details(), "||||||");
  }
}

TEST(AnalyzerPage, ListsProtocolSetsAsTheInstanceGivesThemAndDeletesUpToADay) {
  Analyzer o(R"json({"State": 2, "ProtocolSets": [
      {"Date": "2026-03-02T07:00:00", "Texts": ["a", "b", "c", "too much"]},
      {"Date": "2026-03-01T23:59:59", "Texts": ["<i>"]}, {"Texts": []}]})json");
  EXPECT_EQ(o.Sets(),
            "2026-03-02 07:00:00|a|b|c\n"
            "2026-03-01 23:59:59|<i>|~|~\n"
            "~|~|~|~\n");
  o.Lines();
  o.Answer("ok date=2026-03-01");
  o.Item(Delete);
  EXPECT_EQ(o.Lines(),
            "begin\ndialog frmDBAnalyzerDelete -> ok\ncall Analyzer.DeleteProtocols(\"20260301\")\ncomplete\n");
  EXPECT_EQ(o.Sets(), "2026-03-02 07:00:00|a|b|c\n~|~|~|~\n");
}

TEST(AnalyzerPage, ReportsWhatCannotBeRead) {
  Analyzer oSets(Running, "\"fails\": [\"Analyzer.ProtocolSets\"]");
  EXPECT_EQ(oSets.Lines(), ErrorBox + "page DBAnalyzer\n");
  EXPECT_EQ(oSets.Sets(), "");
  EXPECT_EQ(oSets.Text("txtProcessID"), "4711");

  Analyzer oState(Running, "\"raises\": [\"Analyzer.State\"]");
  EXPECT_EQ(oState.Lines(), ErrorBox + "page DBAnalyzer\n");
  EXPECT_EQ(oState.Items(), "(Start) (Stop) Delete Protocols");
}

TEST(AnalyzerPage, CallsWhatWasEnteredAndShowsFailures) {
  struct Case {
    const char* Analyzer;
    const char* Recording;
    int Item;
    const char* Answer;
    std::string Told, Shown;
  };
  const std::string sAsked = "begin\ndialog frmDBAnalyzerStart -> ";
  const std::string sDefault = "ok\ncall Analyzer.Start(\"\", 0, 0, false, false)\n";
  const Case cases[] = {
      {"{\"State\": 2}", "", Start, "ok config=  my dir/a b.cfg  number=1a2 interval=-6 0 delete=yes reconnect=yes",
       sAsked + "ok\ncall Analyzer.Start(\"my dir/a b.cfg\", 12, 60, true, true)\ncomplete\n",
       "rowStarted: (Start) Stop Delete Protocols"},
      {"{\"State\": 2}", "\"raises\": [\"Analyzer.Start\"]", Start, "ok", sAsked + sDefault + ErrorBox + "complete\n",
       Stopped},
      {"{\"State\": 2}", "", Start, "cancel", sAsked + "cancel\ncomplete\n", Stopped},
      {"{\"State\": 2}", "", Delete, "cancel", "begin\ndialog frmDBAnalyzerDelete -> cancel\ncomplete\n", Stopped},
      {Running, "\"fails\": [\"Analyzer.Stop\"]", Stop, "ok", "begin\ncall Analyzer.Stop()\n" + ErrorBox + "complete\n",
       "rowStarted rowError: (Start) Stop Delete Protocols"},
      {"null", "", Delete, "ok",
       "begin\nbox Error [exclamation ok]: The database analyzer is unknown -> ok\ncomplete\n",
       "rowUnknown: (Start) (Stop) Delete Protocols"},
  };
  for (const Case& oCase : cases) {
    SCOPED_TRACE(oCase.Told);
    Analyzer o(oCase.Analyzer, oCase.Recording);
    o.Lines();
    if (oCase.Item != Stop) o.Answer(oCase.Answer);
    o.Item(oCase.Item);
    EXPECT_EQ(o.Lines(), oCase.Told);
    EXPECT_EQ(o.StateRows() + ": " + o.Items(), oCase.Shown);
  }
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

}  // namespace
}  // namespace ZELWbr3::Testing
