#pragma once

#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"
#include "zelwbr3/dom/Document.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <wx/frame.h>

namespace ZELWbr3::Desktop {

/// Writes down what a browser reports, and calls back for what a test does
/// within a report.
class RecordedEvents : public WebBrowserEvents {
 public:
  void BeforeNavigate(bool bTopLevel) override { Log.push_back(bTopLevel ? "before" : "before frame"); }
  void NavigateComplete() override { Log.push_back("navigated"); }
  void DocumentComplete(bool bTopLevel) override {
    Log.push_back(bTopLevel ? "complete" : "complete frame");
    if (bTopLevel) ++Documents;
    if (bTopLevel && OnDocument) OnDocument();
  }
  void Click() override {
    ++Clicks;
    if (OnClick) OnClick();
  }
  bool KeyDown() override { return OnKey && OnKey(); }
  void ProcessTerminated(const std::string& sReason) override { Log.push_back("terminated: " + sReason); }

  std::vector<std::string> Log;
  int Documents = 0;
  int Clicks = 0;
  std::function<void()> OnDocument;
  std::function<void()> OnClick;
  std::function<bool()> OnKey;
};

/// A window of the program with the platform, and a folder for page files.
class TestWindow : public testing::Test {
 protected:
  TestWindow();
  ~TestWindow() override;

  /// Pumps messages until the condition holds; a failure after 20 seconds.
  void WaitFor(const char* sWhat, const std::function<bool()>& oCondition);
  /// Shows a document in the browser and waits for it.
  void Show(DesktopWebBrowser& oBrowser, RecordedEvents& oEvents, const std::string& sURL);
  /// Writes a page file with this body and answers its path.
  std::string PageFile(const std::string& sName, const std::string& sBody, const std::string& sHead = "");
  /// Waits until all changes are made, and compares the browser's document
  /// with the replica, numbers included.
  void ExpectLiveEqualsReplica(DesktopWebBrowser& oBrowser);
  /// A script's result in the agent's world.
  std::string Ask(DesktopWebBrowser& oBrowser, const std::string& sScript);
  Element& ByID(DesktopWebBrowser& oBrowser, const std::string& sID);

  /// Real input: a click in the middle of an element, and a key by its name.
  void ClickOn(DesktopWebBrowser& oBrowser, const std::string& sID, int iButton = 1);
  void Press(const std::string& sKey);
  /// The same on a control of the window or of a dialog. Nobody waits for the
  /// effect, which may be the end of the dialog.
  static void ClickOn(const wxWindow& oControl);
  /// What a window manager does with a new window; there is none here.
  void ActivateFrame();
  /// Runs a command of the shell and handles what arrives until it has ended.
  static void Do(const std::string& sCommand);
  /// The same, without waiting for its end. It begins when messages are handled
  /// next, so the dialog to be opened is there and the one before it is not.
  static void Begin(const std::string& sCommand);
  /// A command that waits for a window, gives it the keyboard and does
  /// something there.
  static std::string InWindow(const std::string& sTitle, const std::string& sAction);

  wxFrame* Frame;
  std::unique_ptr<DesktopPlatform> Platform;
  std::vector<std::string> Traces;
  std::filesystem::path Folder;
};

/// The same with one browser that is visible.
class TestBrowser : public TestWindow {
 protected:
  TestBrowser();
  ~TestBrowser() override { Browser.reset(); }

  void Show(const std::string& sURL) { TestWindow::Show(*Browser, Events, sURL); }
  void ShowBody(const std::string& sBody, const std::string& sHead = "") { Show(PageFile("Page.htm", sBody, sHead)); }

  RecordedEvents Events;
  std::unique_ptr<DesktopWebBrowser> Browser;
};

/// The same with the control, which shows the pages shipped with it.
class TestPanel : public TestWindow {
 protected:
  TestPanel();

  /// The browser in front.
  DesktopWebBrowser& Front();

  BrowserPanel* Panel;
};

/// Web processes that this process has started and that are alive.
std::vector<int> WebProcesses();

}  // namespace ZELWbr3::Desktop
