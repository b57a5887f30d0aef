#include "host/ZelviewFrame.h"

#include "host/OpenInstance.h"
#include "host/OpenWindow.h"
#include "host/OutputFiles.h"
#include "host/ProgramFiles.h"
#include "host/Questions.h"
#include "host/ZelviewPictures.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/base/Version.h"
#include "zelwbr3/desktop/Accessible.h"
#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"
#include "zelwbr3/desktop/Picture.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/Given.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"
#include "zelwbr3/pages/main/PageMain.h"
#include "zelwbr3/platform/MessageBox.h"
#include "zelwbr3/platform/MessagePump.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <stdexcept>

#include <wx/choicdlg.h>
#include <wx/filedlg.h>
#include <wx/log.h>
#include <wx/menu.h>
#include <wx/msgdlg.h>
#include <wx/mstream.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/statline.h>

namespace ZELWbr3::Host {

namespace {

/// A text from anywhere, for a title or a line of the window.
wxString Text(const std::string& sText) {
  return wxString::FromUTF8(ZELWbr3::Text::Clean(ZELWbr3::Text::OneLine(sText)));
}

std::string UTF8(const wxString& sText) { return std::string(sText.utf8_str()); }

/// In a narrower window, the pages are listed by their icons.
constexpr int kWidthForTitles = 720;

/// The numbers of menu items for recent instances follow.
constexpr int kFirstRecent = 7000;

constexpr const char* Shortcuts =
    "F1\twhat a figure means; then the arrow keys\nF5\tread the page again\nEsc\tclose the page\nAlt+Left, "
    "Alt+Right\tback and forward\n"
    "F6, Shift+F6\tgo round page list, commands and page\nCtrl+F\tfilter a list\n"
    "Arrows, Page Up, Page Down, Home, End\tgo from row to row\nletters\tgo to the row that begins with them\n"
    "Ctrl+C\tcopy what is selected\nCtrl+P\tprint the page\nCtrl+O, Ctrl+Shift+O\topen a file or a server\n"
    "Ctrl+N\tanother window\nCtrl+S\tsave a recording\nCtrl+Q\tquit";

constexpr const char* Units[] = {"Sizes in &Kilobytes", "Sizes in &Megabytes", "Sizes in &Gigabytes", "Sizes in &Pages",
                                 "Sizes in a &Fitting Unit"};

/// The picture of a command-list item, out of what the host has set.
wxBitmapBundle PictureOf(Long lNumber) {
  const auto oPictures = std::static_pointer_cast<ZelviewPictures>(Browser::Resource());
  return oPictures == nullptr ? wxBitmapBundle() : oPictures->Picture(lNumber);
}

}  // namespace

ZelviewFrame::ZelviewFrame() : wxFrame(nullptr, wxID_ANY, "zelview", wxDefaultPosition, wxSize(1180, 860)) {
  SetMinSize(FromDIP(wxSize(480, 400)));
  // What the control reports, when the figures were read, and what the instance is.
  CreateStatusBar(3);
  const int oWidths[] = {-2, -1, -1};
  SetStatusWidths(3, oWidths);
  Browser::Resource(std::make_shared<ZelviewPictures>());
  // The Tab key goes round what is in one panel.
  m_oAll = new wxPanel(this);
  wxPanel* oAll = m_oAll;
  m_oPageList = new PageList(oAll);
  m_oPanel = new Desktop::BrowserPanel(oAll);
  m_oCommandlist = std::make_shared<Desktop::DesktopCommandlist>(*oAll, *m_oPanel, PictureOf);
  m_oRefreshBar = new RefreshBar(oAll, *m_oPanel, [this](std::function<void()> oWork) { Later(std::move(oWork)); });
  m_oRefreshBar->MoveBeforeInTabOrder(m_oCommandlist->Window());
  m_oCommandlist->LeaveOut(modPicture::Close);  // the page has its own, and Escape
  m_oPanel->MoveAfterInTabOrder(m_oCommandlist->Window());

  auto* oRight = new wxBoxSizer(wxVERTICAL);
  auto* oBar = new wxBoxSizer(wxHORIZONTAL);
  m_oTrail = std::make_unique<PageTrail>(m_oPanel->Browser());
  m_oTrailBar = new TrailBar(oAll, *m_oTrail, [this](std::function<void()> oWork) { Later(std::move(oWork)); });
  oBar->Add(m_oTrailBar, 0, wxEXPAND);
  oBar->Add(m_oRefreshBar, 0, wxEXPAND);
  oBar->Add(m_oCommandlist->Window(), 1, wxEXPAND);
  oRight->Add(oBar, 0, wxEXPAND);
  oRight->Add(m_oPanel, 1, wxEXPAND);
  auto* oColumns = new wxBoxSizer(wxHORIZONTAL);
  oColumns->Add(m_oPageList, 0, wxEXPAND);
  oColumns->Add(new wxStaticLine(oAll, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLI_VERTICAL), 0, wxEXPAND);
  oColumns->Add(oRight, 1, wxEXPAND);
  oAll->SetSizer(oColumns);
  m_oStart = MakeStart();
  m_oStart->Hide();
  auto* oBoth = new wxBoxSizer(wxVERTICAL);
  oBoth->Add(oAll, wxSizerFlags(1).Expand());
  oBoth->Add(m_oStart, wxSizerFlags(1).Expand());
  SetSizer(oBoth);
  Bind(wxEVT_CHAR_HOOK, &ZelviewFrame::OnKey, this);
  Bind(wxEVT_SIZE, [this](wxSizeEvent& oEvent) {
    const bool bNarrow = GetClientSize().x < FromDIP(kWidthForTitles);
    m_oPageList->Narrow(bNarrow);
    m_oTrailBar->Compact(bNarrow);
    m_oCommandlist->Compact(bNarrow);
    m_oRefreshBar->Compact(bNarrow);
    oEvent.Skip();
  });
  m_oPageList->OnChoose = [this](const std::string& sPage, bool bBrowsing) {
    Later([this, sPage, bBrowsing] {
      m_oRefreshBar->Begins();
      m_oPages->Show(sPage);
      if (!bBrowsing) m_oPanel->SetFocus();
    });
  };
  m_oPageList->OnEnter = [this] { m_oPanel->SetFocus(); };

  m_oPanel->Browser().HTMLPath(HTMLFolder());
  m_oPanel->Browser().CHMPath(HelpFile());
  MakeMenus();
  Connect();
  // Files dropped on the window's own parts are opened; pages take none.
  DragAcceptFiles(true);
  Bind(wxEVT_DROP_FILES, [this](wxDropFilesEvent& oEvent) {
    if (oEvent.GetNumberOfFiles() == 0) return;
    const std::string sFile = UTF8(oEvent.GetFiles()[0]);
    Later([this, sFile] { OpenAndShow(sFile); });
  });
  Bind(wxEVT_CLOSE_WINDOW, [this](wxCloseEvent& oEvent) {
    if (m_oSettings) ReadRecent();
    SaveSettings();
    oEvent.Skip();
  });
}

StartPage* ZelviewFrame::MakeStart() {
  const auto InLater = [this](void (ZelviewFrame::*pWork)(const std::string&)) {
    return
        [this, pWork](const std::string& sInstance) { Later([this, pWork, sInstance] { (this->*pWork)(sInstance); }); };
  };
  return new StartPage(
      this, {.Open = InLater(&ZelviewFrame::OpenAndShow),
             .OpenWindow = InLater(&ZelviewFrame::OpenAnotherWindow),
             .Remove = InLater(&ZelviewFrame::Forget),
             .Others = {{"&Database File…", [this] { OpenFile("Open a SQLite database file", "*", "sqlite:"); }},
                        {"&Server…", [this] { Later([this] { OpenServer(); }); }},
                        {"&Recording…", [this] { OpenFile("Open a recording", "*.json", "recorded:"); }},
                        {"S&ample Database", [this] { Later([this] { OpenAndShow(SampleInstance()); }); }}}});
}

void ZelviewFrame::ShowStart() {
  if (!m_oSettings) m_oSettings.emplace();
  ReadRecent();
  m_oAll->Hide();
  m_oStart->Show();
  Layout();
  if (m_oDatabase == nullptr) SetTitle("zelview");
  m_oStart->Begin(m_oSettings->Recent);
  m_oStart->SetFocus();
}

void ZelviewFrame::LeaveStart() {
  if (!m_oStart->IsShown() || m_oDatabase == nullptr) return;
  m_oStart->End();
  m_oStart->Hide();
  m_oAll->Show();
  Layout();
  m_oPanel->SetFocus();
}

void ZelviewFrame::Forget(const std::string& sInstance) {
  ReadRecent();
  std::erase(m_oSettings->Recent, sInstance);
  if (m_bSave) m_oSettings->Save();
  FillRecent();
  m_oStart->Begin(m_oSettings->Recent);
}

void ZelviewFrame::OpenAnotherWindow(const std::string& sInstance) {
  if (!OpenWindow(sInstance)) throw std::runtime_error("Another window cannot be opened");
}

void ZelviewFrame::OnKey(wxKeyEvent& oEvent) {
  const int iKey = oEvent.GetKeyCode();
  if (m_oStart->IsShown()) {
    if (iKey != WXK_ESCAPE || m_oDatabase == nullptr) return oEvent.Skip();
    return LeaveStart();
  }
  // In the page, the key explains a figure.
  if (iKey == WXK_F1 && !oEvent.HasAnyModifiers() && !m_oPanel->PageHasFocus()) {
    return Later([this] { ShowContents(); });
  }
  const bool bTrail = oEvent.AltDown() && !oEvent.ControlDown() && (iKey == WXK_LEFT || iKey == WXK_RIGHT);
  const bool bPages = (iKey == WXK_F5 || iKey == WXK_ESCAPE) && !oEvent.HasAnyModifiers();
  if (bTrail) {
    Later([this, iKey] { iKey == WXK_LEFT ? m_oTrail->Back() : m_oTrail->Forward(); });
  } else if (iKey == WXK_F6 && !oEvent.HasModifiers()) {
    GoRound(!oEvent.ShiftDown());
  } else if (iKey == WXK_TAB && !oEvent.HasAnyModifiers() && m_oPageList->HasFocus()) {
    m_oPanel->SetFocusFromKbd();  // not by way of the commands: what was chosen is the page
  } else if (!bPages || m_oPanel->PageHasFocus() || !m_oPanel->KeyToPage(oEvent)) {
    oEvent.Skip();
  }
}

void ZelviewFrame::GoRound(bool bForward) {
  wxWindow* oCommands = m_oCommandlist->Window();
  std::vector<wxWindow*> oStops = {m_oPageList, m_oPanel};
  const auto& oButtons = oCommands->GetChildren();
  if (std::ranges::any_of(oButtons, [](const wxWindow* o) { return o->CanAcceptFocus(); })) {
    oStops.insert(oStops.begin() + 1, oCommands);
  }
  // The toolkit does not know what is in the control.
  const auto Has = [this](const wxWindow* o) { return o == m_oPanel ? m_oPanel->PageHasFocus() : o->HasFocus(); };
  const auto it = std::ranges::find_if(oStops, [&](const wxWindow* o) {
    return Has(o) || std::ranges::any_of(o->GetChildren(), [](const wxWindow* oChild) { return oChild->HasFocus(); });
  });
  const std::size_t iFrom = it == oStops.end() ? 0 : static_cast<std::size_t>(it - oStops.begin());
  oStops[(iFrom + (bForward ? 1 : oStops.size() - 1)) % oStops.size()]->SetFocus();
}

void ZelviewFrame::MakeMenus() {
  const auto Add = [this](wxMenu* oMenu, const std::string& sText, const std::function<void()>& oWork,
                          wxItemKind eKind = wxITEM_NORMAL, int iWanted = wxID_ANY) {
    const int iID = oMenu->Append(iWanted, wxString::FromUTF8(sText), wxString(), eKind)->GetId();
    Bind(
        wxEVT_MENU, [oWork](wxCommandEvent&) { oWork(); }, iID);
  };

  auto* oFile = new wxMenu;
  Add(oFile, "S&tart Page", [this] { Later([this] { ShowStart(); }); });
  Add(oFile, "&New Window\tCtrl+N", [this] { Later([this] { OpenAnotherWindow(""); }); });
  oFile->AppendSeparator();
  Add(oFile, "&Open Database File…\tCtrl+O", [this] { OpenFile("Open a SQLite database file", "*", "sqlite:"); });
  Add(oFile, "Open S&erver…\tCtrl+Shift+O", [this] { Later([this] { OpenServer(); }); });
  Add(oFile, "Open &Recording…", [this] { OpenFile("Open a recording", "*.json", "recorded:"); });
  Add(oFile, "&Save Recording…\tCtrl+S", [this] { Later([this] { SaveRecording(); }); });
  m_oRecent = new wxMenu;
  oFile->AppendSubMenu(m_oRecent, "Open Re&cent");
  m_oRecent->Bind(wxEVT_MENU, [this](wxCommandEvent& oEvent) {
    const auto iRecent = static_cast<std::size_t>(oEvent.GetId() - kFirstRecent);
    if (!m_oSettings || iRecent >= m_oSettings->Recent.size()) return;
    Later([this, sInstance = m_oSettings->Recent[iRecent]] { OpenAndShow(sInstance); });
  });
  oFile->AppendSeparator();
  Add(oFile, "&Print…\tCtrl+P", [this] {
    if (Desktop::DesktopWebBrowser* oBrowser = m_oPanel->Platform().Front()) oBrowser->Print();
  });
  oFile->AppendSeparator();
  Add(
      oFile, "&Quit\tCtrl+Q", [this] { Close(); }, wxITEM_NORMAL, wxID_EXIT);

  auto* oView = new wxMenu;
  for (int iUnit = 0; iUnit < static_cast<int>(std::size(Units)); ++iUnit) {
    Add(
        oView, Units[iUnit],
        [this, iUnit] {
          PreferredUnit(iUnit);
          m_oRefreshBar->RefreshNow();
        },
        wxITEM_RADIO);
  }
  oView->AppendSeparator();
  const auto AddTheme = [&](const char* sText, std::optional<Desktop::Theme> eTheme) {
    Add(
        oView, sText, [this, eTheme] { Theme(eTheme); }, wxITEM_RADIO);
  };
  AddTheme("Theme of the &Desktop", std::nullopt);
  AddTheme("&Light Theme", Desktop::Theme::Light);
  AddTheme("Da&rk Theme", Desktop::Theme::Dark);

  auto* oGo = new wxMenu;
  Add(oGo, "&Back", [this] { Later([this] { m_oTrail->Back(); }); });
  Add(oGo, "&Forward", [this] { Later([this] { m_oTrail->Forward(); }); });

  auto* oHelp = new wxMenu;
  Add(oHelp, "&Contents…", [this] { Later([this] { ShowContents(); }); });
  Add(oHelp, "Look Up a &Message…", [this] { Later([this] { ShowMessage(); }); });
  Add(oHelp, "&Keyboard Shortcuts",
      [this] { Later([this] { wxMessageBox(Shortcuts, "Keyboard Shortcuts", wxOK, this); }); });
  Add(oHelp, "&About zelview", [this] {
    Later([this] {
      wxMessageBox("zelview " ZELWBR3_VERSION "\nShows the state of a database instance.", "About zelview", wxOK, this);
    });
  });

  auto* oBar = new wxMenuBar;
  oBar->Append(oFile, "&File");
  oBar->Append(oView, "&View");
  oBar->Append(oGo, "&Go");
  oBar->Append(oHelp, "&Help");
  SetMenuBar(oBar);
  Desktop::AccessibleName(*oBar, "Menu");
}

void ZelviewFrame::Connect() {
  Browser& oBrowser = m_oPanel->Browser();
  if (const char* pFile = std::getenv("ZELWBR3_TRACE")) {
    m_oTrace = std::make_shared<clsTrace>(m_oPanel->Platform().UserLocale());
    m_oTrace->StartLogging(pFile);
    m_oPanel->Platform().Trace([oTrace = m_oTrace](const std::string& sText) { oTrace->Text(sText); });
  }
  m_connections.push_back(oBrowser.PageComplete.Connect([this](const std::shared_ptr<Page>& oPage) {
    m_oTrail->Shown(oPage);
    m_oPageList->Select(m_oTrail->List());
    if (const auto oMain = std::dynamic_pointer_cast<PageMain>(oPage)) ShowCounts(oMain->Findings());
    m_oTrailBar->Draw();
    if (oPage->WebBrowser() != zelWebBrowserDetail && oPage->Name() != "Default") m_sPage = oPage->Name();
    Say("");
  }));
  m_connections.push_back(oBrowser.ActionBegin.Connect([this] { Say("Working…"); }));
  m_connections.push_back(
      m_oRefreshBar->Read.Connect([this](const std::string& sText) { SetStatusText(Text(sText), 1); }));
  m_connections.push_back(oBrowser.ActionComplete.Connect([this](bool) { Say(""); }));
  m_connections.push_back(oBrowser.Command.Connect([this](Long lCommand) {
    Say("A program around this page would carry out its command " + std::to_string(lCommand) + " now.");
  }));
}

void ZelviewFrame::ShowCounts(const std::vector<Health::Finding>& findings) {
  for (const HostPages::Entry& oEntry : HostPages::All()) {
    m_oPageList->Count(oEntry.Name,
                       static_cast<int>(std::ranges::count(findings, oEntry.Name, &Health::Finding::Page)));
  }
}

void ZelviewFrame::Open(const std::string& sInstance) {
  std::shared_ptr<ZELLib3::Database> oDatabase;
  std::string sPassword;
  while (oDatabase == nullptr) {
    try {
      DoInBackground("Opening " + ZELWbr3::Text::Isolated(ShownInstance(sInstance)) + "…",
                     [&] { oDatabase = OpenInstance(sInstance, {}, sPassword); });
    } catch (const PasswordNeeded& oError) {
      const auto sEntered =
          AskPassword(m_oPanel->Platform().DialogBox(), sInstance, sPassword.empty() ? std::string() : oError.what());
      if (!sEntered) throw;
      sPassword = *sEntered;
    }
  }
  m_sInstance = sInstance;
  m_oDatabase = std::move(oDatabase);
  m_oTrail->Clear();
  if (m_oSettings) {
    ReadRecent();
    m_oSettings->Opened(sInstance);
    if (m_bSave) SaveSettings();
    FillRecent();
  }
  LeaveStart();
  m_oPages = std::make_unique<HostPages>(m_oPanel->Browser(), m_oDatabase, m_oCommandlist);
  SetTitle(Text(ZELWbr3::Text::Isolated(m_oDatabase->InstanceName()) + " - zelview"));
  SetStatusText(Text(ZELWbr3::Text::Isolated(Given(m_oDatabase->Version())->Text())), 2);
}

std::vector<std::string> ZelviewFrame::Record(const std::string& sFile) {
  std::vector<std::string> notes;
  DoInBackground("Recording…", [&] { notes = Recorded::WriteRecording(*m_oDatabase, sFile); });
  return notes;
}

void ZelviewFrame::ShowFirst(const std::string& sPage) {
  m_oRefreshBar->Begins();
  m_oPages->Show("Main");
  if (sPage != "Main") {
    m_oRefreshBar->Begins();
    m_oPages->Show(sPage);
  }
  m_oPanel->SetFocus();
}

void ZelviewFrame::PreferredUnit(Long lUnit) {
  m_oPanel->Browser().PreferredUnit(lUnit);
  if (lUnit < 0) return;
  // The radio items stand first in their menu, in the order of the units.
  GetMenuBar()->GetMenu(1)->FindItemByPosition(static_cast<std::size_t>(lUnit))->Check();
}

void ZelviewFrame::Theme(std::optional<Desktop::Theme> eTheme) {
  m_oPanel->Platform().Theme(eTheme);
  // The radio items of themes stand behind those of units.
  const int iItem = !eTheme ? 0 : *eTheme == Desktop::Theme::Light ? 1 : 2;
  GetMenuBar()->GetMenu(1)->FindItemByPosition(std::size(Units) + 1 + static_cast<std::size_t>(iItem))->Check();
  if (m_oSettings) m_oSettings->Theme = !eTheme ? "" : iItem == 1 ? "light" : "dark";
}

void ZelviewFrame::Remember(const Settings& oSettings, bool bSave) {
  m_bSave = bSave;
  m_oSettings = oSettings;
  SetSize(oSettings.Width, oSettings.Height);
  if (oSettings.Theme == "light") Theme(Desktop::Theme::Light);
  if (oSettings.Theme == "dark") Theme(Desktop::Theme::Dark);
  FillRecent();
}

void ZelviewFrame::FillRecent() {
  while (m_oRecent->GetMenuItemCount() > 0) m_oRecent->Destroy(m_oRecent->FindItemByPosition(0));
  for (std::size_t i = 0; i < m_oSettings->Recent.size(); ++i) {
    wxString sItem = Text(m_oSettings->Recent[i]);
    sItem.Replace("&", "&&");
    m_oRecent->Append(kFirstRecent + static_cast<int>(i), sItem);
  }
}

void ZelviewFrame::ReadRecent() {
  if (m_bSave) m_oSettings->Recent = Settings::Load().Recent;
}

void ZelviewFrame::SaveSettings() {
  if (!m_oSettings || !m_bSave) return;
  if (!IsMaximized() && !IsIconized()) {
    m_oSettings->Width = GetSize().x;
    m_oSettings->Height = GetSize().y;
  }
  m_oSettings->Page = m_sPage;
  m_oSettings->Unit = m_oPanel->Browser().PreferredUnit();
  try {
    m_oSettings->Save();
  } catch (const std::exception& oError) {
    wxLogError("%s", wxString::FromUTF8(oError.what()));
  }
}

void ZelviewFrame::OpenAndShow(const std::string& sInstance) {
  Open(sInstance);
  ShowFirst("Main");
}

void ZelviewFrame::OpenFile(const wxString& sTitle, const wxString& sPattern, const std::string& sKind) {
  wxFileDialog oDialog(this, sTitle, "", "", sPattern, wxFD_OPEN | wxFD_FILE_MUST_EXIST);
  if (oDialog.ShowModal() != wxID_OK) return;
  const std::string sInstance = sKind + UTF8(oDialog.GetPath());
  Later([this, sInstance] { OpenAndShow(sInstance); });
}

void ZelviewFrame::SaveRecording() {
  if (m_oDatabase == nullptr) return;
  wxFileDialog oDialog(this, "Save a recording of the instance", "", "", "*.json", wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
  if (oDialog.ShowModal() != wxID_OK) return;
  const std::string sFile = UTF8(oDialog.GetPath());
  CheckOutputFiles(m_sInstance, {{"Save Recording", sFile}});
  const auto notes = Record(sFile);
  Say(notes.empty() ? "The recording is written." : ZELWbr3::Text::OneLine(notes.front()));
}

void ZelviewFrame::OpenServer() {
  if (const auto sAddress = AskServer(m_oPanel->Platform().DialogBox())) OpenAndShow(*sAddress);
}

void ZelviewFrame::ShowMessage() {
  const auto sTopic = AskTopic(m_oPanel->Platform().DialogBox());
  if (sTopic && !sTopic->empty()) m_oPanel->Browser().ShowMessageHelpID(*sTopic);
}

void ZelviewFrame::ShowContents() {
  const auto topics = HelpContents();
  if (topics.empty()) throw std::runtime_error("The help was not built with this program");
  wxArrayString oTitles;
  for (const HelpTopic& o : topics) oTitles.Add(wxString::FromUTF8(o.Title));
  wxSingleChoiceDialog oDialog(this, "What is the help wanted on?", "Help", oTitles);
  oDialog.SetSize(FromDIP(wxSize(420, 480)));
  oDialog.CentreOnParent();
  if (oDialog.ShowModal() != wxID_OK) return;
  const std::string sTopic = topics[static_cast<std::size_t>(oDialog.GetSelection())].ID;
  Later([this, sTopic] { m_oPanel->Browser().ShowMessageHelpID(sTopic); });
}

void ZelviewFrame::Later(std::function<void()> oWork) {
  CallAfter([this, oWork = std::move(oWork)] {
    const wxWeakRef<ZelviewFrame> oThis(this);
    try {
      // Some of it reads the instance, which may be at work.
      m_oPanel->Platform().MessagePump().AwaitBackground();
      if (m_oPages != nullptr || m_oStart->IsShown()) oWork();
    } catch (const ClosingError&) {
      // What the user wants now is that it ends.
    } catch (const std::exception& oError) {
      if (!oThis || oThis->IsBeingDeleted()) return;
      m_oPanel->Platform().MessageBox().Show(ZELWbr3::Text::OneLine(oError.what()), "zelview", MessageBox::Buttons::OK,
                                             MessageBox::Icon::Exclamation);
    }
  });
}

void ZelviewFrame::AfterPaint(std::function<void()> oDone) {
  Desktop::DesktopWebBrowser* oFront = m_oPanel->Platform().Front();
  if (oFront == nullptr) return oDone();
  oFront->AfterPaint(std::move(oDone));
}

void ZelviewFrame::SaveScreenshot(const std::string& sFile) {
  // The toolkit does not notice that a disk is full.
  wxMemoryOutputStream oPicture;
  if (!Desktop::TakePicture(*this).SaveFile(oPicture, wxBITMAP_TYPE_PNG)) {
    throw std::runtime_error("The picture \"" + sFile + "\" cannot be made");
  }
  std::string sBytes(oPicture.GetSize(), '\0');
  oPicture.CopyTo(sBytes.data(), sBytes.size());
  WriteFile(sFile, sBytes);
}

void ZelviewFrame::Say(const std::string& sText) {
  SetStatusText(Text(sText));
  Desktop::AccessibleStatus(*GetStatusBar(), UTF8(Text(sText)));
}

void ZelviewFrame::DoInBackground(const std::string& sText, const std::function<void()>& oWork) {
  Desktop::DesktopPump& oPump = m_oPanel->Platform().Pump();
  Say(sText);
  Finally(
      [&] {
        oPump.RunInBackground(oWork, [&] {
          if (oPump.Ending()) Hide();
        });
      },
      [&] { Say(""); });
}

}  // namespace ZELWbr3::Host
