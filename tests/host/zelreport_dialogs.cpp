// zelreport: dialogs answered by steps, and what the events file says of them.

#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {
namespace {

using JSON = nlohmann::json;

/// One run of zelreport on a recording of tests/recordings.
struct ReportRun {
  ReportRun(const std::string& sRecording, const std::string& sPage, const std::vector<std::string>& steps) {
    const TempFolder oFolder;
    std::string sCommand = std::string("timeout 60 ") + ZELREPORT + " recorded:" + ZELWBR3_SOURCE_DIR +
                           "/tests/recordings/" + sRecording + ".json --page " + sPage + " --out " +
                           oFolder.Path("out") + " --events " + oFolder.Path("events");
    for (const auto& sStep : steps) sCommand += " --do '" + sStep + "'";
    Status = std::system((sCommand + " 2> " + oFolder.Path("errors")).c_str());
    Errors = oFolder.Read("errors");
    std::istringstream oLines(oFolder.Read("events"));
    for (std::string sLine; std::getline(oLines, sLine);) Events.push_back(JSON::parse(sLine));
  }

  /// The events of some kinds, in order.
  std::vector<JSON> Of(const std::vector<std::string>& kinds) const {
    std::vector<JSON> found;
    for (const auto& oEvent : Events) {
      if (std::ranges::find(kinds, oEvent["event"].get<std::string>()) != kinds.end()) found.push_back(oEvent);
    }
    return found;
  }

  int Status;
  std::string Errors;
  std::vector<JSON> Events;
};

TEST(ZelreportDialogs, StandInTheEventsWithTheirFullText) {
  const ReportRun o("old-7.1", "Main", {"answer quick", "item 2"});
  EXPECT_EQ(o.Status, 0) << o.Errors;
  EXPECT_EQ(o.Of({"Dialog", "Instance"}),
            (std::vector<JSON>{
                {{"event", "Dialog"},
                 {"name", "frmShutdown"},
                 {"text",
                  "Are you sure you want to shut down the database instance 'OLD'?\n\nTo wait until all running "
                  "transactions are finished choose 'OK'. \nTo break off all running transactions choose 'Quick'."},
                 {"answer", "quick"}},
                {{"event", "Instance"}, {"call", "ShutdownQuick"}, {"arguments", JSON::array()}},
            }));
}

TEST(ZelreportDialogs, AreAnsweredInTheOrderOfTheSteps) {
  const ReportRun o("demo", "DBAnalyzer",
                    {"item 3", "answer ok config=my file.cfg number=1a2 delete=yes", "answer ok date=2026-03-01",
                     "item 2", "item 5"});
  EXPECT_EQ(o.Status, 0) << o.Errors;
  EXPECT_EQ(o.Of({"Instance"}),
            (std::vector<JSON>{
                {{"event", "Instance"}, {"call", "Analyzer.Stop"}, {"arguments", JSON::array()}},
                {{"event", "Instance"}, {"call", "Analyzer.Start"}, {"arguments", {"my file.cfg", 12, 0, true, false}}},
                {{"event", "Instance"}, {"call", "Analyzer.DeleteProtocols"}, {"arguments", {"20260301"}}},
            }));
  // The last step leaves the list as it was, although it disables it meanwhile.
  EXPECT_EQ(o.Of({"Commandlist"}).size(), 4U);
}

TEST(ZelreportDialogs, ThatCannotBeConfirmedAreAnError) {
  const ReportRun o("new-7.6", "Main", {"item 3", "answer ok date=2026-02-30 time=01:02:03", "item 6"});
  EXPECT_NE(o.Status, 0);
  EXPECT_NE(o.Errors.find("the dialog frmOnlineUntil cannot be confirmed: There is no 2026-02-30 01:02:03."),
            std::string::npos)
      << o.Errors;
  EXPECT_EQ(o.Of({"Dialog"}).at(0)["answer"], "cancel");
}

TEST(ZelreportDialogs, AnswersThatMakeNoSenseAreRefusedBeforeAnythingIsShown) {
  for (const std::string sStep : {"answer ok colour=red", "answer maybe", "answer quick number=1"}) {
    const ReportRun o("demo", "Main", {sStep});
    EXPECT_NE(o.Status, 0) << sStep;
    EXPECT_NE(o.Errors.find("\"" + sStep + "\""), std::string::npos) << o.Errors;
    EXPECT_TRUE(o.Events.empty()) << sStep;
  }
}

}  // namespace
}  // namespace ZELWbr3::Testing
