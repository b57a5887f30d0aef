// zelview: a window with the pages of an instance.

#include "host/CommandLine.h"
#include "host/HostPages.h"
#include "host/OpenInstance.h"
#include "host/OpenWindow.h"
#include "host/OutputFiles.h"
#include "host/ZelviewFrame.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <vector>

#include <wx/app.h>
#include <wx/image.h>
#include <wx/log.h>
#include <wx/timer.h>

namespace {

using namespace ZELWbr3::Host;

struct Arguments {
  std::string Instance;
  std::vector<std::string> Others;
  std::string Page;
  std::optional<int> Unit;
  std::string Screenshot;
  std::string Record;

  /// Nothing is asked for: the user wants to choose.
  bool IsPlain() const { return (Instance + Page + Screenshot + Record).empty(); }
};

bool IsPage(const std::string& sName) {
  return std::ranges::any_of(HostPages::All(), [&](const auto& oEntry) { return oEntry.Name == sName; });
}

class Zelview : public wxApp {
 public:
  explicit Zelview(Arguments oArguments) : m_oArguments(std::move(oArguments)) {}

  /// Fails without a display, about which the toolkit would try to show a box.
  bool Initialize(int& argc, wxChar** argv) override {
    const wxLogNull oQuiet;
    if (wxApp::Initialize(argc, argv)) return true;
    const char* pDisplay = std::getenv("DISPLAY");
    Complain("the display \"" + std::string(pDisplay == nullptr ? "" : pDisplay) + "\" cannot be opened");
    return false;
  }

  bool OnInit() override {
    // What the toolkit has to say belongs on standard error, not into a box.
    wxLog::SetActiveTarget(new wxLogStderr);
    wxImage::AddHandler(new wxPNGHandler);
    try {
      const Settings oSettings = Settings::Load();
      m_bStartPage = m_oArguments.IsPlain() && !oSettings.Recent.empty();
      m_sInstance = m_oArguments.Instance.empty() && !m_bStartPage ? SampleInstance() : m_oArguments.Instance;
      if (!m_bStartPage)
        CheckOutputFiles(m_sInstance, {{"--screenshot", m_oArguments.Screenshot}, {"--record", m_oArguments.Record}});
      m_oFrame = new ZelviewFrame;
      m_oFrame->Remember(oSettings, m_oArguments.Screenshot.empty());
      if (m_oArguments.Page.empty()) m_oArguments.Page = IsPage(oSettings.Page) ? oSettings.Page : "Main";
      m_oFrame->PreferredUnit(m_oArguments.Unit.value_or(oSettings.Unit));
      m_oFrame->Show();
    } catch (const std::exception& oError) {
      m_iResult = Complain(oError.what());
      return false;
    }
    if (!m_oArguments.Screenshot.empty()) Watch();
    if (m_bStartPage) {
      m_oFrame->ShowStart();
    } else {
      m_oFrame->CallAfter([this] { Start(); });
    }
    for (const std::string& sOther : m_oArguments.Others) {
      if (!OpenWindow(sOther)) Complain("\"" + ShownInstance(sOther) + "\" cannot be opened in a window");
    }
    return true;
  }

  int OnRun() override {
    wxApp::OnRun();
    return m_iResult;
  }

 private:
  void Start() {
    const wxWeakRef<ZelviewFrame> oFrame(m_oFrame);
    try {
      m_oFrame->Open(m_sInstance);
      if (!m_oArguments.Record.empty()) {
        for (const std::string& sNote : m_oFrame->Record(m_oArguments.Record)) Complain(sNote);
      }
      m_oFrame->ShowFirst(m_oArguments.Page);
      if (!m_oArguments.Screenshot.empty()) m_oFrame->AfterPaint([this] { m_oPicture.StartOnce(Settling); });
    } catch (const ZELWbr3::ClosingError&) {
      // The window closes by itself.
    } catch (const std::exception& oError) {
      if (!oFrame || oFrame->IsBeingDeleted()) return;
      m_iResult = Complain(oError.what());
      oFrame->Close(true);
    }
  }

  /// Takes the picture when the page is there; gives up when it never is, for
  /// example because of an error display that is not answered.
  void Watch() {
    const auto Save = [this] {
      const wxLogNull oQuiet;  // the exception says it
      try {
        m_oFrame->SaveScreenshot(m_oArguments.Screenshot);
      } catch (const std::exception& oError) {
        m_iResult = Complain(oError.what());
      }
    };
    m_oPicture.Bind(wxEVT_TIMER, [this, Save](wxTimerEvent&) {
      Save();
      m_oFrame->Close(true);
    });
    m_oDeadline.Bind(wxEVT_TIMER, [Save](wxTimerEvent&) {
      Save();
      std::_Exit(Complain("the page was not shown in time; the picture shows the window as it is"));
    });
    m_oDeadline.StartOnce(GivingUp);
  }

  /// The page has been painted, the toolkit's own widgets follow within a frame
  /// or two.
  static constexpr int Settling = 200;  // milliseconds
  static constexpr int GivingUp = 30000;

  Arguments m_oArguments;
  std::string m_sInstance;
  bool m_bStartPage = false;
  ZelviewFrame* m_oFrame = nullptr;
  wxTimer m_oPicture;
  wxTimer m_oDeadline;
  int m_iResult = 0;
};

}  // namespace

int main(int argc, char** argv) {
  Arguments oArguments;
  std::vector<std::string> instances;
  CommandLine oApp("zelview", "Shows the pages of a database instance in a window.");
  oApp.add_option("INSTANCE", instances,
                  "recorded:FILE, sqlite:FILE, a file of either kind, or postgresql://…; the sample database by "
                  "default. Several are shown in a window each");
  oApp.add_option("--page", oArguments.Page, "The page to show; the last one by default, at first Main");
  oApp.add_option("--unit", oArguments.Unit,
                  "Sizes in: 0 KB, 1 MB, 2 GB, 3 pages, 4 automatic, -1 bytes; as the last time by default, at first 4")
      ->check(CLI::Range(-1, 4));
  oApp.add_option("--screenshot", oArguments.Screenshot, "Write a picture of the window (PNG) and end");
  oApp.add_option("--record", oArguments.Record, "File to write a recording of the instance to");
  return oApp.Run(argc, argv, [&] {
    if (!oArguments.Page.empty()) HostPages::Find(oArguments.Page);
    if (instances.size() > 1 && !(oArguments.Screenshot + oArguments.Record).empty()) {
      throw std::invalid_argument("--screenshot and --record are for one INSTANCE");
    }
    if (!instances.empty()) {
      oArguments.Instance = instances.front();
      oArguments.Others.assign(instances.begin() + 1, instances.end());
    }
    // An assertion of the toolkit is a line for a developer, not a box that waits
    // for the user.
    wxSetAssertHandler([](const wxString& sFile, int iLine, const wxString&, const wxString& sCondition,
                          const wxString&) { Complain((sFile + ':' << iLine << ": " << sCondition).utf8_string()); });
    wxApp::SetInstance(new Zelview(std::move(oArguments)));
    int iNone = 1;
    return wxEntry(iNone, argv) == 0 ? 0 : 1;
  });
}
