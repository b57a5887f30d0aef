#include "instances/sqlite/SQLiteDatabase.h"

#include "instances/sqlite/InstanceFile.h"
#include "instances/sqlite/SQLiteLogSettings.h"
#include "instances/sqlite/SQLiteStateInfo.h"
#include "instances/sqlite/SQLiteVersion.h"
#include "instances/sqlite/analyzer/SQLiteAnalyzer.h"

#include <sys/utsname.h>

#include <filesystem>

namespace ZELWbr3::SQLite {

namespace {

utsname System() {
  utsname oSystem{};
  uname(&oSystem);
  return oSystem;
}

/// The journal mode of a file in WAL mode; otherwise each connection chooses
/// its own, and only this one's is known.
std::string JournalMode(Connection& oConnection) {
  return oConnection.UsesWal() ? "wal" : oConnection.Text("PRAGMA main.journal_mode", "reading the journal mode");
}

}  // namespace

SQLiteDatabase::SQLiteDatabase(const std::string& sPath, const Options& oOptions)
    : m_oFile(std::make_shared<InstanceFile>(sPath, oOptions)), m_sAnalyzerProgram(oOptions.AnalyzerProgram) {}

std::shared_ptr<ZELLib3::StateInfo> SQLiteDatabase::StateInfo() { return std::make_shared<SQLiteStateInfo>(m_oFile); }

std::shared_ptr<ZELLib3::LogSettings> SQLiteDatabase::LogSettings() {
  Connection* pConnection = m_oFile->Read()->Figures() ? m_oFile->Current() : nullptr;
  return std::make_shared<SQLiteLogSettings>(pConnection ? JournalMode(*pConnection) : std::string());
}

std::shared_ptr<ZELLib3::Analyzer> SQLiteDatabase::Analyzer() {
  return std::make_shared<SQLiteAnalyzer>(m_oFile, m_sAnalyzerProgram);
}

ZELLib3::Error SQLiteDatabase::LastError() { return m_oFile->LastError(); }

std::string SQLiteDatabase::InstanceName() { return std::filesystem::path(m_oFile->Path()).filename().string(); }

std::shared_ptr<ZELLib3::Version> SQLiteDatabase::Version() { return std::make_shared<SQLiteVersion>(); }

std::string SQLiteDatabase::OSVersion() { return System().release; }

std::string SQLiteDatabase::OSName() { return System().sysname; }

bool SQLiteDatabase::Connected() { return m_oFile->Connected(); }

ZELLib3::Long SQLiteDatabase::PageSize() { return m_oFile->PageSize(); }

std::string SQLiteDatabase::RunDirectory() { return std::filesystem::path(m_oFile->Path()).parent_path().string(); }

bool SQLiteDatabase::Shutdown() { return m_oFile->Change(InstanceFile::State::Offline); }

bool SQLiteDatabase::ShutdownQuick() { return m_oFile->Change(InstanceFile::State::Offline, true); }

bool SQLiteDatabase::Admin() { return m_oFile->Change(InstanceFile::State::Admin); }

bool SQLiteDatabase::Online() { return m_oFile->Change(InstanceFile::State::Online); }

bool SQLiteDatabase::RestartUntil(const ZELLib3::Date&) {
  return m_oFile->Refuse("a SQLite database keeps no log that could be replayed until a point in time");
}

bool SQLiteDatabase::AutoLogOff() { return m_oFile->Refuse("a SQLite database has no automatic log backup"); }

std::shared_ptr<ZELLib3::Database> OpenDatabase(const std::string& sPath, const Options& oOptions) {
  return std::make_shared<SQLiteDatabase>(sPath, oOptions);
}

}  // namespace ZELWbr3::SQLite
