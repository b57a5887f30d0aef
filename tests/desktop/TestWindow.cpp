#include "tests/desktop/TestWindow.h"

#include "tests/support/LiveDocument.h"

#include "zelwbr3/instances/recorded/OpenRecording.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <future>
#include <sstream>

#include <unistd.h>
#include <wx/app.h>
#include <wx/clipbrd.h>
#include <wx/evtloop.h>
#include <wx/timer.h>
#include <wx/utils.h>

namespace ZELWbr3::Desktop {

namespace {}  // namespace

TestWindow::TestWindow() {
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
}

void TestWindow::WaitFor(const std::string& sWhat, const std::function<bool()>& oCondition) {
  bool bLate = false;
  wxTimer oDeadline;
  oDeadline.Bind(wxEVT_TIMER, [&](wxTimerEvent&) { bLate = true; });
  oDeadline.StartOnce(20'000);
  // Not with the platform's pump: a test's waiting must not count as the control's.
  while (!oCondition() && !bLate) wxEventLoopBase::GetActive()->Dispatch();
  if (!bLate) return;
  std::string sTraces;
  for (const std::string& sTrace : Traces) sTraces += "\n" + sTrace;
  throw std::runtime_error("Waited in vain for " + sWhat + "; traces:" + sTraces);
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

Element& TestWindow::ByID(const DesktopWebBrowser& oBrowser, const std::string& sID) {
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
  const std::string sReplica = Testing::LinesOf(*oBrowser.Document()->documentElement());
  const std::string sShown = Testing::LinesOf(sLive);
  if (sShown == sReplica) return;
  const auto iPlace = std::ranges::mismatch(sShown, sReplica).in1 - sShown.begin();
  const auto iFrom = static_cast<std::size_t>(std::max<std::ptrdiff_t>(iPlace - 200, 0));
  ADD_FAILURE() << "The browser shows\n"
                << sShown.substr(iFrom, 400) << "\nthe replica has\n"
                << sReplica.substr(iFrom, 400);
}

void TestWindow::ClickOn(DesktopWebBrowser& oBrowser, const std::string& sElement, int iButton) {
  // Laid out for the size that it has on the screen by now.
  const std::string sWidth = std::to_string(Frame->GetClientSize().x);
  for (int i = 0; i < 1000 && Ask(oBrowser, "innerWidth") != sWidth; ++i) {
  }
  const std::string sPlace =
      Ask(oBrowser,
          "(s => { const r = (document.getElementById(s) ?? document.querySelector(s)).getBoundingClientRect();"
          "return Math.round(r.x + r.width / 2) + ' ' + Math.round(r.y + r.height / 2); })('" +
              sElement + "')");
  wxPoint oPlace;
  std::istringstream(sPlace) >> oPlace.x >> oPlace.y;
  Do(ClickAt(Frame->ClientToScreen(oPlace)) + " " + std::to_string(iButton));
}

std::string TestWindow::ClickAt(const wxPoint& oPlace) {
  return "xdotool mousemove " + std::to_string(oPlace.x) + " " + std::to_string(oPlace.y) + " click";
}

void TestWindow::ClickOn(const wxWindow& oControl) {
  const wxRect oPlace = oControl.GetScreenRect();
  Begin(ClickAt(oPlace.GetPosition() + oPlace.GetSize() / 2) + " 1");
}

namespace {

int iBegun = 0;
std::atomic<int> iEnded = 0;

/// Runs commands of the shell one after the other: a key that is still being
/// released would mix with the next one. Not with the toolkit's own way to run
/// one: its wait hangs now and then when a handler pumps messages.
void RunNext(const std::string& sCommand) {
  static std::shared_future<void> oLast;
  ++iBegun;
  oLast = std::async(std::launch::async, [sCommand, oBefore = oLast] {
            if (oBefore.valid()) oBefore.wait();
            EXPECT_EQ(std::system(sCommand.c_str()), 0) << sCommand;
            ++iEnded;
            wxWakeUpIdle();
          }).share();
}

}  // namespace

void TestWindow::Do(const std::string& sCommand) {
  RunNext(sCommand);
  for (const int iOwn = iBegun; iEnded < iOwn;) wxEventLoopBase::GetActive()->Dispatch();
}

void TestWindow::Begin(const std::string& sCommand) {
  wxTheApp->CallAfter([sCommand] { RunNext(sCommand); });
}

void TestWindow::Press(const std::string& sKey) { Do("xdotool key " + sKey); }

std::string TestWindow::InWindow(std::string sTitle, const std::string& sAction) {
  std::ranges::replace(sTitle, ' ', '.');  // a pattern of one word
  // Repeated, because a search fails when some window is destroyed during it.
  return "timeout 20 sh -c \"until xdotool search --sync --onlyvisible --name '^" + sTitle + "$' windowfocus --sync " +
         sAction + " 2>/dev/null; do :; done\"";
}

void TestWindow::PressIn(const std::string& sTitle, const std::string& sKeys) {
  Begin(InWindow(sTitle, "key --window 0 --delay 30 " + sKeys));
}

void TestWindow::InDialog(std::function<void(wxDialog&)> oSteps, std::function<void(wxDialog&)> oBefore) {
  m_oDialogHook.oBefore = std::move(oBefore);
  m_oDialogHook.oSteps = {};
  if (!oSteps) return;
  m_oDialogHook.oSteps = [this, oSteps = std::move(oSteps)](wxDialog& oDialog) {
    try {
      WaitFor("the dialog", [&] { return oDialog.IsShownOnScreen(); });
      Do(InWindow(oDialog.GetTitle().utf8_string(), ""));
      oSteps(oDialog);
    } catch (const std::exception& oError) {
      ADD_FAILURE() << oError.what();
      oDialog.EndModal(wxID_CANCEL);
    }
  };
}

int TestWindow::DialogHook::Enter(wxDialog* oDialog) {
  if (oBefore) std::exchange(oBefore, {})(*oDialog);
  if (oSteps) oDialog->CallAfter([oSteps = std::exchange(oSteps, {}), oDialog] { oSteps(*oDialog); });
  return wxID_NONE;
}

wxDialog* TestWindow::OpenDialog(const std::string& sTitle) {
  for (wxWindow* oEach : wxTopLevelWindows) {
    auto* oDialog = dynamic_cast<wxDialog*>(oEach);
    const bool bOpen = oDialog != nullptr && oDialog->IsModal() && oDialog->IsShownOnScreen();
    if (bOpen && (sTitle.empty() || oDialog->GetTitle() == wxString(sTitle))) return oDialog;
  }
  return nullptr;
}

std::string TestWindow::Clipboard() {
  wxTextDataObject oText;
  if (!wxTheClipboard->Open()) return "";
  wxTheClipboard->GetData(oText);
  wxTheClipboard->Close();
  return oText.GetText().utf8_string();
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

std::shared_ptr<ZELLib3::Database> TestPanel::Recording(const std::string& sName) {
  return Recorded::OpenRecording(ZELWBR3_SOURCE_DIR "/tests/recordings/" + sName + ".json");
}

DesktopWebBrowser& TestPanel::Front() const {
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
