#pragma once

#include "zelwbr3/instances/recorded/objects/Call.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"

#include <memory>
#include <string>

namespace ZELWbr3::Host {

/// A SQLite instance that reports the operations that change it, in order and
/// before they take effect, including those that fail. Recordings do this by
/// themselves.
class WatchedDatabase : public SQLite::SQLiteDatabase {
 public:
  /// Raises like SQLiteDatabase.
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
