#include "zelwbr3/instances/postgres/PostgresStateInfo.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Calendar.h"

namespace ZELWbr3::Postgres {

using ZELLib3::Long;

namespace {

/// Beyond any percentage: never reached.
constexpr int kNever = 101;

/// Rounded down, so 100 means all.
Long Percent(std::int64_t lPart, std::int64_t lWhole) {
  return lWhole > 0 ? static_cast<std::int64_t>(100.0 * static_cast<double>(lPart) / static_cast<double>(lWhole)) : 0;
}

}  // namespace

const Reading& PostgresStateInfo::Look() const {
  if (!m_oReading) m_oReading = m_oServer->Read();
  return *m_oReading;
}

Long PostgresStateInfo::DataTotal() const { return Figures() ? Pages(Figures()->DataTotal()) : Long(0); }

Long PostgresStateInfo::DataUsed() const { return Figures() ? Pages(Figures()->DataUsed()) : Long(0); }

Long PostgresStateInfo::DataTemp() const { return Figures() ? Pages(Figures()->DataTemp) : Long(0); }

/// The rest, so that rounding up does not make the parts more than the whole.
Long PostgresStateInfo::DataPerm() const { return DataUsed() - DataTemp(); }

Long PostgresStateInfo::DataPercent() const {
  return Figures() ? Percent(Figures()->DataUsed(), Figures()->DataTotal()) : Long(0);
}

bool PostgresStateInfo::DataFull() const { return Figures() && Figures()->DataIsFull(); }

Long PostgresStateInfo::LogTotal() const { return Figures() ? Pages(Figures()->LogTotal()) : Long(0); }

Long PostgresStateInfo::LogUsed() const { return Figures() ? Pages(Figures()->LogUsed()) : Long(0); }

Long PostgresStateInfo::LogPercent() const {
  return Figures() ? Percent(Figures()->LogUsed(), Figures()->LogTotal()) : Long(0);
}

bool PostgresStateInfo::LogFull() const { return Figures() && Figures()->LogIsFull(); }

bool PostgresStateInfo::AutoLog() const { return Figures() && (Figures()->IsStandby || Figures()->Archives()); }

Long PostgresStateInfo::SessionsUsed() const { return Figures() ? Figures()->Sessions : 0; }

Long PostgresStateInfo::SessionsMax() const { return Figures() ? Figures()->MaxSessions : 0; }

Long PostgresStateInfo::SessionPercent() const {
  return Figures() ? Percent(Figures()->Sessions, Figures()->MaxSessions) : Long(0);
}

Long PostgresStateInfo::CacheHitRate() const {
  const Postgres::Figures* pFigures = Figures();
  if (pFigures == nullptr) return 0;
  const double dAll = pFigures->Hits + pFigures->Reads;
  return dAll > 0 ? static_cast<std::int32_t>(100 * pFigures->Hits / dAll) : 100;
}

Long PostgresStateInfo::CacheUsed() const { return Figures() ? Figures()->UsedBuffers : 0; }

Long PostgresStateInfo::CacheTotal() const { return Figures() ? Figures()->Buffers : 0; }

bool PostgresStateInfo::CmdMon() const { return Figures() && Figures()->LogsSlowCommands; }

bool PostgresStateInfo::ResMon() const { return Figures() && Figures()->CountsStatements; }

bool PostgresStateInfo::DBTrace() const { return Figures() && Figures()->Traces; }

Long PostgresStateInfo::BadIndexes() const { return Figures() ? Figures()->BadIndexes : 0; }

Long PostgresStateInfo::BadVolumes() const { return Figures() ? Figures()->ChecksumFailures : 0; }

ZELLib3::Date PostgresStateInfo::StartOn() const {
  return Figures() ? Calendar::LocalTime(Figures()->StartedOn) : ZELLib3::Date{};
}

ZELLib3::StateInfo::Thresholds PostgresStateInfo::BarThresholds() const {
  const Postgres::Figures* pFigures = Figures();
  const bool bDisk = pFigures != nullptr && pFigures->DataRoom.has_value();
  // Between two checkpoints the log rises nearly to its full size, in good order.
  const bool bHeld = pFigures != nullptr && pFigures->LogIsHeld();
  const auto Limit = [](bool bLimited, int lLimit) { return Long(bLimited ? lLimit : kNever); };
  return {Limit(bDisk, 70),
          Limit(bDisk, 80),
          Limit(bDisk, 95),
          Limit(bHeld, 60),
          Limit(bHeld, 90),
          Limit(bHeld, 100),
          70,
          80,
          95};
}

Long PostgresStateInfo::AutoUpdateStatistics() const {
  if (!Figures()) return ZELLib3::Switch::Unknown;
  return Figures()->CollectsStatistics ? ZELLib3::Switch::On : ZELLib3::Switch::Off;
}

}  // namespace ZELWbr3::Postgres
