#pragma once

#include <cstdint>

namespace ZELWbr3::SQLite {

class Connection;

/// The write-ahead log beside a database file. A frame holds one page.
///
/// Writers append frames; a checkpoint copies them into the database file. When
/// all have been copied, the next writer begins at the first frame again, so
/// the file keeps its size and its frames are reused.
struct WalFile {
  std::int64_t FileFrames = 0;    ///< the file has room for
  std::int64_t Frames = 0;        ///< hold committed changes
  std::int64_t Checkpointed = 0;  ///< of these are in the database file as well

  /// Frames that cannot be overwritten yet: all of them until the last one has
  /// been copied.
  std::int64_t Used() const { return Checkpointed < Frames ? Frames : 0; }

  /// Frames that a log file of this size holds. iPageSize is bytes.
  static std::int64_t FramesIn(std::int64_t lFileBytes, int iPageSize);

  /// Call within a read transaction. All zero without a log. Raises
  /// ZELLib3::InstanceError.
  static WalFile Read(const Connection& oConnection);
};

}  // namespace ZELWbr3::SQLite
