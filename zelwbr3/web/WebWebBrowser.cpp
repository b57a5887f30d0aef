#include "zelwbr3/web/WebWebBrowser.h"

#include "zelwbr3/remote/FileURL.h"
#include "zelwbr3/web/WebPlatform.h"

#include <utility>

namespace ZELWbr3::Web {

WebWebBrowser::WebWebBrowser(WebPlatform& oPlatform, std::uint32_t iFrame, WebBrowserEvents& oEvents)
    : m_oPlatform(oPlatform), m_iFrame(iFrame), m_iLoads(oPlatform.LastNumber()), m_oRemote(oEvents, *this) {
  m_oPlatform.m_browsers[m_iFrame] = this;
}

WebWebBrowser::~WebWebBrowser() { m_oPlatform.m_browsers.erase(m_iFrame); }

void WebWebBrowser::Navigate(const std::string& sURL, NavigateFlags eFlags) {
  m_iFailures = 0;
  if (eFlags != NavigateFlags::Fresh || !BeginsAgainAs(sURL)) {
    m_sURL = sURL;
    return Load(true);
  }
  m_oRemote.BeginAgain(Again("reset"), true);
}

void WebWebBrowser::Refresh(const std::string& sURL) {
  if (!BeginsAgainAs(sURL)) return Navigate(sURL, NavigateFlags::Fresh);
  m_oRemote.BeginRefresh(Again("refresh"), true);
}

bool WebWebBrowser::BeginsAgainAs(const std::string& sURL) const {
  // In another theme it would be seen in its old one first.
  return m_sURL == sURL && m_oRemote.IsLoaded() && m_sLoadTheme == m_oPlatform.Theme() &&
         m_oOrigin.IsStill(Remote::FilePath(sURL));
}

std::uint32_t WebWebBrowser::Again(const char* sHow) {
  const std::uint32_t iNew = m_oPlatform.NewNumber();
  m_oPlatform.Send(sHow, m_iFrame, m_oRemote.Serial(), iNew);
  return iNew;
}

void WebWebBrowser::Load(bool bKnown) {
  const std::uint32_t iNew = m_oPlatform.NewNumber();
  m_oOrigin = Remote::PageOrigin(Remote::FilePath(m_sURL));
  m_sLoadTheme = m_oPlatform.Theme();
  m_oPlatform.Send("go", m_iFrame, iNew, m_oPlatform.Files().URL(m_sURL, iNew, ++m_iLoads));
  m_bLoading = true;
  m_bStale = false;
  const std::string& sSnapshot = m_oPlatform.KnownSnapshot(m_sURL, m_sLoadTheme);
  if (bKnown && !sSnapshot.empty()) {
    m_oRemote.BeginKnown(iNew, sSnapshot);
  } else {
    m_oRemote.BeginLoad(iNew);
  }
}

void WebWebBrowser::Ready() {
  if (std::exchange(m_bLoading, false)) {
    m_iFailures = 0;
    m_oOrigin.Loaded(*m_oRemote.Document());
    if (m_oPlatform.Files().Has(m_sURL)) m_oPlatform.KnownSnapshot(m_sURL, m_sLoadTheme) = m_oRemote.Snapshot();
  }
  m_oRemote.Theme(m_oPlatform.Theme());
}

void WebWebBrowser::SendBatch(std::uint32_t iSerial, std::uint32_t iBatch, const std::string& sList) {
  m_oPlatform.SendWith(sList, "batch", m_iFrame, iSerial, iBatch);
}

void WebWebBrowser::Later(std::function<void()> oTask) { m_oPlatform.MessagePump().Post(std::move(oTask)); }

void WebWebBrowser::Visible(bool bVisible) {
  m_bVisible = bVisible;
  m_oPlatform.Send("visible", m_iFrame, bVisible ? 1U : 0U);
  if (bVisible && std::exchange(m_bStale, false)) Load(true);
}

void WebWebBrowser::LiveDocument(std::function<void(const std::string&)> oDone) {
  m_oLive = std::move(oDone);
  m_oPlatform.Send("live", m_iFrame);
}

void WebWebBrowser::LiveTold(const std::string& sList) {
  if (m_oLive) std::exchange(m_oLive, {})(sList);
}

void WebWebBrowser::Failed(std::uint32_t iSerial) {
  if (iSerial != m_oRemote.Serial()) return;
  m_oPlatform.Trace("A page did not load in the browser: " + m_sURL);
  if (++m_iFailures < Attempts) Load(false);
}

void WebWebBrowser::NotAgain(std::uint32_t iSerial) {
  if (iSerial == m_oRemote.Serial()) Load(false);
}

void WebWebBrowser::ShowAgain() {
  m_iLoads = 1;  // the shell begins with one
  if (m_bVisible) {
    m_oPlatform.Send("visible", m_iFrame, 1U);
    return Load(true);
  }
  // It fills its page, and tells of it, only when it is seen.
  m_bStale = !m_sURL.empty();
  m_oRemote.Lose();
}

}  // namespace ZELWbr3::Web
