#pragma once

#include "zelwbr3/instances/postgres/connection/Connection.h"
#include "zelwbr3/instances/postgres/connection/Rights.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// The size of all databases. Adding it up takes the server long when there are
/// many files, so one sum serves for ten times as long as it took.
class DatabaseSizes {
 public:
  /// Bytes; databases that the user may not look at are left out.
  std::int64_t Sum = 0;
  bool IsComplete = false;

  void Refresh(Connection& oConnection);

 private:
  std::chrono::steady_clock::time_point m_dExpires;
};

/// What the server says about itself, of one moment. Sizes are bytes.
struct Figures {
  /// A standby that gets its log from this server, or a slot that one has left.
  struct Node {
    std::string Name;
    std::string Host;   ///< empty without the right to know it, or for a slot
    std::string State;  ///< "streaming", or what it does instead; as Host
    std::string Kind;   ///< "async", "sync", ...; as Host
    std::optional<std::int64_t> Behind;
    double SecondsBehind = 0;
    bool IsLost = false;  ///< only its slot is left
  };
  /// This server's own place behind another one.
  struct Receiver {
    std::string State;  ///< empty when it does not receive
    std::string Host;
    std::int64_t Port = 0;
    std::optional<std::int64_t> Behind;  ///< received, but not replayed
    double SecondsBehind = 0;
    bool IsPaused = false;
  };

  std::int64_t DataPerm = 0;
  std::int64_t DataTemp = 0;
  bool DataIsComplete = false;
  /// What the disks of a server of this machine have left: all together, and the
  /// fullest one. No value when they cannot be seen.
  std::optional<std::int64_t> DataRoom;
  std::optional<std::int64_t> LeastDataRoom;
  /// The same of the disk with the log.
  std::optional<std::int64_t> LogRoom;

  bool IsStandby = false;
  std::string LogPosition;
  std::int64_t SinceCheckpoint = 0;
  std::int64_t KeptBySlots = 0;
  std::int64_t KeptBySetting = 0;
  /// Whole segments that wait for the archive, or what comes after the last one
  /// archived when the user may not know.
  std::int64_t Unarchived = 0;
  std::int64_t SinceArchived = 0;
  std::int64_t MaxWalSize = 0;
  std::int64_t Segment = 0;
  std::string ArchiveMode;
  std::string LastArchived;
  /// What lies in pg_wal; no value without the right to list it.
  std::optional<std::int64_t> LogFiles;
  std::int64_t LogSegments = 0;
  std::int64_t RecycledSegments = 0;

  std::int64_t Sessions = 0;
  std::int64_t MaxSessions = 0;
  std::int64_t Buffers = 0;      ///< pages
  std::int64_t UsedBuffers = 0;  ///< pages; 0 = unknown
  double Hits = 0;
  double Reads = 0;
  std::int64_t ChecksumFailures = 0;
  std::int64_t BadIndexes = 0;
  std::int64_t StartedOn = 0;  ///< seconds since 1970
  bool CollectsStatistics = false;
  bool Traces = false;
  bool CountsStatements = false;
  bool LogsSlowCommands = false;
  std::int64_t Slots = 0;
  bool IsAdmin = false;
  std::vector<Node> Nodes;
  Receiver Own;

  static Figures Read(Connection& oConnection, const Rights& oRights, DatabaseSizes& oSizes);

  std::int64_t DataUsed() const { return DataPerm + DataTemp; }
  std::int64_t DataTotal() const { return DataUsed() + DataRoom.value_or(0); }
  bool DataIsFull() const { return LeastDataRoom && *LeastDataRoom < Segment; }
  bool LogIsFull() const { return LogRoom && *LogRoom < Segment; }
  /// The log from the oldest position that something still needs.
  std::int64_t LogUsed() const;
  /// Up to where the log grows by itself, or what is needed when that is more.
  std::int64_t LogTotal() const;
  /// Slots or the archive hold more of the log than it may grow to.
  bool LogIsHeld() const { return std::max(KeptBySlots, Unarchived) > MaxWalSize; }
  bool Archives() const { return ArchiveMode != "off"; }
  /// A standby that is late, paused or gone; this server itself when it is one.
  bool StandbyWarns() const;
};

}  // namespace ZELWbr3::Postgres
