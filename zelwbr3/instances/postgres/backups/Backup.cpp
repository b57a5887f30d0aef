#include "zelwbr3/instances/postgres/backups/Backup.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/SizeText.h"
#include "zelwbr3/instances/common/Process.h"
#include "zelwbr3/instances/common/settings/ObservationStore.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace ZELWbr3::Postgres {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr auto kPgBackRestTimeout = 5s;
constexpr char kReading[] = "reading the backup history";
constexpr char kRestoreCommand[] = "restore_command";

constexpr int kCompleteData = 1;
constexpr int kIncrementalData = 2;
constexpr int kLog = 3;

/// The lines "NAME: VALUE" of a backup's label file.
using LabelFile = std::map<std::string, std::string>;

LabelFile ReadLabelFile(const std::string& sPath) {
  LabelFile oLabels;
  std::ifstream oFile(sPath);
  for (std::string sLine; std::getline(oFile, sLine);) {
    const auto iColon = sLine.find(": ");
    if (iColon != std::string::npos) oLabels[sLine.substr(0, iColon)] = sLine.substr(iColon + 2);
  }
  return oLabels;
}

std::string ValueOf(const LabelFile& oLabels, const char* sName) {
  const auto it = oLabels.find(sName);
  return it == oLabels.end() ? std::string() : it->second;
}

/// "0/2000028 (file 000000010000000000000002)".
std::string StartOf(const LabelFile& oLabels) {
  const std::string sStart = ValueOf(oLabels, "START WAL LOCATION");
  return sStart.substr(0, sStart.find(' '));
}

Backup NewBackup(const std::string& sLabel, const char* sAction, int lKind, std::time_t tCompleted) {
  Backup oBackup;
  oBackup.Item.Label = sLabel;
  oBackup.Item.Action = sAction;
  oBackup.Item.Kind = lKind;
  oBackup.Item.Date = Calendar::LocalTime(tCompleted);
  oBackup.Completed = tCompleted;
  return oBackup;
}

