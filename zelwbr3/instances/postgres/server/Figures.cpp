#include "zelwbr3/instances/postgres/server/Figures.h"

#include "zelwbr3/instances/postgres/connection/Queries.h"

#include <algorithm>
#include <charconv>

namespace ZELWbr3::Postgres {

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr char kAsked[] = "reading the state";
/// Seconds behind that are too many.
constexpr double kLate = 60;

/// The rows of a query, if this server and user can run it.
std::optional<Result> Ask(Connection& oConnection, const Rights& oRights, const char* sName,
                          const Connection::Parameters& parameters = {}) {
  const Query* pQuery = Queries::Find(sName, oRights);
  if (pQuery == nullptr) return std::nullopt;
  return oConnection.Execute(pQuery->For(oRights), kAsked, parameters);
}

/// Where a segment ends in the log, by its name: 8 digits each of timeline, log
/// and segment, hexadecimal. 0 for other names.
std::int64_t EndOfSegment(const std::string& sName, std::int64_t lSegment) {
  std::uint32_t lLog = 0;
  std::uint32_t lNumber = 0;
  if (sName.size() < 24) return 0;
  std::from_chars(sName.data() + 8, sName.data() + 16, lLog, 16);
  std::from_chars(sName.data() + 16, sName.data() + 24, lNumber, 16);
  return (std::int64_t{lLog} << 32) + (std::int64_t{lNumber} + 1) * lSegment;
}

/// A position of the log, "16/B374D848", in bytes.
std::int64_t Bytes(const std::string& sPosition) {
  std::uint32_t lHigh = 0;
  std::uint32_t lLow = 0;
  const auto iSlash = sPosition.find('/');
  if (iSlash == std::string::npos) return 0;
  std::from_chars(sPosition.data(), sPosition.data() + iSlash, lHigh, 16);
  std::from_chars(sPosition.data() + iSlash + 1, sPosition.data() + sPosition.size(), lLow, 16);
  return (std::int64_t{lHigh} << 32) + lLow;
}

void ReadCore(Figures& oFigures, const Result& o) {
  oFigures.IsStandby = o.Flag(0, "standby");
  oFigures.LogPosition = o.Text(0, "lsn");
  oFigures.SinceCheckpoint = std::max<std::int64_t>(0, o.Number(0, "since_checkpoint"));
  oFigures.KeptBySlots = std::max<std::int64_t>(0, o.Number(0, "kept_by_slots"));
  oFigures.KeptBySetting = o.Number(0, "wal_keep");
  oFigures.MaxWalSize = o.Number(0, "max_wal_size");
  oFigures.Segment = o.Number(0, "segment");
  oFigures.ArchiveMode = o.Text(0, "archive_mode");
  oFigures.LastArchived = o.Text(0, "last_archived_wal");
  oFigures.Sessions = o.Number(0, "sessions");
  oFigures.MaxSessions = o.Number(0, "max_sessions");
  oFigures.Buffers = o.Number(0, "buffers");
  oFigures.Hits = o.Real(0, "hit");
  oFigures.Reads = o.Real(0, "read");
  oFigures.ChecksumFailures = o.Number(0, "checksum_failures");
  oFigures.BadIndexes = o.Number(0, "bad_indexes");
  oFigures.StartedOn = o.Number(0, "started");
  oFigures.CollectsStatistics = o.Flag(0, "auto_statistics");
  oFigures.Traces = o.Flag(0, "traces");
  oFigures.Slots = o.Number(0, "slots");
  oFigures.IsAdmin = o.Number(0, "admin_marks") > 0;
}

void ReadLog(Figures& oFigures, Connection& oConnection, const Rights& oRights) {
  if (oFigures.Archives() && !oFigures.IsStandby && oFigures.LastArchived.size() == 24) {
    const std::int64_t lSaved = EndOfSegment(oFigures.LastArchived, oFigures.Segment);
    oFigures.SinceArchived = std::max<std::int64_t>(0, Bytes(oFigures.LogPosition) - lSaved);
  }
  if (const auto o = Ask(oConnection, oRights, "reading.unarchived")) {
    oFigures.Unarchived = o->Number(0, "segments") * oFigures.Segment;
  } else {
    oFigures.Unarchived = oFigures.SinceArchived;
  }
  if (!oRights.ListsWal || oFigures.LogPosition.empty()) return;
  if (const auto o =
          Ask(oConnection, oRights, "reading.wal", {oFigures.LogPosition, std::to_string(oFigures.Segment)})) {
    oFigures.LogFiles = o->Number(0, "bytes");
    oFigures.LogSegments = o->Number(0, "segments");
    oFigures.RecycledSegments = o->Number(0, "recycled");
  }
}

void ReadNodes(Figures& oFigures, Connection& oConnection, const Rights& oRights) {
  if (const auto o = Ask(oConnection, oRights, "standby.nodes")) {
    for (int i = 0; i < o->Rows(); ++i) {
      oFigures.Nodes.push_back({o->Text(i, "name"), o->Text(i, "host"), o->Text(i, "state"), o->Text(i, "sync_state"),
                                o->Known(i, "unreplayed"), o->Real(i, "replay_lag"), false});
    }
  }
  if (oFigures.Slots == 0) return;
  if (const auto o = Ask(oConnection, oRights, "standby.slots")) {
    for (int i = 0; i < o->Rows(); ++i) {
      Figures::Node oNode;
      oNode.Name = o->Text(i, "slot_name");
      oNode.IsLost = true;
      oFigures.Nodes.push_back(std::move(oNode));
    }
  }
}

void ReadReceiver(Figures& oFigures, Connection& oConnection, const Rights& oRights) {
  const auto o = Ask(oConnection, oRights, "standby.own");
  if (!o || o->Rows() == 0) return;
  oFigures.Own = {o->Text(0, "status"),      o->Text(0, "sender_host"), o->Number(0, "sender_port"),
                  o->Known(0, "unreplayed"), o->Real(0, "lag"),         o->Flag(0, "paused")};
}

}  // namespace

