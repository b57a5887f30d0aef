// zelreport: writes the pages of an instance as HTML, without a screen.

#include "host/Check.h"
#include "host/CommandLine.h"
#include "host/EventLog.h"
#include "host/HostPages.h"
#include "host/OpenInstance.h"
#include "host/OutputFiles.h"
#include "host/PDF.h"
#include "host/Report.h"
#include "host/Step.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"

#include <iostream>
#include <sstream>

namespace {

using namespace ZELWbr3::Host;

struct Arguments {
  std::string Instance;
  std::string Page = "Main";
  std::vector<std::string> Steps;
  std::string Out;
  std::string Events;
  std::string Record;
  std::string Table;
  std::string PDF;
  int Over = 0;
  bool Check = false;
  bool JSON = false;
};

void WriteOut(const std::string& sFile, const std::string& sText) {
  if (!sFile.empty()) return WriteFile(sFile, sText);
  std::cout << sText << std::flush;
  if (!std::cout) throw std::runtime_error("Standard output cannot be written");
}

int Run(const Arguments& oArguments) {
  // Check all arguments before showing anything.
  HostPages::Find(oArguments.Page);
  std::vector<Step> steps;
  for (const std::string& sStep : oArguments.Steps) steps.push_back(Step::Parse(sStep));

  CheckOutputFiles(oArguments.Instance, {{"--out", oArguments.Out},
                                         {"--events", oArguments.Events},
                                         {"--record", oArguments.Record},
                                         {"--pdf", oArguments.PDF}});

  EventLog oEvents;
  const auto oDatabase =
      OpenInstance(oArguments.Instance, [&](const ZELWbr3::Recorded::Call& oCall) { oEvents.Write(oCall); });
  oEvents.Open(oArguments.Events);
  if (!oArguments.Record.empty()) {
    for (const std::string& sNote : ZELWbr3::Recorded::WriteRecording(*oDatabase, oArguments.Record)) Complain(sNote);
  }

  Report oReport(oDatabase, oEvents);
  std::ostringstream oOut;
  try {
    oReport.Run(oArguments.Page, std::chrono::seconds(oArguments.Over), steps, oArguments.Table, oOut);
  } catch (...) {
    // Keep what the steps have printed so far.
    if (!oOut.str().empty()) WriteOut(oArguments.Out, oOut.str());
    throw;
  }
  if (!oArguments.PDF.empty()) WritePDF(oOut.str(), oArguments.PDF);
  if (oArguments.PDF.empty() || !oArguments.Out.empty()) WriteOut(oArguments.Out, oOut.str());
  oEvents.Close();

  for (const std::string& sError : oReport.Errors()) Complain("the page reported an error: " + sError);
  return oReport.Errors().empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  Arguments oArguments;
  CommandLine oApp("zelreport", "Shows a page of a database instance without a screen and writes it as HTML.");
  oApp.add_option("INSTANCE", oArguments.Instance,
                  "recorded:FILE, sqlite:FILE, a file of either kind, or postgresql://…");
  oApp.add_option("--page", oArguments.Page, "The page to show (default: Main)");
  oApp.add_option("--over", oArguments.Over,
                  "Read the page again and again for so many seconds, so that it has curves and what its counters grow "
                  "by each second")
      ->check(CLI::Range(1, 3600));
  oApp.add_option("--do", oArguments.Steps,
                  "A step to take, repeatable: click ID, key CODE, focus ID, item KEY, show NAME, answer WORD, "
                  "command N, print")
      ->allow_extra_args(false);
  oApp.add_option("--out", oArguments.Out, "File to write the HTML to (default: standard output)");
  oApp.add_option("--events", oArguments.Events, "File to write the events to, one JSON object per line");
  oApp.add_option("--record", oArguments.Record, "File to write a recording of the instance to");
  oApp.add_option("--csv", oArguments.Table, "Write the page's table of this id as CSV instead of the HTML")
      ->check(CLI::Validator([](std::string& s) { return s.empty() ? "names no table" : std::string(); }, "ID"));
  oApp.add_option("--pdf", oArguments.PDF,
                  "File to print the page to, with Chromium or Chrome; the HTML is then only written with --out")
      ->excludes("--csv");
  auto* oCheck =
      oApp.add_flag("--check", oArguments.Check,
                    "Show no page, but write one line about what needs attention, and exit with 0 (nothing), "
                    "1 (warning), 2 (critical) or 3 (unknown), as monitoring plugins do");
  oApp.add_flag("--json", oArguments.JSON, "Write what --check finds as JSON")->needs(oCheck);
  for (const char* sOther : {"--page", "--over", "--do", "--out", "--events", "--record", "--csv", "--pdf"}) {
    oCheck->excludes(oApp.get_option(sOther));
  }
  return oApp.Run(argc, argv, [&] {
    // Checked here, because the parser would report it before an unknown option.
    if (oArguments.Instance.empty()) throw std::invalid_argument("INSTANCE is required");
    return oArguments.Check ? Check(oArguments.Instance, oArguments.JSON, std::cout) : Run(oArguments);
  });
}
