// A report for cron: writes some pages of a database file as HTML files, and says
// on standard output what needs attention.
//
//   nightly-report FILE FOLDER

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/framework/Health.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/headless/ReportWriter.h"
#include "zelwbr3/instances/sqlite/OpenDatabase.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/shell/Pages.h"

#include <fstream>
#include <iostream>

int main(int argc, char** argv) try {
  if (argc != 3) throw std::invalid_argument("usage: nightly-report FILE FOLDER");
  const std::string sFolder = argv[2];
  const auto oDatabase = ZELWbr3::SQLite::OpenDatabase(argv[1]);

  ZELWbr3::Headless::HeadlessPlatform oPlatform;
  // Without a screen, error displays are answered at once; here they are reported.
  bool bFailed = false;
  oPlatform.MessageBox().Shown.Connect([&](const ZELWbr3::Headless::ScriptedAnswers::Box& oBox) {
    std::cerr << "nightly-report: " << oBox.Text << '\n';
    bFailed = true;
  });
  ZELWbr3::Browser oBrowser(oPlatform);
  oBrowser.HTMLPath(ZELWBR3_HTML);

  const auto Write = [&](const auto& oPage) {
    oPage->Show(oDatabase);
    std::ofstream oFile(sFolder + "/" + oPage->Name() + ".html");
    oFile << ZELWbr3::Headless::WriteReport(*oBrowser.VisibleDocument(), oBrowser.HTMLPaths());
    if (!oFile.flush()) throw std::runtime_error("The folder " + sFolder + " cannot be written to");
  };
  Write(oBrowser.PageMain());
  Write(oBrowser.PageDataArea());
  Write(oBrowser.PageParameters());

  for (const auto& oFinding : ZELWbr3::Health::Of(*oDatabase).Findings) std::cout << oFinding.Text << ".\n";
  return bFailed ? 1 : 0;
} catch (const std::exception& oError) {
  std::cerr << "nightly-report: " << oError.what() << '\n';
  return 2;
}
