#include "zelwbr3/instances/sqlite/sample/SampleDatabase.h"

#include "zelwbr3/instances/common/Descriptor.h"
#include "zelwbr3/instances/common/UserFolder.h"
#include "zelwbr3/instances/sqlite/file/Handle.h"
#include "zelwbr3/instances/sqlite/sample/SampleRows.h"

#include <sqlite3.h>
#include <sys/file.h>

#include <cerrno>
#include <chrono>
#include <filesystem>
#include <stdexcept>
#include <system_error>
#include <thread>

namespace ZELWbr3::SQLite {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// Held by the process that makes the sample; the system takes it away from one
/// that dies.
class MakersLock {
 public:
  explicit MakersLock(const std::string& sPath) : m_oFile(sPath, O_RDWR | O_CREAT) {
    const auto dEnd = std::chrono::steady_clock::now() + 60s;
    while (flock(m_oFile, LOCK_EX | LOCK_NB) != 0) {
      if (errno != EWOULDBLOCK && errno != EINTR) Instances::RaiseSystemError(sPath);
      if (std::chrono::steady_clock::now() > dEnd) {
        throw std::runtime_error(sPath + ": another process has been making the sample database for a minute");
      }
      std::this_thread::sleep_for(20ms);
    }
  }

 private:
  Instances::Descriptor m_oFile;
};

void Remove(const std::string& sDatabase) {
  for (const char* sEnding : {"", "-wal", "-shm", "-journal"}) {
    std::error_code oIgnored;  // what stays in the way is reported by the next step
    fs::remove(sDatabase + sEnding, oIgnored);
  }
}

void WriteThrough(const std::string& sPath) {
  const Instances::Descriptor oFile(sPath, O_RDONLY);
  if (fsync(oFile) != 0) Instances::RaiseSystemError(sPath);
}

void Build(const std::string& sPath, const SampleProgress& oProgress) {
  const Handle oHandle = OpenHandle(sPath, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
  // Nobody else has the file, and one that is not finished is thrown away.
  const std::string sAsked = "making the sample database";
  Execute(oHandle.get(), "PRAGMA journal_mode=OFF; PRAGMA synchronous=OFF; PRAGMA cache_size=-65536", sAsked);
  SampleRows oRows(oHandle.get(), oProgress);
  oRows.WriteHistory();
  Execute(oHandle.get(), "PRAGMA journal_mode=WAL; PRAGMA wal_autocheckpoint=0", sAsked);
  sqlite3_db_config(oHandle.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  oRows.WriteToday();
}

}  // namespace

std::string SamplePath() { return Instances::UserFolder::Data() + "/sample.db"; }

void MakeSample(const std::string& sPath, const SampleProgress& oProgress) {
  const std::string sTarget = fs::absolute(sPath).lexically_normal();
  if (fs::exists(sTarget)) return;
  fs::create_directories(fs::path(sTarget).parent_path());
  const MakersLock oLock(sTarget + ".lock");
  if (fs::exists(sTarget)) return;  // made while this process waited

  const std::string sNew = sTarget + ".new";
  Remove(sNew);  // what a maker left that died
  try {
    Build(sNew, oProgress);
    WriteThrough(sNew);
    WriteThrough(sNew + "-wal");
    // The log first: the database is complete once it stands under its name.
    // An index that stands there alone is that of an older log.
    fs::remove(sTarget + "-shm");
    fs::rename(sNew + "-wal", sTarget + "-wal");
    fs::rename(sNew, sTarget);
    Remove(sNew);
  } catch (...) {
    Remove(sNew);
    throw;
  }
  if (oProgress) oProgress(100);
}

}  // namespace ZELWbr3::SQLite
