#include "zelwbr3/pages/monitor/PageSysDD.h"

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"

#include <algorithm>

namespace ZELWbr3 {

namespace {

// Major and minor version of the releases that have a page file.
constexpr int OldestRelease = 74;
constexpr int NewestRelease = 76;

}  // namespace

void PageSysDD::Show(std::shared_ptr<ZELLib3::Database> oDatabase) {
  if (oDatabase != nullptr) {
    Enter([&] {
      const auto oVersion = Given(oDatabase->Version());
      // A release without a page file uses that of the nearest release with one.
      const Long lRelease = std::clamp<Long>(oVersion->Major() * 10 + oVersion->Minor(), OldestRelease, NewestRelease);
      m_sName = "SysDD" + std::to_string(lRelease);
    });
  }
  PageUnfilled::Show(std::move(oDatabase));
}

void PageSysDD::FillContent() {
  if (!Database()->Connected()) {
    Form().ShowTopWarning("Not connected", "The system tables can be read while the instance is connected.");
  }
}

bool PageSysDD::OnClick(const std::string& sID) {
  if (!modCells::AfterPrefix("ITEM_", sID, m_sTable)) return false;
  CarryOut(CommandOpen);
  return true;
}

void PageSysDD::OnCommand(Long lCommand) {
  if (lCommand != CommandOpen) return;
  Act([this] {
    const auto oTable = Given(Given(Database()->SQLTables())->NewTable());
    oTable->Owner("SYSDD");
    oTable->Name(m_sTable);
    Browser().ShowSQLTable(Database(), oTable);
  });
}

}  // namespace ZELWbr3
