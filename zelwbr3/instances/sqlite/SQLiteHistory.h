#pragma once

#include "zelwbr3/instances/common/ListedHistory.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

#include <memory>
#include <vector>

namespace ZELWbr3::SQLite {

/// The copies of the database file that the host has registered, newest first,
/// as of Open. Each is a complete one; whether its file is still there is looked
/// up when the entry is read.
class SQLiteHistory : public Instances::ListedHistory {
 public:
  SQLiteHistory(std::shared_ptr<InstanceFile> oFile, std::shared_ptr<StateStore> oStateStore)
      : m_oFile(std::move(oFile)), m_oStateStore(std::move(oStateStore)) {}

 private:
  bool Load() override;
  std::size_t Count() const override { return m_oCopies.size(); }
  ZELLib3::HistoryItem Item(std::size_t i) const override;
  bool Refuse(const char* sWhy) override { return m_oFile->Refuse(sWhy); }

  std::shared_ptr<InstanceFile> m_oFile;
  std::shared_ptr<StateStore> m_oStateStore;
  std::vector<StateStore::Copy> m_oCopies;
};

}  // namespace ZELWbr3::SQLite
