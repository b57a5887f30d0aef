#pragma once

#include "zelwbr3/instances/sqlite/file/InstanceFile.h"
#include "zelwbr3/instances/sqlite/settings/Pragma.h"
#include "zelwbr3/instances/sqlite/settings/StateStore.h"

#include <memory>
#include <vector>

namespace ZELWbr3::SQLite {

/// The settings of an instance as last read, and what is remembered of their
/// changes. The objects that an instance hands out share it.
///
/// Only what the database file keeps has a history: a connection's own settings
/// last as long as the connection.
class ParameterList {
 public:
  struct Entry {
    const SQLite::Pragma* Pragma;
    std::string Value;
    std::string NewValue;
  };

  ParameterList(std::shared_ptr<InstanceFile> oFile, std::shared_ptr<StateStore> oStateStore)
      : m_oFile(std::move(oFile)), m_oStateStore(std::move(oStateStore)) {}

  /// Reads the values and notices changes. False, and LastError says why, when
  /// the values cannot be read. It makes no difference
  /// whether the store can be used.
  bool Load();
  /// As last loaded; loaded now when that is longer ago than a reading serves.
  /// Null when it cannot be.
  std::shared_ptr<const std::vector<Entry>> Entries();

  /// All changes, newest first; empty when the store cannot be used.
  std::vector<StateStore::Change> Changes();
  /// Notices changes and reads them. False the first time that the store
  /// cannot be used, and LastError says why; after that there are none.
  bool OpenChanges(std::vector<StateStore::Change>& oChanges);

 private:
  bool ReadValues();
  void Observe();

  std::shared_ptr<InstanceFile> m_oFile;
  std::shared_ptr<StateStore> m_oStateStore;
  std::shared_ptr<const std::vector<Entry>> m_oEntries;
  std::chrono::steady_clock::time_point m_dEntriesEnd;
  bool m_bReported = false;  ///< that the store cannot be used
};

}  // namespace ZELWbr3::SQLite
