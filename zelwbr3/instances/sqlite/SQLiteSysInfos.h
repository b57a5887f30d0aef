#pragma once

#include "zelwbr3/ZELLib3/SysInfos.h"
#include "zelwbr3/instances/sqlite/SQLiteSysInfo.h"

namespace ZELWbr3::SQLite {

/// The system views: the schema and its parts, the file's header, space, and
/// what the connection and the library can tell about themselves. The list is
/// always the same, also while the database is offline.
class SQLiteSysInfos : public ZELLib3::SysInfos {
 public:
  explicit SQLiteSysInfos(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  ZELLib3::Integer Count() const override { return SystemView::All().size(); }
  std::shared_ptr<ZELLib3::SysInfo> Item(ZELLib3::Long iIndex) const override {
    if (iIndex < 1 || iIndex > Count()) {
      throw std::out_of_range("There is no view " + std::to_string(std::int32_t{iIndex}));
    }
    return std::make_shared<SQLiteSysInfo>(m_oFile, SystemView::All()[static_cast<std::size_t>(iIndex - 1)], iIndex);
  }

 private:
  std::shared_ptr<InstanceFile> m_oFile;
};

}  // namespace ZELWbr3::SQLite
