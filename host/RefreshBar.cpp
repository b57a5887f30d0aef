#include "host/RefreshBar.h"

#include "host/ZelviewPictures.h"
#include "zelwbr3/desktop/Accessible.h"
#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopPump.h"
#include "zelwbr3/desktop/DesktopWebBrowser.h"
#include "zelwbr3/framework/DataPage.h"

#include <algorithm>
#include <iterator>
#include <utility>

#include <wx/sizer.h>

namespace ZELWbr3::Host {

namespace {

struct Choice {
  int Seconds;
  const char* Text;
};
constexpr Choice Choices[] = {{0, "off"}, {2, "2 s"}, {5, "5 s"}, {15, "15 s"}, {60, "60 s"}};

/// Seconds after which a page that could not be read is tried again, whatever is chosen.
constexpr int TryAgain = 5;

/// Reading takes at most this part of the time.
constexpr int LargestShare = 10;

constexpr const char* Arrow =
    R"(<path d="M13 8 A5 5 0 1 1 11.4 4.3
    M11.6 1.4 V4.6 H8.4" fill="none" stroke="#3b82d6" stroke-width="1.8" stroke-linecap="round"
    stroke-linejoin="round"/>)";

}  // namespace

RefreshBar::RefreshBar(wxWindow* oParent, Desktop::BrowserPanel& oPanel, Runner oRunner)
    : wxPanel(oParent), m_oPanel(oPanel), m_oRunner(std::move(oRunner)) {
  m_oButton = new wxButton(this, wxID_ANY, "Refresh");
  auto* oButton = m_oButton;
  oButton->SetBitmap(ZelviewPictures::Icon(Arrow));
  oButton->SetToolTip("Read the figures of this page again (F5)");
  m_oChoice = new wxChoice(this, wxID_ANY);
  for (const Choice& oChoice : Choices) m_oChoice->Append(oChoice.Text);
  m_oChoice->SetSelection(0);
  m_oChoice->SetToolTip("How often the page is read again by itself");
  Desktop::AccessibleName(*m_oChoice, "Refresh every");

  auto* oSizer = new wxBoxSizer(wxHORIZONTAL);
  const auto oFlags = wxSizerFlags().CenterVertical().Border(wxALL, FromDIP(4));
  oSizer->Add(oButton, oFlags);
  m_oEvery = new wxStaticText(this, wxID_ANY, "Every:");
  oSizer->Add(m_oEvery, wxSizerFlags().CenterVertical().Border(wxLEFT, FromDIP(6)));
  oSizer->Add(m_oChoice, oFlags);
  SetSizer(oSizer);

  oButton->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { RefreshNow(); });
  m_oChoice->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
    Interval(Choices[static_cast<std::size_t>(std::max(0, m_oChoice->GetSelection()))].Seconds);
  });
  m_oTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { OnTick(); });
  Register();

  Browser& oBrowser = m_oPanel.Browser();
  m_connections.push_back(oBrowser.ActionBegin.Connect([this] {
    m_bActing = true;
    Begins();
  }));
  m_connections.push_back(oBrowser.ActionComplete.Connect([this](bool) {
    m_bActing = false;
    m_oBegin.reset();
    Schedule();
  }));
  m_connections.push_back(
      oBrowser.PageComplete.Connect([this](const std::shared_ptr<Page>& oPage) { PageShown(oPage->Name()); }));
}

RefreshBar::~RefreshBar() { Unregister(); }

int RefreshBar::Enter(wxDialog*) {
  ++m_iDialogs;
  return wxID_NONE;
}

void RefreshBar::Compact(bool bCompact) {
  if (m_oEvery->IsShown() != bCompact) return;
  m_oEvery->Show(!bCompact);
  m_oButton->SetLabel(bCompact ? "" : "Refresh");
  m_oButton->SetWindowStyle(bCompact ? wxBU_EXACTFIT : 0);
  Desktop::AccessibleName(*m_oButton, "Refresh");
  InvalidateBestSize();
  Layout();
}

void RefreshBar::Interval(int iSeconds) {
  m_iInterval = iSeconds;
  const auto it = std::ranges::find(Choices, iSeconds, &Choice::Seconds);
  if (it != std::end(Choices)) m_oChoice->SetSelection(static_cast<int>(it - std::begin(Choices)));
  Schedule();
}

void RefreshBar::Begins() {
  if (!m_oBegin) m_oBegin = Clock::now();
}

void RefreshBar::RefreshNow() {
  m_oRunner([this] { Refresh(true); });
}

void RefreshBar::Schedule() {
  m_oTimer.Stop();
  const auto oPage = std::dynamic_pointer_cast<DataPage>(m_oPanel.Browser().ActPageObj());
  const int iInterval = m_iInterval == 0 && oPage != nullptr && oPage->IsUnread() ? TryAgain : m_iInterval;
  if (iInterval == 0) return;
  const auto iTook = std::chrono::duration_cast<std::chrono::milliseconds>(m_oLast).count();
  m_oTimer.StartOnce(static_cast<int>(std::max<std::int64_t>(iInterval * std::int64_t{1000}, LargestShare * iTook)));
}

bool RefreshBar::MayRefresh() const {
  if (m_bActing || m_iDialogs > 0 || m_oPanel.Platform().Pump().Waiting()) return false;
  const auto oPage = std::dynamic_pointer_cast<DataPage>(m_oPanel.Browser().ActPageObj());
  return oPage != nullptr && oPage->CanRefreshUnasked();
}

void RefreshBar::OnTick() {
  Schedule();
  Desktop::DesktopWebBrowser* oFront = m_oPanel.Platform().Front();
  if (oFront == nullptr || !MayRefresh()) return Ticked.Raise(false);
  oFront->AskIfInUse([oThis = wxWeakRef<RefreshBar>(this)](bool bInUse) {
    if (!oThis) return;
    // What came meanwhile may be in the way.
    if (bInUse || !oThis->MayRefresh()) return oThis->Ticked.Raise(false);
    oThis->m_oRunner([oThis] {
      if (!oThis) return;
      const bool bMay = oThis->MayRefresh();
      if (bMay) oThis->Refresh(false);
      if (oThis) oThis->Ticked.Raise(bMay);
    });
  });
}

void RefreshBar::Refresh(bool bAsked) {
  const auto oPage = std::dynamic_pointer_cast<DataPage>(m_oPanel.Browser().ActPageObj());
  if (oPage == nullptr) return;
  if (bAsked) {
    oPage->Command(DataPage::CommandRefresh);
  } else {
    oPage->RefreshUnasked();
  }
}

void RefreshBar::PageShown(const std::string& sPage) {
  if (m_oBegin) {
    m_oLast = Clock::now() - *m_oBegin;
    m_readings[sPage] = {wxDateTime::Now(), m_oLast};
    m_oBegin.reset();
  }
  Schedule();
  const auto it = m_readings.find(sPage);
  if (it == m_readings.end() || sPage == "Default") return Read.Raise("");
  const auto iTook = std::chrono::duration_cast<std::chrono::milliseconds>(it->second.Took).count();
  std::string sText = "Read " + it->second.At.FormatISOTime().utf8_string() + " in " + std::to_string(iTook) + " ms";
  if (m_iInterval > 0 && LargestShare * iTook > m_iInterval * std::int64_t{1000}) {
    sText += ", next in " + std::to_string((LargestShare * iTook + 500) / 1000) + " s";
  }
  Read.Raise(sText);
}

}  // namespace ZELWbr3::Host