/// It tells in JSON, which the server itself takes apart.
constexpr char kStanzas[] = R"(
SELECT s->>'name' AS stanza, b->>'label' AS label, b->>'type' AS type, coalesce(b->>'error', 'false') <> 'false' AS failed,
  (b #>> '{timestamp,stop}')::bigint AS stop, coalesce(b #>> '{info,size}', '0')::bigint AS size,
  b #>> '{lsn,start}' AS start_lsn, b #>> '{lsn,stop}' AS stop_lsn, b #>> '{archive,start}' AS first,
  b #>> '{archive,stop}' AS last, coalesce(b #>> '{database,repo-key}', '1') AS repository
FROM jsonb_array_elements($1::jsonb) AS s, jsonb_array_elements(s->'backup') AS b
WHERE EXISTS (SELECT FROM jsonb_array_elements(s->'db') AS d
              WHERE d->>'system-id' = $2 AND d->'id' = b #> '{database,id}'))";

void AddPgBackRest(std::vector<Backup>& backups, Server& oServer) {
  const std::string sProgram = FindPgBackRest();
  if (sProgram.empty()) return;
  std::string sJSON;
  try {
    oServer.Waiter().Run([&] {
      sJSON = Instances::RunProgram({{sProgram, "info", "--output=json"}, {}}, kPgBackRestTimeout);
    });
  } catch (const std::runtime_error&) {
    return;  // it is not set up, or not for this user
  }
  oServer.Use([&](Connection& oConnection) {
    const Result o = oConnection.Execute(kStanzas, kReading, {sJSON, oServer.Rights().SystemIdentifier});
    for (int i = 0; i < o.Rows(); ++i) {
      const std::string sType = o.Text(i, "type");
      Backup oBackup = NewBackup(o.Text(i, "label"), "BACKUP", sType == "full" ? kCompleteData : kIncrementalData,
                                 o.Number(i, "stop"));
      if (o.Flag(i, "failed")) {
        oBackup.Item.ReturnCode = 1;
        oBackup.Item.ErrorText = "pgBackRest found pages whose checksum is wrong";
      }
      oBackup.Start = o.Text(i, "start_lsn");
      oBackup.Bytes = o.Number(i, "size");
      oBackup.Stanza = o.Text(i, "stanza");
      oBackup.Repository = o.Text(i, "repository");
      oBackup.Item.Fields = {{"Source", "pgBackRest, stanza " + oBackup.Stanza + ", repository " + oBackup.Repository},
                             {"Type", sType},
                             {"Size", SizeText(oBackup.Bytes)},
                             {"Log", oBackup.Start + " to " + o.Text(i, "stop_lsn")},
                             {"Segments", o.Text(i, "first") + " to " + o.Text(i, "last")}};
      backups.push_back(std::move(oBackup));
    }
  });
}

/// Each base backup leaves a label file in the log's folder. Its times are in the
/// time zone of the server's log, which the server can read.
void AddBaseBackups(std::vector<Backup>& backups, Server& oServer, const LocalServer& oLocal) {
  std::error_code oError;
  for (const auto& oEntry : fs::directory_iterator(oLocal.WalDirectory(), oError)) {
    if (oEntry.path().extension() != ".backup") continue;
    const LabelFile oLabels = ReadLabelFile(oEntry.path());
    const std::string sStop = ValueOf(oLabels, "STOP TIME");
    if (sStop.empty()) continue;
    std::int64_t lStop = 0;
    const bool bRead = oServer.Attempt([&](Connection& oConnection) {
      lStop = oConnection.Execute("SELECT extract(epoch FROM $1::timestamptz)::bigint AS stop", kReading, {sStop})
                  .Number(0, "stop");
    });
    if (!bRead) continue;
    Backup oBackup = NewBackup(ValueOf(oLabels, "LABEL"), "BASE BACKUP", kCompleteData, lStop);
    oBackup.Start = StartOf(oLabels);
    const std::string sEnd = ValueOf(oLabels, "STOP WAL LOCATION");
    oBackup.Item.Fields = {{"Source", "label file " + oEntry.path().filename().string()},
                           {"Log", oBackup.Start + " to " + sEnd.substr(0, sEnd.find(' '))},
                           {"Method", ValueOf(oLabels, "BACKUP METHOD")},
                           {"From", ValueOf(oLabels, "BACKUP FROM")}};
    backups.push_back(std::move(oBackup));
  }
}

std::string BackupKey(Server& oServer, const std::string& sPath) { return oServer.Key() + " backup " + sPath; }

void AddRegistered(std::vector<Backup>& backups, Server& oServer) {
  const auto& oStore = oServer.Options().Observations;
  if (!oStore) return;
  for (const auto& oCopy : oStore->Copies(oServer.Key())) {
    Backup oBackup = NewBackup(oCopy.Label, "BACKUP", kCompleteData, Calendar::TimeOf(oCopy.Made));
    oBackup.Item.Date = oCopy.Made;
    oBackup.RestoreCommand = oStore->Facts(BackupKey(oServer, oCopy.File))[kRestoreCommand];
    std::error_code oError;
    const bool bThere = fs::exists(oCopy.File, oError);
    const LabelFile oLabels = ReadLabelFile(oCopy.File + "/backup_label");
    oBackup.Start = StartOf(oLabels);
    if (!oBackup.Start.empty() && fs::exists(oCopy.File + "/PG_VERSION", oError)) oBackup.Directory = oCopy.File;
    oBackup.Item.Fields = {{"Source", "registered by the program that made it"},
                           {"File", oCopy.File},
                           {"File now", bThere ? "there" : "not there"}};
    if (!oBackup.Start.empty()) oBackup.Item.Fields.push_back({"Log", "from " + oBackup.Start});
    if (!oBackup.RestoreCommand.empty()) {
      oBackup.Item.Fields.push_back({"Restore command", oBackup.RestoreCommand});
    }
    backups.push_back(std::move(oBackup));
  }
}

void AddArchiver(std::vector<Backup>& backups, Server& oServer) {
  oServer.Use([&](Connection& oConnection) {
    const Result o = oConnection.Execute(
        "SELECT archived_count, last_archived_wal, extract(epoch FROM last_archived_time)::bigint AS archived, "
        "failed_count, last_failed_wal, extract(epoch FROM last_failed_time)::bigint AS failed FROM pg_stat_archiver",
        kReading);
    const std::int64_t lArchived = o.Number(0, "archived");
    const std::int64_t lFailed = o.Number(0, "failed");
    if (lArchived == 0 && lFailed == 0) return;
    const bool bFails = lFailed > lArchived;
    Backup oBackup = NewBackup(o.Text(0, bFails ? "last_failed_wal" : "last_archived_wal"), "ARCHIVE LOG", kLog,
                               std::max(lArchived, lFailed));
    oBackup.Completed = 0;
    if (bFails) {
      oBackup.Item.ReturnCode = 1;
      oBackup.Item.ErrorText = "The archive command failed for segment " + oBackup.Item.Label;
    }
    oBackup.Item.Fields = {{"Source", "archiver"},
                           {"Segments archived", o.Text(0, "archived_count")},
                           {"Last one archived", o.Text(0, "last_archived_wal")},
                           {"Failures", o.Text(0, "failed_count")}};
    backups.push_back(std::move(oBackup));
  });
}

/// One backup can be told of by several: the first one stays, and is complete when
/// all say so.
void RemoveDuplicates(std::vector<Backup>& backups) {
  std::vector<Backup> once;
  for (Backup& oBackup : backups) {
    const auto it = std::find_if(once.begin(), once.end(), [&](const Backup& oOther) {
      return !oBackup.Start.empty() && oBackup.Start == oOther.Start;
    });
    if (it == once.end()) {
      once.push_back(std::move(oBackup));
    } else {
      it->Completed = std::max(it->Completed, oBackup.Completed);
    }
  }
  backups = std::move(once);
}

}  // namespace

std::string FindPgBackRest() {
  const char* sPath = std::getenv("PATH");
  std::istringstream oFolders(sPath ? sPath : "/usr/bin");
  for (std::string sFolder; std::getline(oFolders, sFolder, ':');) {
    const std::string sProgram = sFolder + "/pgbackrest";
    if (sFolder.starts_with('/') && access(sProgram.c_str(), X_OK) == 0) return sProgram;
  }
  return {};
}

std::vector<Backup> BackupsOf(Server& oServer) {
  std::vector<Backup> backups;
  if (oServer.Connected()) {
    const LocalServer* pLocal = oServer.Local();
    if (pLocal) AddPgBackRest(backups, oServer);
    AddRegistered(backups, oServer);
    if (pLocal && pLocal->IsOwner()) AddBaseBackups(backups, oServer, *pLocal);
    AddArchiver(backups, oServer);
  } else {
    AddRegistered(backups, oServer);
    if (backups.empty()) throw ZELLib3::InstanceError(oServer.Read()->Why);
  }
  RemoveDuplicates(backups);
  std::stable_sort(backups.begin(), backups.end(),
                   [](const Backup& a, const Backup& b) { return a.Item.Date > b.Item.Date; });
  return backups;
}

void Register(Server& oServer, const RegisteredBackup& oBackup) {
  Instances::ObservationStore& oStore = *oServer.Options().Observations;
  if (!oBackup.RestoreCommand.empty()) {
    oStore.Remember(BackupKey(oServer, oBackup.Path), {{kRestoreCommand, oBackup.RestoreCommand}});
  }
  oStore.Add(oServer.Key(), {oBackup.Path, oBackup.Completed, oBackup.Label, -1});
}

}  // namespace ZELWbr3::Postgres
