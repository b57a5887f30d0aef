#include "zelwbr3/instances/sqlite/SQLiteStateInfo.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

namespace ZELWbr3::SQLite {

using ZELLib3::Long;
using Condition = Reading::Condition;

namespace {

/// Rounded down, so 100 means all.
std::int64_t Percent(std::int64_t lPart, std::int64_t lWhole) { return lWhole > 0 ? lPart * 100 / lWhole : 0; }

}  // namespace

const Reading& SQLiteStateInfo::Look() const {
  if (!m_oReading) m_oReading = m_oFile->Read();
  return *m_oReading;
}

Long SQLiteStateInfo::Status() const {
  switch (Look().Found()) {
    case Condition::Offline:
    case Condition::NeedsRecovery:
      return ZELLib3::Status::Offline;
    case Condition::Admin:
      return ZELLib3::Status::Admin;
    case Condition::Online:
    case Condition::Locked:
      return ZELLib3::Status::Online;
    case Condition::NotConnected:
      break;
  }
  return 0;
}

std::string SQLiteStateInfo::StateText() const {
  switch (Look().Found()) {
    case Condition::Offline:
      return "Offline";
    case Condition::Admin:
      return "Admin";
    case Condition::Online:
      return "Online";
    case Condition::Locked:
      return "Online (locked by another connection)";
    case Condition::NeedsRecovery:
      return "Offline (recovery needed)";
    case Condition::NotConnected:
      break;
  }
  return "Not connected";
}

Long SQLiteStateInfo::DataTotal() const { return Figures() ? Figures()->PageCount : 0; }

Long SQLiteStateInfo::DataUsed() const { return Figures() ? Figures()->PageCount - Figures()->FreePages : 0; }

Long SQLiteStateInfo::DataTemp() const { return Figures() ? Figures()->TempPages : 0; }

Long SQLiteStateInfo::DataPercent() const { return Percent(DataUsed(), DataTotal()); }

bool SQLiteStateInfo::DataFull() const {
  const Usage* pUsage = Figures();
  return pUsage && pUsage->IsFull;
}

Long SQLiteStateInfo::LogTotal() const { return Figures() ? Figures()->LogTotal() : 0; }

Long SQLiteStateInfo::LogUsed() const { return Figures() ? Figures()->LogUsed() : 0; }

Long SQLiteStateInfo::LogPercent() const { return Percent(LogUsed(), LogTotal()); }

Long SQLiteStateInfo::SessionsMax() const {
  // A system that does not tell its limit leaves nothing free, rather than less
  // than nothing.
  const int iLimit = OpenFiles::ProcessLimit();
  return iLimit > 0 ? Long(iLimit) : SessionsUsed();
}

Long SQLiteStateInfo::SessionPercent() const { return Percent(SessionsUsed(), SessionsMax()); }

Long SQLiteStateInfo::CacheHitRate() const {
  const Usage* pUsage = Figures();
  return pUsage ? Percent(pUsage->CacheHits, pUsage->CacheHits + pUsage->CacheMisses) : 0;
}

Long SQLiteStateInfo::CacheUsed() const { return Figures() ? Figures()->CacheUsed : 0; }

Long SQLiteStateInfo::CacheTotal() const { return Figures() ? Figures()->CachePages : 0; }

ZELLib3::Date SQLiteStateInfo::StartOn() const { return Figures() ? m_oFile->OpenedOn() : ZELLib3::Date{}; }

ZELLib3::StateInfo::Thresholds SQLiteStateInfo::BarThresholds() const {
  // A file without a free page is in order, since it grows: limits beyond any
  // percentage until it may not grow any more.
  const Long lData = DataFull() ? 100 : 101;
  return {lData, lData, lData, 60, 90, 100, 70, 80, 95};
}

Long SQLiteStateInfo::AutoUpdateStatistics() const {
  Connection* pConnection = Figures() ? m_oFile->Current() : nullptr;
  if (!pConnection) return 0;
  std::int64_t lTables = 0;
  m_oFile->Run([&] {
    lTables =
        pConnection->Number("SELECT count(*) FROM sqlite_schema WHERE name = 'sqlite_stat1'", "looking for statistics");
  });
  return lTables > 0 ? 0 : 1;
}

}  // namespace ZELWbr3::SQLite
