#include "host/HostPages.h"
#include "zelwbr3/shell/Pages.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

using Instance = std::shared_ptr<ZELLib3::Database>;

const HostPages::Entry Entries[] = {
    {"Main", "Overview", "", [](Browser& o, const Instance& oDatabase) { o.PageMain()->Show(oDatabase); }},
    {"DataArea", "Data Area", "Storage",
     [](Browser& o, const Instance& oDatabase) { o.PageDataArea()->Show(oDatabase); }},
    {"LogArea", "Log Area", "Storage", [](Browser& o, const Instance& oDatabase) { o.PageLogArea()->Show(oDatabase); }},
    {"Parameters", "Parameters", "Configuration",
     [](Browser& o, const Instance& oDatabase) { o.PageParameters()->Show(oDatabase); }},
    {"InfoCaches", "Caches", "Monitoring",
     [](Browser& o, const Instance& oDatabase) { o.PageInfoCaches()->Show(oDatabase); }},
    {"InfoActivity", "Activity", "Monitoring",
     [](Browser& o, const Instance& oDatabase) { o.PageInfoActivity()->Show(oDatabase); }},
    {"Sessions", "Sessions", "Monitoring",
     [](Browser& o, const Instance& oDatabase) { o.PageSessions()->Show(oDatabase); }},
    {"SysInfos", "System Information", "Catalog",
     [](Browser& o, const Instance& oDatabase) { o.PageSysInfos()->Show(oDatabase); }},
    {"SysDD", "System Tables", "Catalog",
     [](Browser& o, const Instance& oDatabase) { o.PageSysDD()->Show(oDatabase); }},
    {"DBAnalyzer", "Analyzer", "Maintenance",
     [](Browser& o, const Instance& oDatabase) { o.PageDBAnalyzer()->Show(oDatabase); }},
    {"History", "Backup History", "Maintenance",
     [](Browser& o, const Instance& oDatabase) { o.PageHistory()->Show(oDatabase); }},
    {"Default", "Start Page", nullptr, [](Browser& o, const Instance&) { o.PageDefault()->Show(); }},
};

/// Pages that show one entry of a list.
constexpr std::array<std::string_view, 4> ByClick = {"SysInfo", "Parameter", "SQLTable", "HistoryItem"};

}  // namespace

HostPages::HostPages(Browser& oBrowser, std::shared_ptr<ZELLib3::Database> oDatabase,
                     std::shared_ptr<ZELCmd3::FCommandlist> oCommandlist)
    : m_oBrowser(oBrowser), m_oDatabase(std::move(oDatabase)) {
  oBrowser.Commandlist(std::move(oCommandlist));
}

std::span<const HostPages::Entry> HostPages::All() { return Entries; }

const HostPages::Entry& HostPages::Find(const std::string& sName) {
  const auto it = std::ranges::find(Entries, sName, &Entry::Name);
  if (it != std::end(Entries)) return *it;
  if (std::ranges::find(ByClick, sName) != ByClick.end()) {
    throw std::invalid_argument("The page \"" + sName + "\" is opened by a click in a list, not by its name");
  }
  std::string sNames;
  for (const Entry& oEntry : Entries) sNames += (sNames.empty() ? "" : ", ") + std::string(oEntry.Name);
  throw std::invalid_argument("There is no page \"" + sName + "\"; the pages are " + sNames);
}

void HostPages::Show(const std::string& sName) { Find(sName).Show(m_oBrowser, m_oDatabase); }

}  // namespace ZELWbr3::Host