void DatabaseSizes::Refresh(Connection& oConnection) {
  const auto dNow = Clock::now();
  if (dNow < m_dExpires) return;
  const Result o = oConnection.Execute(Queries::SQL("reading.data"), kAsked);
  Sum = o.Number(0, "perm");
  IsComplete = o.Flag(0, "complete");
  const auto dEnd = Clock::now();
  m_dExpires = dEnd + std::max<Clock::duration>(100ms, 10 * (dEnd - dNow));
}

Figures Figures::Read(Connection& oConnection, const Rights& oRights, DatabaseSizes& oSizes) {
  const Connection::Snapshot oSnapshot(oConnection, kAsked);
  Figures oFigures;
  ReadCore(oFigures, *Ask(oConnection, oRights, "reading.core"));
  oSizes.Refresh(oConnection);
  oFigures.DataPerm = oSizes.Sum;
  oFigures.DataIsComplete = oSizes.IsComplete;
  if (const auto o = Ask(oConnection, oRights, "reading.temp")) oFigures.DataTemp = o->Number(0, "temp");
  const auto oMonitors = Ask(oConnection, oRights, "reading.monitors");
  oFigures.CountsStatements = oMonitors->Flag(0, "statements");
  oFigures.LogsSlowCommands = oMonitors->Flag(0, "slow_commands");
  ReadLog(oFigures, oConnection, oRights);
  // Before 16 the extension looks at each buffer.
  if (oRights.Version >= 160000) {
    if (const auto o = Ask(oConnection, oRights, "caches.used")) oFigures.UsedBuffers = o->Number(0, "buffers_used");
  }
  ReadNodes(oFigures, oConnection, oRights);
  if (oFigures.IsStandby) ReadReceiver(oFigures, oConnection, oRights);
  return oFigures;
}

std::int64_t Figures::LogUsed() const {
  // A setting keeps no more than there is.
  const std::int64_t lKept = LogFiles ? std::min(KeptBySetting, *LogFiles) : KeptBySetting;
  return std::max({SinceCheckpoint, KeptBySlots, Unarchived, lKept});
}

std::int64_t Figures::LogTotal() const { return std::max(MaxWalSize, LogUsed()); }

bool Figures::StandbyWarns() const {
  const auto IsLate = [this](const auto& o) { return o.SecondsBehind > kLate || (o.Behind && *o.Behind > MaxWalSize); };
  if (IsStandby && (Own.State != "streaming" || Own.IsPaused || IsLate(Own))) return true;
  return std::ranges::any_of(
      Nodes, [&](const Node& o) { return o.IsLost || (!o.State.empty() && o.State != "streaming") || IsLate(o); });
}

}  // namespace ZELWbr3::Postgres
