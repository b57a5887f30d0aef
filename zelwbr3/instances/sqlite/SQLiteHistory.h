#pragma once

#include "zelwbr3/ZELLib3/History.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

#include <memory>
#include <vector>

namespace ZELWbr3::SQLite {

/// The copies of the database file that the host has registered, newest first,
/// as of Open. Each is a complete one; whether its file is still there is looked
/// up when the entry is read.
class SQLiteHistory : public ZELLib3::History {
 public:
  SQLiteHistory(std::shared_ptr<InstanceFile> oFile, std::shared_ptr<StateStore> oStateStore)
      : m_oFile(std::move(oFile)), m_oStateStore(std::move(oStateStore)) {}

  bool IsEmpty() const override { return m_oCopies.empty(); }
  ZELLib3::Long RowCount() const override { return m_iDelivered; }
  bool Open() override;
  bool ReadMore() override;
  std::shared_ptr<const ZELLib3::HistoryItem> NextItem() override;
  bool EndOfBlock() const override { return m_iPassed == m_iDelivered; }
  bool HasMore() const override { return m_iDelivered < m_oCopies.size(); }

 private:
  void Deliver();

  std::shared_ptr<InstanceFile> m_oFile;
  std::shared_ptr<StateStore> m_oStateStore;
  std::vector<StateStore::Copy> m_oCopies;
  std::size_t m_iDelivered = 0;
  std::size_t m_iPassed = 0;
};

}  // namespace ZELWbr3::SQLite
