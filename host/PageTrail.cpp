#include "host/PageTrail.h"

#include "host/HostPages.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/PageType.h"

#include <algorithm>

namespace ZELWbr3::Host {

namespace {

std::string TitleOf(const Page& oPage) {
  const auto oEntries = HostPages::All();
  const auto it = std::ranges::find_if(oEntries, [&](const auto& o) { return oPage.Name().starts_with(o.Name); });
  return it == oEntries.end() ? oPage.Name() : it->Title;
}

/// What the document of an entry's page calls the entry.
std::string EntryOf(const Document* oDocument) {
  if (oDocument == nullptr) return {};
  const auto Text = [&](const char* sID) {
    const Element* oElement = oDocument->all().item(sID);
    return oElement == nullptr ? std::string() : oElement->innerText();
  };
  if (const std::string sName = Text("txtName"); !sName.empty()) return sName;
  const std::string sTitle = Text("txtFormTitle");
  const auto iName = sTitle.find(" - ");
  return iName == sTitle.npos ? sTitle : sTitle.substr(iName + 3);
}

}  // namespace

bool PageTrail::IsEntry(std::size_t i) const {
  return i < m_pages.size() && m_pages[i]->WebBrowser() == zelWebBrowserDetail;
}

void PageTrail::Shown(const std::shared_ptr<Page>& oPage) {
  m_frames[oPage->WebBrowser()] = oPage;
  if (m_iAt < m_pages.size() && m_pages[m_iAt] == oPage) return;
  if (m_iAt > 0 && m_pages[m_iAt - 1] == oPage) {
    --m_iAt;  // the page was closed
    return;
  }
  if (!m_pages.empty()) m_pages.resize(m_iAt + 1);
  m_pages.push_back(oPage);
  if (m_pages.size() > kMost) m_pages.erase(m_pages.begin());
  m_iAt = m_pages.size() - 1;
}

void PageTrail::Clear() {
  m_pages.clear();
  m_frames.clear();
  m_iAt = 0;
}

void PageTrail::Back() {
  if (CanGoBack()) Show(m_iAt - 1);
}

void PageTrail::Forward() {
  if (CanGoForward()) Show(m_iAt + 1);
}

void PageTrail::Show(std::size_t i) {
  m_iAt = i;
  const auto oPage = m_pages[i];
  const std::int32_t lFrame = oPage->WebBrowser();
  if (m_frames[lFrame] == oPage) {
    m_oBrowser.ShowOnTop(lFrame);  // as it was left
  } else {
    m_oBrowser.Show(oPage, lFrame);
  }
}

std::string PageTrail::List() const {
  if (m_iAt >= m_pages.size()) return {};
  return m_pages[IsEntry(m_iAt) && m_iAt > 0 ? m_iAt - 1 : m_iAt]->Name();
}

std::string PageTrail::Path() const {
  if (m_iAt >= m_pages.size()) return {};
  if (!IsEntry(m_iAt)) return TitleOf(*m_pages[m_iAt]);
  const std::string sEntry = EntryOf(m_oBrowser.VisibleDocument().get());
  return m_iAt == 0 ? sEntry : TitleOf(*m_pages[m_iAt - 1]) + " › " + sEntry;
}

}  // namespace ZELWbr3::Host
