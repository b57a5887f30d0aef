#pragma once

#include "zelwbr3/ZELLib3/HistoryItem.h"

#include <cstdint>
#include <ctime>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

class Server;

/// A backup of a server, or what else its history tells.
struct Backup {
  ZELLib3::HistoryItem Item{};
  std::time_t Completed = 0;   ///< seconds since 1970; 0 = unknown
  std::string Start;           ///< where it begins in the log, "0/2000028"; the same for the same backup. May be empty
  std::int64_t Bytes = 0;      ///< that restoring it takes; 0 = unknown
  std::string Stanza;          ///< of pgBackRest; empty = none of its backups
  std::string Repository;      ///< its number there
  std::string Directory;       ///< a copy of the data directory; empty = it cannot be used as one
  std::string RestoreCommand;  ///< fetches segments of the log, as the setting restore_command

  /// What a restore until a moment can begin with.
  bool CanBeRestored() const {
    return Completed != 0 && Item.ReturnCode == 0 &&
           (!Stanza.empty() || (!Directory.empty() && !RestoreCommand.empty()));
  }
};

/// All that is known of the backups of a server, newest first, each once: what
/// pgBackRest tells, base backups whose label files lie in the log's folder, what
/// the host has registered, and how the archiver is getting on. What cannot be
/// asked is left out. Raises ZELLib3::InstanceError when the host's cannot be
/// read, or none of it because there is no connection and nothing is remembered.
std::vector<Backup> BackupsOf(Server& oServer);

/// What is known of a backup that the host registers: a directory, or a file.
struct RegisteredBackup {
  std::string Path;           ///< absolute; may be anywhere, also where this program cannot look
  ZELLib3::Date Completed{};  ///< local time
  std::string Label;
  std::string RestoreCommand;  ///< as the setting restore_command; may be empty
};

/// Adds it to the history. Raises ZELLib3::InstanceError when it cannot be written
/// down.
void Register(Server& oServer, const RegisteredBackup& oBackup);

/// The program pgbackrest in the search path; empty when it is not there.
std::string FindPgBackRest();

}  // namespace ZELWbr3::Postgres
