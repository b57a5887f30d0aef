#include "host/WebPages.h"

#include "host/ProgramFiles.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/framework/modFormat.h"
#include "zelwbr3/framework/modPicture.h"
#include "zelwbr3/shell/Pages.h"
#include "zelwbr3/web/WebCommandlist.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace ZELWbr3::Host {

namespace {

/// The unit of sizes that fits each.
constexpr int AutomaticUnit = 4;

std::shared_ptr<Web::WebCommandlist> Commands(Web::WebPlatform& oPlatform, const std::string& sRefused) {
  auto oCommands = std::make_shared<Web::WebCommandlist>(oPlatform, sRefused);
  oCommands->LeaveOut(modPicture::Close);  // the page has its own, and Escape
  return oCommands;
}

}  // namespace

WebPages::WebPages(Web::WebPlatform& oPlatform, std::shared_ptr<ZELLib3::Database> oDatabase,
                   const std::string& sRefused)
    : m_oPlatform(oPlatform),
      m_oDatabase(std::move(oDatabase)),
      m_oBrowser(oPlatform),
      m_oPages(m_oBrowser, m_oDatabase, Commands(oPlatform, sRefused)) {
  m_oBrowser.HTMLPaths(oPlatform.Files().Folders());
  m_oBrowser.CHMPath(HelpFile());
  m_oBrowser.PreferredUnit(AutomaticUnit);
  OfferPages({});
  m_connections.push_back(
      m_oBrowser.PageComplete.Connect([this](const std::shared_ptr<Page>& oPage) { Shown(*oPage); }));
  m_connections.push_back(m_oBrowser.ActionBegin.Connect([this] { m_bReads = true; }));
  m_connections.push_back(m_oBrowser.ActionComplete.Connect([this](bool) { m_bReads = false; }));
  m_connections.push_back(oPlatform.RefreshAsked.Connect([this](bool bAsked) { Refresh(bAsked); }));
  m_connections.push_back(oPlatform.PageAsked.Connect([this](const std::string& sName) { Show(sName); }));
  m_connections.push_back(m_oBrowser.Command.Connect([this](Long lCommand) {
    m_oPlatform.MessageBox().Show("A program around this page would carry out its command " + std::to_string(lCommand) +
                                      " now. A browser cannot.",
                                  "zelweb", MessageBox::Buttons::OK, MessageBox::Icon::Exclamation);
  }));
}

void WebPages::Run(const std::string& sPage) {
  m_oPages.Show("Main");
  if (sPage != "Main") Show(sPage);
  for (;;) m_oPlatform.Run();
}

void WebPages::Show(const std::string& sName) {
  try {
    m_bReads = true;
    m_oPages.Show(sName);
  } catch (const ClosingError&) {
    throw;
  } catch (const std::exception& oError) {
    m_oPlatform.MessageBox().Show(oError.what(), "zelweb", MessageBox::Buttons::OK, MessageBox::Icon::Exclamation);
  }
}

void WebPages::Refresh(bool bAsked) {
  const auto oPage = std::dynamic_pointer_cast<DataPage>(m_oBrowser.ActPageObj());
  if (oPage == nullptr) return;
  if (bAsked) {
    oPage->Command(DataPage::CommandRefresh);
  } else {
    oPage->RefreshUnasked();
  }
}

void WebPages::OfferPages(const std::vector<Health::Finding>& findings) {
  std::vector<Web::OfferedPage> pages;
  for (const HostPages::Entry& oEntry : HostPages::All()) {
    if (oEntry.Group == nullptr) continue;
    const auto iFindings = std::ranges::count(findings, oEntry.Name, &Health::Finding::Page);
    pages.push_back({oEntry.Name, oEntry.Title, oEntry.Group, static_cast<std::uint32_t>(iFindings)});
  }
  m_oPlatform.Pages(std::move(pages));
}

void WebPages::Shown(const Page& oPage) {
  if (const auto* oMain = dynamic_cast<const PageMain*>(&oPage)) OfferPages(oMain->Findings());
  const auto* oData = dynamic_cast<const DataPage*>(&oPage);
  for (const HostPages::Entry& oEntry : HostPages::All()) {
    if (!oPage.Name().starts_with(oEntry.Name)) continue;
    m_oPlatform.ShowsPage(oEntry.Name, m_oDatabase->InstanceName() + " - " + oEntry.Title,
                          oData != nullptr && oData->IsUnread(), ReadAt(oPage.Name()));
  }
}

const std::string& WebPages::ReadAt(const std::string& sPage) {
  std::string& sRead = m_readAt[sPage];
  if (std::exchange(m_bReads, false)) sRead = "Read " + m_oPlatform.UserLocale().LongTime(Calendar::Now());
  return sRead;
}

std::shared_ptr<ZELLib3::Database> OpenFor(Web::WebPlatform& oPlatform,
                                           const std::function<std::shared_ptr<ZELLib3::Database>()>& oOpen) {
  const auto oHourglass = std::make_shared<clsHourglass>(oPlatform.ScreenPointer());
  const std::string sSince = "Since " + modFormat::GeneralDate(Calendar::Now(), oPlatform.UserLocale());
  bool bAsked = false;
  const ScopedConnection oWhenAsked = oPlatform.RefreshAsked.Connect([&](bool) { bAsked = true; });
  for (bool bFirst = true;; bFirst = false) {
    try {
      const clsHourglass::Scope oWait(oHourglass);
      auto oDatabase = oOpen();
      if (!bFirst) oPlatform.ShowFailure("");
      return oDatabase;
    } catch (const std::exception& oError) {
      const std::string sTried = oPlatform.UserLocale().LongTime(Calendar::Now());
      oPlatform.ShowFailure(oError.what(), sSince + (bFirst ? "" : ", last tried " + sTried));
    }
    oPlatform.MessagePump().Poll();  // what was asked for meanwhile is answered
    for (bAsked = false; !bAsked;) oPlatform.MessagePump().Turn();
  }
}

const char* const ChangesRefused =
    "This server shows the instance only. Commands that change it need zelweb to be started with --allow-commands.";

void RefuseChanges(const Recorded::Call& oCall) {
  if (!oCall.Changes) return;
  throw std::runtime_error(ChangesRefused);
}

}  // namespace ZELWbr3::Host
