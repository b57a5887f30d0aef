#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <wx/dialog.h>
#include <wx/frame.h>
#include <wx/modalhook.h>

namespace ZELWbr3::Desktop {

/// What a browser reports, in order, and what a test does within a report.
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
  void WaitFor(const std::string& sWhat, const std::function<bool()>& oCondition);
  /// Shows a document in the browser and waits for it.
  void Show(DesktopWebBrowser& oBrowser, RecordedEvents& oEvents, const std::string& sURL);
  /// Writes a page file with this body and answers its path.
  std::string PageFile(const std::string& sName, const std::string& sBody, const std::string& sHead = "");
  /// Waits until all changes are made, and compares the browser's document
  /// with the replica, numbers included.
  void ExpectLiveEqualsReplica(DesktopWebBrowser& oBrowser);
  /// A script's result in the agent's world.
  std::string Ask(DesktopWebBrowser& oBrowser, const std::string& sScript);
  static Element& ByID(const DesktopWebBrowser& oBrowser, const std::string& sID);

  /// Real input: a click in the middle of an element, by its id or a selector,
  /// and a key by its name.
  void ClickOn(DesktopWebBrowser& oBrowser, const std::string& sElement, int iButton = 1);
  void Press(const std::string& sKey);
  /// The same on a control of the window or of a dialog, without waiting for the
  /// effect, which may be the end of the dialog.
  static void ClickOn(const wxWindow& oControl);
  /// The command for a click there; the button's number follows.
  static std::string ClickAt(const wxPoint& oPlace);
  /// What a window manager does with a new window; there is none here.
  void ActivateFrame();
  /// Runs a command of the shell and handles what arrives until it has ended.
  static void Do(const std::string& sCommand);
  /// The same, without waiting for its end. It begins when messages are handled
  /// next, so the dialog to be opened is there and the one before it is not.
  static void Begin(const std::string& sCommand);
  /// A command that waits for a window, gives it the keyboard and does
  /// something there.
  static std::string InWindow(std::string sTitle, const std::string& sAction);
  /// Does something in the next dialog as soon as it is there, and perhaps
  /// before; a failure ends the dialog.
  void InDialog(std::function<void(wxDialog&)> oSteps, std::function<void(wxDialog&)> oBefore = {});
  /// Presses keys in the next window with this title, in order.
  static void PressIn(const std::string& sTitle, const std::string& sKeys);
  /// The modal dialog that is open, or null; with a title, one that has it.
  static wxDialog* OpenDialog(const std::string& sTitle = "");
  static std::string Clipboard();

  wxFrame* Frame;
  std::unique_ptr<DesktopPlatform> Platform;
  std::vector<std::string> Traces;
  Testing::TempFolder TempFolder;
  std::filesystem::path Folder = TempFolder.Path();

 private:
  /// Runs what is to be done in a dialog within that dialog's own loop.
  struct DialogHook : wxModalDialogHook {
    DialogHook() { Register(); }
    ~DialogHook() override { Unregister(); }
    int Enter(wxDialog* oDialog) override;

    std::function<void(wxDialog&)> oSteps;
    std::function<void(wxDialog&)> oBefore;
  };

  DialogHook m_oDialogHook;
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

  ZELWbr3::Browser& Control() { return Panel->Browser(); }
  /// The browser in front.
  DesktopWebBrowser& Front() const;
  /// An element's text in the page in front.
  std::string Text(const std::string& sID) const { return ByID(Front(), sID).innerText(); }
  static std::shared_ptr<ZELLib3::Database> Recording(const std::string& sName);

  BrowserPanel* Panel;
};

/// Web processes that this process has started and that are alive.
std::vector<int> WebProcesses();

}  // namespace ZELWbr3::Desktop
