#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/common/ResolveLinks.h"

#include <sqlite3.h>
#include <unistd.h>

#include <filesystem>
#include <utility>

namespace ZELWbr3::SQLite {

using Condition = Reading::Condition;

namespace {

std::string AbsolutePath(const std::string& sPath) {
  if (sPath.empty()) RaiseError(SQLITE_CANTOPEN, "\"\"", "no file name given");
  if (sPath.find('\0') != std::string::npos) RaiseError(SQLITE_CANTOPEN, sPath, "the file name holds a NUL character");
  return std::filesystem::absolute(sPath).lexically_normal().string();
}

int PrimaryCode(const ZELLib3::InstanceError& oError) { return oError.ErrorObject().ErrorCode & 0xff; }

}  // namespace

InstanceFile::InstanceFile(const std::string& sPath, const SQLite::Options& oOptions)
    : m_sPath(AbsolutePath(sPath)), m_oOptions(oOptions) {
  Open(State::Online);
  Read();
}

/// The library follows links before it adds an ending.
std::string InstanceFile::PathBeside(const std::string& sEnding) const {
  return Instances::ResolveLinks(m_sPath) + sEnding;
}

void InstanceFile::Open(State eState) {
  const auto eAccess = eState == State::Admin ? Connection::Access::Exclusive : Connection::Access::Figures;
  m_oConnection = std::make_unique<Connection>(m_sPath, eAccess, m_oOptions, m_bInterrupted);
  m_eState = eState;
  m_bLocked = false;
  m_iPageSize = m_oConnection->PageSize();
  m_dOpenedOn = Calendar::Now();
}

void InstanceFile::Close() {
  m_oReading.reset();
  m_oConnection.reset();
}

Connection* InstanceFile::Current() {
  if (m_eState == State::Offline) return nullptr;
  m_bInterrupted = false;
  try {
    if (m_oConnection && m_oConnection->IsCurrent()) {
      m_oConnection->BeginReading();
      return m_oConnection.get();
    }
    Run([this] {
      Close();
      Open(m_eState);
    });
  } catch (const ZELLib3::InstanceError& oError) {
    Close();
    m_oLastError = oError.ErrorObject();
  }
  return m_oConnection.get();
}

bool InstanceFile::Connected() {
  return m_eState == State::Offline ? access(m_sPath.c_str(), R_OK) == 0 : Current() != nullptr;
}

std::string InstanceFile::JournalMode() {
  Connection* pConnection = Read()->Figures() ? Current() : nullptr;
  std::string sMode;
  if (pConnection) Run([&] { sMode = pConnection->JournalMode(); });
  return sMode;
}

int InstanceFile::PageSize() {
  if (const Connection* pConnection = Current()) m_iPageSize = pConnection->PageSize();
  return m_iPageSize;
}

std::shared_ptr<const Reading> InstanceFile::Read() {
  // First of all, since a connection that has to be renewed drops the reading.
  const bool bConnected = Connected();
  if (!bConnected || !m_oReading || std::chrono::steady_clock::now() >= m_dReadingEnds) {
    Run([&] { m_oReading = std::make_shared<Reading>(bConnected ? Look() : Reading(Condition::NotConnected)); });
    m_dReadingEnds = std::chrono::steady_clock::now() + m_oOptions.ReadingLifetime;
  }
  return m_oReading;
}

Reading InstanceFile::Look() {
  switch (m_eState) {
    case State::Offline:
      return Reading(Condition::Offline);
    case State::Admin:
      return Reading(Condition::Admin);
    case State::Online:
      break;
  }
  return LookInside(*m_oConnection);
}

Reading InstanceFile::LookInside(Connection& oConnection) {
  try {
    const Reading oReading(Usage::Read(oConnection));
    if (std::exchange(m_bLocked, false)) oConnection.BusyTimeout(m_oOptions.BusyTimeout);
    return oReading;
  } catch (const ZELLib3::InstanceError& oError) {
    m_oLastError = oError.ErrorObject();
    if (oError.ErrorObject().ErrorCode == SQLITE_READONLY_ROLLBACK) return Reading(Condition::NeedsRecovery);
    const int lCode = PrimaryCode(oError);
    if (lCode == SQLITE_CANTOPEN && oConnection.SharesWal() && oConnection.IsReadOnly()) {
      RaiseError(lCode, m_sPath, "its write-ahead log cannot be read without write access to the folder");
    }
    if (lCode != SQLITE_BUSY) throw;
    // Waited once; a page looks some dozens of times.
    oConnection.BusyTimeout(std::chrono::milliseconds::zero());
    m_bLocked = true;
    return Reading(Condition::Locked);
  }
}

bool InstanceFile::Change(State eState) {
  const State eBefore = m_eState;
  m_bInterrupted = false;
  // The old connection's own locks would stand in the way of the new one.
  Close();
  if (eState == State::Offline) {
    m_eState = State::Offline;
    return true;
  }
  try {
    Open(eState);
    if (Read()->Found() == Condition::NeedsRecovery) Recover();
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    Close();
    m_eState = eBefore;  // the next read opens the file again
    m_oLastError = oError.ErrorObject();
    return false;
  }
}

/// Any connection that may write rolls the transaction back before it reads.
void InstanceFile::Recover() {
  Close();
  Usage::Read(*std::make_unique<Connection>(m_sPath, Connection::Access::Recovery, m_oOptions, m_bInterrupted));
  Open(State::Online);
  Read();
}

bool InstanceFile::Refuse(const std::string& sWhy, int lCode) {
  m_oLastError = {lCode == 0 ? SQLITE_ERROR : lCode, m_sPath + ": " + sWhy};
  return false;
}

void InstanceFile::Run(const std::function<void()>& oPart) const {
  const auto fnRun = m_fnRun;  // may be replaced meanwhile
  fnRun ? fnRun(oPart) : oPart();
}

bool InstanceFile::Attempt(const std::function<void(Connection&)>& oOperation) {
  Connection* pConnection = Current();
  if (!pConnection) return m_eState == State::Offline ? Refuse("the database is offline") : false;
  try {
    Run([&] { oOperation(*pConnection); });
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    m_oLastError = oError.ErrorObject();
    return false;
  }
}

bool InstanceFile::Refresh() {
  try {
    switch (Read()->Found()) {
      case Condition::Offline:
      case Condition::Admin:
      case Condition::Online:
        return true;
      case Condition::Locked:
        return Refuse("another connection has locked the database", SQLITE_BUSY);
      case Condition::NeedsRecovery:
        return Refuse("an interrupted transaction has to be rolled back first");
      case Condition::NotConnected:
        return false;  // LastError says why it could not be opened
    }
  } catch (const ZELLib3::InstanceError& oError) {
    m_oLastError = oError.ErrorObject();
  }
  return false;
}

bool InstanceFile::RefreshFigures() {
  return Refresh() && (m_oReading->Figures() || Refuse("figures are available only while the database is online"));
}

}  // namespace ZELWbr3::SQLite
