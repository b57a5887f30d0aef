#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/sqlite/OpenDatabase.h"
#include "zelwbr3/instances/sqlite/file/Options.h"

#include <cstdint>
#include <memory>
#include <string>

namespace ZELWbr3::SQLite {

class InstanceFile;
class PragmaList;
class StateStore;

/// A SQLite database file as an instance.
///
/// The instance is this program's connection to the file: online while it is
/// open, admin while it is open and all others are locked out, offline while
/// it is closed. Reading figures changes nothing in the file. The objects that
/// it hands out may outlive it.
class ZELWBR3_EXPORT SQLiteDatabase : public ZELLib3::Database {
 public:
  /// Raises ZELLib3::InstanceError, with one line that names the file and what
  /// is wrong, for a file that is missing, unreadable or not a database. A file
  /// that is locked, or has to be recovered first, opens and says so in its
  /// state.
  explicit SQLiteDatabase(const std::string& sPath, const Options& oOptions = {});

  std::shared_ptr<ZELLib3::StateInfo> StateInfo() override;
  std::shared_ptr<ZELLib3::Parameters> Parameters() override;
  std::shared_ptr<ZELLib3::LogSettings> LogSettings() override;
  std::shared_ptr<ZELLib3::SysInfos> SysInfos() override;
  std::shared_ptr<ZELLib3::ParameterHistory> ParameterHistory() override;
  std::shared_ptr<ZELLib3::Caches> Caches() override;
  std::shared_ptr<ZELLib3::Activity> Activity() override;
  std::shared_ptr<ZELLib3::SQLTables> SQLTables() override;
  std::shared_ptr<ZELLib3::DataArea> DataArea() override;
  std::shared_ptr<ZELLib3::LogArea> LogArea() override;
  std::shared_ptr<ZELLib3::Sessions> Sessions() override;
  std::shared_ptr<ZELLib3::History> History() override;
  /// Runs in the background, whether or not this program does.
  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override;
  ZELLib3::Error LastError() override;
  /// The file's name without its folder.
  std::string InstanceName() override;
  std::shared_ptr<ZELLib3::Version> Version() override;
  std::string OSVersion() override;
  std::string OSName() override;
  /// The file can be opened, or was switched offline and is still there.
  bool Connected() override;
  bool CountsPerConnection() override { return true; }
  ZELLib3::Long PageSize() override;
  /// The file's folder.
  std::string RunDirectory() override;

  void Interrupt() override;
  void WaitRunner(Runner fnRun) override;
  bool Shutdown() override;
  /// The same: there is no transaction to wait for.
  bool ShutdownQuick() override;
  /// Fails while another connection uses the file: in WAL mode while it is
  /// open, otherwise while it is within a transaction.
  bool Admin() override;
  /// Rolls back first what a crash has left half done.
  bool Online() override;
  bool RestartUntil(const ZELLib3::Date&) override;
  bool AutoLogOff() override;

  /// Adds a copy of the file that the host has made to the backup history. sFile
  /// may be anywhere, also where this program cannot look; dMade is local time.
  /// False, and LastError says why, without a name or a date, or when it cannot
  /// be written down.
  bool RegisterCopy(const std::string& sFile, const ZELLib3::Date& dMade, const std::string& sLabel);

 private:
  std::shared_ptr<InstanceFile> m_oFile;
  std::shared_ptr<StateStore> m_oStateStore;
  std::shared_ptr<PragmaList> m_oParameters;
  std::string m_sAnalyzerProgram;
};

/// Bounds the memory that the library uses in this process, for all connections
/// of all its parts. Without it, a view that was made for it can use some
/// gigabytes; with it, reading the view fails.
ZELWBR3_EXPORT void LimitMemory(std::int64_t lBytes);

}  // namespace ZELWbr3::SQLite
