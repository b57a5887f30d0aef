#include "host/PDF.h"

#include "host/OutputFiles.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/instances/common/Process.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <vector>

#include <unistd.h>

namespace ZELWbr3::Host {

namespace {

namespace fs = std::filesystem;

/// A browser has that long; it may have to start for the first time.
constexpr std::chrono::seconds kLongest{60};

std::string FindBrowser() {
  if (const char* pChosen = std::getenv("ZELWBR3_BROWSER")) return pChosen;
  const char* pPath = std::getenv("PATH");
  for (const char* sName : {"chromium", "chromium-browser", "google-chrome", "google-chrome-stable"}) {
    std::istringstream oFolders(pPath == nullptr ? "" : pPath);
    for (std::string sFolder; std::getline(oFolders, sFolder, ':');) {
      const fs::path oFile = fs::path(sFolder) / sName;
      if (!sFolder.empty() && access(oFile.c_str(), X_OK) == 0) return oFile;
    }
  }
  throw std::runtime_error("--pdf needs Chromium or Chrome, or a browser of that kind that ZELWBR3_BROWSER names");
}

}  // namespace

void WritePDF(const std::string& sHTML, const std::string& sFile) {
  const std::string sBrowser = FindBrowser();
  std::string sFolder = (fs::temp_directory_path() / "zelreport-XXXXXX").string();
  if (mkdtemp(sFolder.data()) == nullptr)
    throw std::runtime_error("No folder can be made in " + fs::temp_directory_path().string());
  Finally(
      [&] {
        const std::string sPage = sFolder + "/page.html";
        const std::string sPDF = sFolder + "/page.pdf";
        WriteFile(sPage, sHTML);
        std::vector<std::string> arguments = {sBrowser,
                                              "--headless",
                                              "--disable-gpu",
                                              "--no-pdf-header-footer",
                                              "--user-data-dir=" + sFolder + "/profile",
                                              "--print-to-pdf=" + sPDF};
        // It refuses to run for root otherwise. The page is ours, and loads nothing.
        if (geteuid() == 0) arguments.push_back("--no-sandbox");
        arguments.push_back("file://" + sPage);
        Instances::RunProgram({arguments, {}}, kLongest);
        std::string sBytes;
        try {
          sBytes = ReadFile(sPDF);
        } catch (const ReadFileError&) {
          throw std::runtime_error("The browser \"" + sBrowser + "\" has printed nothing");
        }
        WriteFile(sFile, sBytes);
      },
      [&] {
        std::error_code eIgnored;
        fs::remove_all(sFolder, eIgnored);
      });
}

}  // namespace ZELWbr3::Host
