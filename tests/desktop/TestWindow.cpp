#include "tests/desktop/TestWindow.h"

#include <atomic>
#include <condition_variable>
#include <cstdlib>
#include <deque>
#include <fstream>
#include <mutex>
#include <sstream>
#include <thread>

#include <unistd.h>
#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/timer.h>
#include <wx/utils.h>

namespace ZELWbr3::Desktop {

namespace {

/// Whether a style ends with a semicolon is not part of it.
std::string Attribute(const std::string& sName, std::string sValue) {
  if (sName == "style" && sValue.ends_with(';')) sValue.pop_back();
  return "@" + sName + "=" + sValue + "\n";
}

/// One line for each element, attribute and text.
void Describe(const Element& oElement, std::string& sOut) {
  sOut += "<" + oElement.tagName() + " " + std::to_string(oElement.Number()) + "\n";
  for (const auto& [sName, sValue] : oElement.attributes()) sOut += Attribute(sName, sValue);
  if (!oElement.text().empty()) sOut += "\"" + oElement.text() + "\n";
  for (const Element* o = oElement.firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    Describe(*o, sOut);
    if (!o->tail().empty()) sOut += "\"" + o->tail() + "\n";
  }
  sOut += ">\n";
}

std::string DescribeLive(const std::string& sList) {
  FlatListReader oList(sList);
  std::string sOut;
  bool bText = false;  // neighbouring texts are one to the replica
  while (!oList.AtEnd()) {
    const auto eItem = oList.Number();
    if (bText && eItem != 3) sOut += "\n";
    if (eItem == 1) {
      const std::string sTag = oList.Text();
      sOut += "<" + sTag + " " + std::to_string(oList.Number()) + "\n";
    } else if (eItem == 2) {
      const std::string sName = oList.Text();
      sOut += Attribute(sName, oList.Text());
    } else if (eItem == 3) {
      sOut += (bText ? "" : "\"") + oList.Text();
    } else {
      sOut += ">\n";
    }
    bText = eItem == 3;
  }
  return sOut;
}

}  // namespace

TestWindow::TestWindow() {
  std::string sTemplate = (std::filesystem::temp_directory_path() / "zelwbr3-desktop-XXXXXX").string();
  Folder = mkdtemp(sTemplate.data());
  // Its own title: the window of the test before may still be going.
  static int iWindows = 0;
  Frame = new wxFrame(nullptr, wxID_ANY, "Test " + std::to_string(++iWindows), wxPoint(0, 0), wxSize(800, 600));
  Frame->Show();
  Platform = std::make_unique<DesktopPlatform>(*Frame);
  Platform->Trace([this](const std::string& sText) { Traces.push_back(sText); });
}

TestWindow::~TestWindow() {
  Platform.reset();
  Frame->Destroy();
  wxTheApp->ProcessPendingEvents();
  std::filesystem::remove_all(Folder);
}

void TestWindow::WaitFor(const char* sWhat, const std::function<bool()>& oCondition) {
  bool bLate = false;
  wxTimer oDeadline;
  oDeadline.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { bLate = true; });
  oDeadline.StartOnce(20'000);
  // Not with the platform's pump: a test's waiting must not count as the control's.
  while (!oCondition() && !bLate) wxEventLoopBase::GetActive()->Dispatch();
  if (!bLate) return;
  std::string sTraces;
  for (const std::string& sTrace : Traces) sTraces += "\n" + sTrace;
  throw std::runtime_error(std::string("Waited in vain for ") + sWhat + "; traces:" + sTraces);
}

void TestWindow::Show(DesktopWebBrowser& oBrowser, RecordedEvents& oEvents, const std::string& sURL) {
  const int iDocuments = oEvents.Documents;
  oBrowser.Navigate(sURL, NavigateFlags::Fresh);
  WaitFor("a document", [&] { return oEvents.Documents > iDocuments && oBrowser.Settled(); });
}

std::string TestWindow::PageFile(const std::string& sName, const std::string& sBody, const std::string& sHead) {
  const std::filesystem::path oPath = Folder / sName;
  std::filesystem::create_directories(oPath.parent_path());
  std::ofstream(oPath) << "<!DOCTYPE html><html lang=\"en\"><head><meta charset=\"utf-8\"><title>Test</title>" << sHead
                       << "</head><body id=\"body\">" << sBody << "</body></html>";
  return oPath.string();
}

std::string TestWindow::Ask(DesktopWebBrowser& oBrowser, const std::string& sScript) {
  std::optional<WebView::Outcome> oOutcome;
  oBrowser.View()->Run(sScript, [&](const WebView::Outcome& o) { oOutcome = o; });
  WaitFor("an answer of the page", [&] { return oOutcome.has_value(); });
  if (!oOutcome->Error.empty()) throw std::runtime_error(sScript + ": " + oOutcome->Error);
  return oOutcome->Result;
}

Element& TestWindow::ByID(DesktopWebBrowser& oBrowser, const std::string& sID) {
  Element* oElement = oBrowser.Document()->all().item(sID);
  if (oElement == nullptr) throw std::runtime_error("No element " + sID);
  return *oElement;
}

void TestWindow::ExpectLiveEqualsReplica(DesktopWebBrowser& oBrowser) {
  oBrowser.Flush();
  WaitFor("the changes", [&] { return oBrowser.Settled(); });
  std::string sLive;
  oBrowser.LiveDocument([&](const std::string& sList) { sLive = sList; });
  WaitFor("the live document", [&] { return !sLive.empty(); });
  std::string sReplica;
  Describe(*oBrowser.Document()->documentElement(), sReplica);
  const std::string sShown = DescribeLive(sLive);
  if (sShown == sReplica) return;
  const auto [a, b] = std::ranges::mismatch(sShown, sReplica);
  const auto iPlace = static_cast<std::size_t>(a - sShown.begin());
  const auto iFrom = iPlace > 200 ? iPlace - 200 : 0;
  ADD_FAILURE() << "The browser's document differs from the replica at byte " << iPlace << "; browser:\n"
                << sShown.substr(iFrom, 400) << "\nreplica:\n"
                << sReplica.substr(iFrom, 400);
}

void TestWindow::ClickOn(DesktopWebBrowser& oBrowser, const std::string& sID, int iButton) {
  // Laid out for the size that it has on the screen by now.
  const std::string sWidth = std::to_string(Frame->GetClientSize().x);
  for (int i = 0; i < 1000 && Ask(oBrowser, "innerWidth") != sWidth; ++i) {
  }
  const std::string sPlace =
      Ask(oBrowser, "(() => { const r = document.getElementById('" + sID +
                        "').getBoundingClientRect();"
                        "return Math.round(r.x + r.width / 2) + ' ' + Math.round(r.y + r.height / 2); })()");
  int x = 0;
  int y = 0;
  std::istringstream(sPlace) >> x >> y;
  const wxPoint oOrigin = Frame->ClientToScreen(wxPoint(0, 0));
  Do("xdotool mousemove " + std::to_string(oOrigin.x + x) + " " + std::to_string(oOrigin.y + y) + " click " +
     std::to_string(iButton));
}

void TestWindow::ClickOn(const wxWindow& oControl) {
  const wxRect oPlace = oControl.GetScreenRect();
  Begin("xdotool mousemove " + std::to_string(oPlace.x + oPlace.width / 2) + " " +
        std::to_string(oPlace.y + oPlace.height / 2) + " click 1");
}

namespace {

/// Runs commands of the shell one after the other: a key that is still being
/// released would mix with the next one.
class Commands {
 public:
  static Commands& Queue() {
    static Commands oQueue;
    return oQueue;
  }
  void Add(
      const std::string& sCommand, std::function<void()> oDone = [] {}) {
    const std::lock_guard oLock(m_oMutex);
    m_oWaiting.push_back({sCommand, std::move(oDone)});
    m_oAdded.notify_one();
  }

