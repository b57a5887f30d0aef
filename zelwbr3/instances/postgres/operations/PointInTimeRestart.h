#pragma once

#include "zelwbr3/instances/postgres/backups/Backup.h"
#include "zelwbr3/instances/postgres/local/ServerControl.h"

#include <ctime>
#include <string>

namespace ZELWbr3::Postgres {

/// Puts a backup in the place of a server's data directory and replays the log
/// until a moment: PostgreSQL cannot take log back. The old directory is kept
/// beside it. What fails raises std::runtime_error with the reason.
class PointInTimeRestart {
 public:
  PointInTimeRestart(ServerControl& oControl, Backup oBackup, std::time_t tUntil);

  /// Raises when something stands against it that can be seen before: the room, or
  /// the right to rename the data directory. Changes nothing.
  void Check() const;
  /// To be called when the server has been stopped; it runs afterwards. A
  /// transaction must have been committed after the moment, or the server takes
  /// its absence for a log that is incomplete. When anything fails, everything is
  /// as it was, and the server is stopped.
  void Run();

  /// Where the data directory is kept as it was.
  const std::string& OldDirectory() const { return m_sOld; }

 private:
  void Restore() const;
  void RestoreByPgBackRest() const;
  void CopyDirectory() const;
  void CopyFromOld(const std::string& sFile) const;
  void CopyUnarchived() const;
  void Replay();
  void PutBack();
  std::string Target() const;

  ServerControl& m_oControl;
  Backup m_oBackup;
  std::time_t m_tUntil;
  std::string m_sData;
  std::string m_sOld;
};

}  // namespace ZELWbr3::Postgres
