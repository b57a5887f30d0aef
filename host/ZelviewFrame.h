#pragma once

#include "host/HostPages.h"
#include "host/PageList.h"
#include "host/RefreshBar.h"
#include "host/Settings.h"
#include "host/StartPage.h"
#include "host/TrailBar.h"
#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/desktop/DesktopCommandlist.h"
#include "zelwbr3/desktop/Theme.h"
#include "zelwbr3/framework/Health.h"
#include "zelwbr3/framework/clsTrace.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <wx/frame.h>

namespace ZELWbr3::Host {

/// The window of zelview: the pages at the left, the command list above, the
/// control in the middle, and a line for what the control reports.
class ZelviewFrame : public wxFrame {
 public:
  ZelviewFrame();

  /// Opens an instance, named as on the command line, in place of the one before.
  /// The window stays alive meanwhile. Throws as OpenInstance, and WaitError.
  void Open(const std::string& sInstance);
  /// Writes a recording of the instance and returns the notes; throws as
  /// WriteRecording, and WaitError.
  std::vector<std::string> Record(const std::string& sFile);
  /// Shows the instances opened lately instead of one.
  void ShowStart();
  /// Shows the main page and then another one; throws as HostPages::Show.
  void ShowFirst(const std::string& sPage);
  void PreferredUnit(Long lUnit);
  /// Begins as the user has left the program. What it is when the window closes is
  /// saved if bSave.
  void Remember(const Settings& oSettings, bool bSave);
  RefreshBar& Refreshing() { return *m_oRefreshBar; }
  StartPage& Start() { return *m_oStart; }
  /// Calls oDone when what is shown has been painted.
  void AfterPaint(std::function<void()> oDone);
  /// Writes a picture of the window as it was painted last; throws
  /// std::runtime_error that names the file.
  void SaveScreenshot(const std::string& sFile);

 private:
  void MakeMenus();
  StartPage* MakeStart();
  /// Goes back from the start page to the instance that is open.
  void LeaveStart();
  void Forget(const std::string& sInstance);
  void OpenAnotherWindow(const std::string& sInstance);
  void Theme(std::optional<Desktop::Theme> eTheme);
  /// Opens what the user has named and shows its first page.
  void OpenAndShow(const std::string& sInstance);
  void FillRecent();
  /// Takes over what other windows have opened meanwhile.
  void ReadRecent();
  void SaveSettings();
  /// A key pressed anywhere in the window.
  void OnKey(wxKeyEvent& oEvent);
  /// Gives the keyboard to the next of page list, commands and page.
  void GoRound(bool bForward);
  void Connect();
  /// Says beside each page how many findings it shows.
  void ShowCounts(const std::vector<Health::Finding>& findings);
  void OpenFile(const wxString& sTitle, const wxString& sPattern, const std::string& sKind);
  void OpenServer();
  void SaveRecording();
  void ShowMessage();
  void ShowContents();
  /// Runs something that the user asked for, once the toolkit is done with the
  /// event, and shows what it throws.
  void Later(std::function<void()> oWork);
  void Say(const std::string& sText);
  /// Says what is being done and does it in the background. It cannot be ended:
  /// a window that is closed meanwhile goes away at once and ends afterwards.
  void DoInBackground(const std::string& sText, const std::function<void()>& oWork);

  std::string m_sInstance;
  /// None for a window that remembers nothing.
  std::optional<Settings> m_oSettings;
  bool m_bSave = false;
  wxMenu* m_oRecent;
  wxPanel* m_oAll;  ///< all but the start page
  StartPage* m_oStart;
  std::unique_ptr<PageTrail> m_oTrail;
  TrailBar* m_oTrailBar;
  std::string m_sPage = "Main";
  std::shared_ptr<ZELLib3::Database> m_oDatabase;
  Desktop::BrowserPanel* m_oPanel;
  PageList* m_oPageList;
  RefreshBar* m_oRefreshBar;
  std::shared_ptr<Desktop::DesktopCommandlist> m_oCommandlist;
  std::unique_ptr<HostPages> m_oPages;
  /// Into the file that ZELWBR3_TRACE names, if it does.
  std::shared_ptr<clsTrace> m_oTrace;
  std::vector<ScopedConnection> m_connections;
};

}  // namespace ZELWbr3::Host
