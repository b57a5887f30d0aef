#include "zelwbr3/pages/monitor/PageSysDD.h"

#include "zelwbr3/framework/modCells.h"

namespace ZELWbr3 {

void PageSysDD::Show(std::shared_ptr<ZELLib3::Database> oDatabase) {
  if (oDatabase != nullptr) {
    Enter([&] {
      const auto oVersion = oDatabase->Version();
      m_sName = "SysDD" + std::to_string(oVersion->Major()) + std::to_string(oVersion->Minor());
    });
  }
  PageUnfilled::Show(std::move(oDatabase));
}

bool PageSysDD::OnClick(const std::string& sID) {
  if (!modCells::AfterPrefix("ITEM_", sID, m_sTable)) return false;
  CarryOut(CommandOpen);
  return true;
}

void PageSysDD::OnCommand(Long lCommand) {
  if (lCommand != CommandOpen) return;
  Act([this] {
    const auto oTable = Database()->SQLTables()->NewTable();
    oTable->Owner("SYSDD");
    oTable->Name(m_sTable);
    Browser().ShowSQLTable(Database(), oTable);
  });
}

}  // namespace ZELWbr3
