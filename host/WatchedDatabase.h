#pragma once

#include "zelwbr3/instances/recorded/objects/Call.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"

#include <memory>
#include <string>

namespace ZELWbr3::Host {

/// A SQLite database file that tells of the operations which are called on it
/// and change it, as recordings do by themselves: in order and before they take
/// effect, those that fail included.
class WatchedDatabase : public SQLite::SQLiteDatabase {
 public:
  /// Raises as SQLiteDatabase.
  WatchedDatabase(const std::string& sPath, Recorded::CallObserver oObserver);

  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override;
  bool Shutdown() override;
  bool ShutdownQuick() override;
  bool Admin() override;
  bool Online() override;
  bool RestartUntil(const ZELLib3::Date& dUntil) override;
  bool AutoLogOff() override;

 private:
  Recorded::CallObserver m_oObserver;
};

}  // namespace ZELWbr3::Host
