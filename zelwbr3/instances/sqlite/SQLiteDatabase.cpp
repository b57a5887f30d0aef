#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"

#include "zelwbr3/instances/common/ThisSystem.h"
#include "zelwbr3/instances/common/analyzer/BackgroundAnalyzer.h"
#include "zelwbr3/instances/common/settings/ListedParameterHistory.h"
#include "zelwbr3/instances/common/settings/ListedParameters.h"
#include "zelwbr3/instances/sqlite/SQLiteActivity.h"
#include "zelwbr3/instances/sqlite/SQLiteCaches.h"
#include "zelwbr3/instances/sqlite/SQLiteDataArea.h"
#include "zelwbr3/instances/sqlite/SQLiteHistory.h"
#include "zelwbr3/instances/sqlite/SQLiteLogArea.h"
#include "zelwbr3/instances/sqlite/SQLiteLogSettings.h"
#include "zelwbr3/instances/sqlite/SQLiteSQLTables.h"
#include "zelwbr3/instances/sqlite/SQLiteSessions.h"
#include "zelwbr3/instances/sqlite/SQLiteStateInfo.h"
#include "zelwbr3/instances/sqlite/SQLiteSysInfos.h"
#include "zelwbr3/instances/sqlite/SQLiteVersion.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"
#include "zelwbr3/instances/sqlite/settings/PragmaList.h"

#include <sqlite3.h>

#include <filesystem>

namespace ZELWbr3::SQLite {

SQLiteDatabase::SQLiteDatabase(const std::string& sPath, const Options& oOptions)
    : m_oFile(std::make_shared<InstanceFile>(sPath, oOptions)),
      m_oStateStore(std::make_shared<StateStore>(oOptions.StateFolder)),
      m_oParameters(std::make_shared<PragmaList>(m_oFile, m_oStateStore)),
      m_sAnalyzerProgram(oOptions.AnalyzerProgram) {}

std::shared_ptr<ZELLib3::StateInfo> SQLiteDatabase::StateInfo() { return std::make_shared<SQLiteStateInfo>(m_oFile); }

std::shared_ptr<ZELLib3::LogSettings> SQLiteDatabase::LogSettings() {
  return std::make_shared<SQLiteLogSettings>(m_oFile->JournalMode());
}

std::shared_ptr<ZELLib3::Analyzer> SQLiteDatabase::Analyzer() {
  const std::string sPath = m_oFile->Path();
  return std::make_shared<Instances::BackgroundAnalyzer>(
      Instances::BackgroundAnalyzer::Setup{.Instance = sPath,
                                           .Argument = "sqlite:" + sPath,
                                           .Environment = {},
                                           .Program = m_sAnalyzerProgram,
                                           .Folder = [sPath] { return Instances::AnalyzerFolder(sPath); },
                                           .Refuse =
                                               [oFile = m_oFile](const std::string& sWhy) {
                                                 oFile->Refuse(sWhy);
                                                 return oFile->LastError();
                                               }});
}

std::shared_ptr<ZELLib3::Parameters> SQLiteDatabase::Parameters() {
  return std::make_shared<Instances::ListedParameters>(m_oParameters);
}

std::shared_ptr<ZELLib3::SysInfos> SQLiteDatabase::SysInfos() { return std::make_shared<SQLiteSysInfos>(m_oFile); }

std::shared_ptr<ZELLib3::ParameterHistory> SQLiteDatabase::ParameterHistory() {
  return std::make_shared<Instances::ListedParameterHistory>(m_oParameters);
}

std::shared_ptr<ZELLib3::Caches> SQLiteDatabase::Caches() {
  return std::make_shared<SQLiteCaches>(m_oFile, m_oParameters);
}

std::shared_ptr<ZELLib3::Activity> SQLiteDatabase::Activity() { return std::make_shared<SQLiteActivity>(m_oFile); }

std::shared_ptr<ZELLib3::SQLTables> SQLiteDatabase::SQLTables() { return std::make_shared<SQLiteSQLTables>(m_oFile); }

std::shared_ptr<ZELLib3::DataArea> SQLiteDatabase::DataArea() { return std::make_shared<SQLiteDataArea>(m_oFile); }

std::shared_ptr<ZELLib3::LogArea> SQLiteDatabase::LogArea() { return std::make_shared<SQLiteLogArea>(m_oFile); }

std::shared_ptr<ZELLib3::Sessions> SQLiteDatabase::Sessions() { return std::make_shared<SQLiteSessions>(m_oFile); }

std::shared_ptr<ZELLib3::History> SQLiteDatabase::History() {
  return std::make_shared<SQLiteHistory>(m_oFile, m_oStateStore);
}

ZELLib3::Error SQLiteDatabase::LastError() { return m_oFile->LastError(); }

std::string SQLiteDatabase::InstanceName() { return std::filesystem::path(m_oFile->Path()).filename().string(); }

std::shared_ptr<ZELLib3::Version> SQLiteDatabase::Version() { return std::make_shared<SQLiteVersion>(); }

std::string SQLiteDatabase::OSVersion() { return Instances::ThisSystem().release; }

std::string SQLiteDatabase::OSName() { return Instances::ThisSystem().sysname; }

bool SQLiteDatabase::Connected() { return m_oFile->Connected(); }

ZELLib3::Long SQLiteDatabase::PageSize() { return m_oFile->Unit(); }

std::string SQLiteDatabase::RunDirectory() { return std::filesystem::path(m_oFile->Path()).parent_path().string(); }

bool SQLiteDatabase::Shutdown() { return m_oFile->Change(InstanceFile::State::Offline); }

bool SQLiteDatabase::ShutdownQuick() { return Shutdown(); }

void SQLiteDatabase::Interrupt() { m_oFile->Interrupt(); }

void SQLiteDatabase::WaitRunner(Runner fnRun) { m_oFile->WaitRunner(std::move(fnRun)); }

bool SQLiteDatabase::Admin() { return m_oFile->Change(InstanceFile::State::Admin); }

bool SQLiteDatabase::Online() { return m_oFile->Change(InstanceFile::State::Online); }

bool SQLiteDatabase::RestartUntil(const ZELLib3::Date&) {
  return m_oFile->Refuse("a SQLite database keeps no log that could be replayed until a point in time");
}

bool SQLiteDatabase::AutoLogOff() { return m_oFile->Refuse("a SQLite database has no automatic log backup"); }

bool SQLiteDatabase::RegisterCopy(const std::string& sFile, const ZELLib3::Date& dMade, const std::string& sLabel) {
  if (sFile.empty()) return m_oFile->Refuse("a copy without a file name cannot be registered");
  if (dMade == ZELLib3::Date{}) return m_oFile->Refuse("the copy " + sFile + " cannot be registered without a date");
  const std::string sPath = std::filesystem::absolute(sFile).lexically_normal();
  const auto oCopy = FileId::Of(sPath);
  try {
    m_oStateStore->Add(StateStore::KeyOf(m_oFile->Path()), {sPath, dMade, sLabel, oCopy ? oCopy->Bytes : -1});
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    m_oFile->LastError(oError.ErrorObject());
    return false;
  }
}

void LimitMemory(std::int64_t lBytes) { sqlite3_hard_heap_limit64(lBytes); }

std::shared_ptr<ZELLib3::Database> OpenDatabase(const std::string& sPath) { return OpenDatabase(sPath, Options{}); }

std::shared_ptr<ZELLib3::Database> OpenDatabase(const std::string& sPath, const Options& oOptions) {
  return std::make_shared<SQLiteDatabase>(sPath, oOptions);
}

}  // namespace ZELWbr3::SQLite