 private:
  struct Waiting {
    std::string Command;
    std::function<void()> Done;
  };

  void Run(const std::stop_token& oStop) {
    for (std::unique_lock oLock(m_oMutex); m_oAdded.wait(oLock, oStop, [this] { return !m_oWaiting.empty(); });) {
      const Waiting oNext = std::move(m_oWaiting.front());
      m_oWaiting.pop_front();
      oLock.unlock();
      EXPECT_EQ(std::system(oNext.Command.c_str()), 0) << oNext.Command;
      oNext.Done();
      oLock.lock();
    }
  }

  std::mutex m_oMutex;
  std::condition_variable_any m_oAdded;
  std::deque<Waiting> m_oWaiting;
  std::jthread m_oThread{[this](const std::stop_token& oStop) { Run(oStop); }};
};

}  // namespace

void TestWindow::Do(const std::string& sCommand) {
  // Not the toolkit's own way to run a command: its wait hangs now and then when
  // a handler pumps messages meanwhile.
  const auto bDone = std::make_shared<std::atomic<bool>>(false);
  Commands::Queue().Add(sCommand, [bDone] {
    *bDone = true;
    wxWakeUpIdle();
  });
  while (!*bDone) wxEventLoopBase::GetActive()->Dispatch();
}

void TestWindow::Begin(const std::string& sCommand) {
  wxTheApp->CallAfter([sCommand] { Commands::Queue().Add(sCommand); });
}

void TestWindow::Press(const std::string& sKey) { Do("xdotool key " + sKey); }

std::string TestWindow::InWindow(const std::string& sTitle, const std::string& sAction) {
  // Repeated, because a search fails when some window goes meanwhile.
  return "timeout 20 sh -c \"until xdotool search --sync --onlyvisible --name '^" + sTitle + "$' windowfocus --sync " +
         sAction + " 2>/dev/null; do :; done\"";
}

void TestWindow::ActivateFrame() {
  Do(InWindow(Frame->GetTitle().utf8_string(), ""));
  WaitFor("the active window", [this] { return Frame->IsActive(); });
}

TestBrowser::TestBrowser() : Browser(std::make_unique<DesktopWebBrowser>(*Platform, Events)) { Browser->Visible(true); }

TestPanel::TestPanel() : Panel(new BrowserPanel(Frame)) {
  Frame->SendSizeEvent();
  Panel->Browser().HTMLPath(ZELWBR3_SOURCE_DIR "/html");
}

DesktopWebBrowser& TestPanel::Front() {
  for (DesktopWebBrowser* oBrowser : Panel->Platform().Browsers()) {
    if (oBrowser->IsVisible()) return *oBrowser;
  }
  throw std::runtime_error("No frame is visible");
}

std::vector<int> WebProcesses() {
  std::vector<int> oProcesses;
  for (const auto& oEntry : std::filesystem::directory_iterator("/proc")) {
    std::ifstream oStat(oEntry.path() / "stat");
    int iProcess = 0;
    std::string sName;
    char cState = 0;
    int iParent = 0;
    if (oStat >> iProcess >> sName >> cState >> iParent && iParent == getpid() && cState != 'Z' &&
        sName.starts_with("(WebKitWebPro")) {
      oProcesses.push_back(iProcess);
    }
  }
  return oProcesses;
}

}  // namespace ZELWbr3::Desktop
