#include "zelwbr3/instances/postgres/analyzer/Bottlenecks.h"

#include "zelwbr3/base/SizeText.h"

#include <cmath>
#include <cstdint>

namespace ZELWbr3::Postgres {

namespace {

using List = std::vector<Bottleneck>;

constexpr char kAsked[] = "looking for bottlenecks";
constexpr std::int64_t kMinute = 60;
constexpr std::int64_t kHour = 60 * kMinute;
constexpr std::int64_t kLongWait = 5;
constexpr double kLateStandby = 60;

std::string Rounded(double dValue) { return std::to_string(std::llround(dValue)); }

std::string DurationText(std::int64_t lSeconds) {
  if (lSeconds >= 2 * kHour) return std::to_string(lSeconds / kHour) + " h";
  if (lSeconds >= 2 * kMinute) return std::to_string(lSeconds / kMinute) + " min";
  return std::to_string(lSeconds) + " s";
}

/// How many of the limits, in ascending order, a value has reached.
int LevelOf(double dValue, std::initializer_list<double> limits) {
  int iLevel = 0;
  for (const double dLimit : limits) iLevel += dValue >= dLimit ? 1 : 0;
  return iLevel;
}

void AddCache(List& list, const Interval& o) {
  const double dHits = o.HitPercent();
  if (dHits >= 90 || o.Rate("read") <= 100) return;
  list.push_back({dHits < 70 ? 3 : 2, "Cache",
                  "Data cache hit rate " + Rounded(dHits) + " % (reads " + Rounded(o.Rate("read")) + "/s)", dHits});
}

void AddCounts(List& list, const Interval& o) {
  const double dByVolume = o.Count("by_volume");
  const double dCheckpoints = dByVolume + o.Count("by_time");
  if (dByVolume > o.Count("by_time")) {
    list.push_back(
        {1, "Checkpoints",
         "Checkpoints by volume: " + Rounded(dByVolume) + " of " + Rounded(dCheckpoints) + " (max_wal_size is small)",
         dByVolume});
  }
  if (const double dBytes = o.Rate("temp_bytes"); dBytes > 10e6) {
    list.push_back({2, "TemporaryFiles",
                    "Temporary files " + SizeText(std::llround(60 * dBytes)) + "/min (work_mem is small)", dBytes});
  }
  if (const double dDeadlocks = o.Count("deadlocks"); dDeadlocks > 0) {
    list.push_back({1, "Deadlocks", "Deadlocks: " + Rounded(dDeadlocks), dDeadlocks});
  }
  const double dTransactions = o.Count("commits") + o.Count("rollbacks");
  if (o.Rate("rollbacks") >= 1 && o.Count("rollbacks") > 0.2 * dTransactions) {
    const double dPercent = 100 * o.Count("rollbacks") / dTransactions;
    list.push_back({1, "Rollbacks", "Rollbacks " + Rounded(dPercent) + " % of transactions", dPercent});
  }
  if (const double dFull = o.Rate("log_overflows"); dFull >= 1) {
    const double dWritten = o.Count("written");
    const double dPercent = dWritten > 0 ? 100 * o.Count("by_sessions") / dWritten : 0;
    list.push_back({1, "LogBuffers",
                    "Log buffers full " + Rounded(dFull) + "/s; pages written by sessions " + Rounded(dPercent) +
                        " % (wal_buffers is small)",
                    dFull});
  }
}

void AddSessions(List& list, Server& oServer, const Figures& oFigures) {
  if (const auto o = oServer.Ask("evaluated.waits", kAsked); o && o->Number(0, "seconds") > kLongWait) {
    const std::int64_t lSeconds = o->Number(0, "seconds");
    const std::int64_t lWaiting = o->Number(0, "waiting");
    list.push_back({lSeconds > kMinute ? 3 : 2, "Locks",
                    std::to_string(lWaiting) + (lWaiting == 1 ? " session waits" : " sessions wait") +
                        " for locks, longest " + DurationText(lSeconds) + ", blocked by process " +
                        o->Text(0, "blocked_by"),
                    static_cast<double>(lSeconds)});
  }
  if (const auto o = oServer.Ask("evaluated.transaction", kAsked);
      o && o->Rows() > 0 && o->Number(0, "seconds") > 15 * kMinute) {
    const std::int64_t lSeconds = o->Number(0, "seconds");
    list.push_back({lSeconds > 2 * kHour ? 3 : 2, "Transaction",
                    "Transaction open for " + DurationText(lSeconds) + " (process " + o->Text(0, "pid") + ", user " +
                        o->Text(0, "user") + ")",
                    static_cast<double>(lSeconds)});
  }
  const double dPercent = 100.0 * static_cast<double>(oFigures.Sessions) /
                          static_cast<double>(std::max<std::int64_t>(1, oFigures.MaxSessions));
  if (const int iLevel = LevelOf(dPercent, {80, 90, 95}); iLevel > 0) {
    list.push_back({iLevel, "Sessions",
                    "Sessions " + std::to_string(oFigures.Sessions) + " of " + std::to_string(oFigures.MaxSessions),
                    dPercent});
  }
}

void AddLog(List& list, Server& oServer, const Figures& oFigures) {
  if (const auto o = oServer.Ask("evaluated.archiver", kAsked); oFigures.Archives() && o && o->Rows() > 0) {
    list.push_back({3, "Archive", "Archiving fails since " + o->Text(0, "since") + ": segment " + o->Text(0, "segment"),
                    static_cast<double>(oFigures.Unarchived)});
  }
  if (const auto o = oServer.Ask("evaluated.slots", kAsked)) {
    for (int i = 0; i < o->Rows() && o->Number(i, "kept") > oFigures.MaxWalSize; ++i) {
      list.push_back({2, "Slot",
                      "Slot " + o->Text(i, "slot_name") + " keeps " + SizeText(o->Number(i, "kept")) + " of the log",
                      static_cast<double>(o->Number(i, "kept"))});
    }
  }
  const auto AddLate = [&](const std::string& sWho, double dSeconds) {
    if (dSeconds <= kLateStandby) return;
    list.push_back({2, "Standby", sWho + " is " + Rounded(dSeconds) + " s behind", dSeconds});
  };
  for (const Figures::Node& oNode : oFigures.Nodes) AddLate("Standby " + oNode.Name, oNode.SecondsBehind);
  if (oFigures.IsStandby) AddLate("This standby", oFigures.Own.SecondsBehind);
}

void AddUpkeep(List& list, Server& oServer) {
  if (const auto o = oServer.Ask("evaluated.wraparound", kAsked); o && o->Rows() > 0) {
    const double dPercent = o->Real(0, "percent");
    if (const int iLevel = LevelOf(dPercent, {50, 80}); iLevel > 0) {
      list.push_back(
          {iLevel + 1, "Wraparound",
           "Database " + o->Text(0, "datname") + " is " + Rounded(dPercent) + " % of the way to transaction wraparound",
           dPercent});
    }
  }
  if (const auto o = oServer.Ask("evaluated.tables", kAsked)) {
    for (int i = 0; i < o->Rows(); ++i) {
      const std::string sVacuumed = o->Text(i, "vacuumed");
      list.push_back({1, "Table",
                      "Table " + o->Text(i, "table") + ": " + Rounded(o->Real(i, "percent")) + " % dead rows, " +
                          (sVacuumed.empty() ? "never vacuumed" : "last vacuum " + sVacuumed),
                      o->Real(i, "percent")});
    }
  }
}

}  // namespace

std::vector<Bottleneck> Bottleneck::Find(Server& oServer, const Interval& oInterval) {
  List list;
  AddCache(list, oInterval);
  AddCounts(list, oInterval);
  const auto oFigures = oServer.ReadFigures();
  if (!oFigures) return list;
  AddSessions(list, oServer, *oFigures);
  AddLog(list, oServer, *oFigures);
  AddUpkeep(list, oServer);
  return list;
}

}  // namespace ZELWbr3::Postgres
