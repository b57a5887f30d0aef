#include "zelwbr3/instances/sqlite/SQLiteSessions.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/sqlite/file/FileLock.h"
#include "zelwbr3/instances/sqlite/file/OpenFiles.h"

namespace ZELWbr3::SQLite {

namespace {

enum class In { Database, LogIndex };

/// What a lock on these bytes means.
struct Meaning {
  In Where;
  std::int64_t First;
  std::int64_t Last;
  bool IsExclusive;
  const char* Text;
};

// Where the library puts its locks in the index of the log, after its header.
constexpr std::int64_t kWriter = 120;
constexpr std::int64_t kCheckpoint = 121;
constexpr std::int64_t kRecover = 122;
constexpr std::int64_t kReader = 123;
constexpr std::int64_t kReaderEnd = 127;

// Of those in the database file the first that fits says it all.
constexpr Meaning kMeanings[] = {
    {In::Database, FileLock::Shared, FileLock::SharedEnd, true, "exclusive"},
    {In::Database, FileLock::Pending, FileLock::Pending, true, "pending"},
    {In::Database, FileLock::Reserved, FileLock::Reserved, true, "reserved"},
    {In::Database, FileLock::Shared, FileLock::SharedEnd, false, "shared"},
    {In::LogIndex, kWriter, kWriter, true, "writes the log"},
    {In::LogIndex, kCheckpoint, kCheckpoint, true, "copies the log"},
    {In::LogIndex, kRecover, kRecover, true, "recovers the log"},
    {In::LogIndex, kReader, kReaderEnd, false, "reads"},
};

constexpr const char* NoLock = "none";

std::string LockText(const std::vector<OpenFiles::Lock>& oLocks, int iProcess, ino_t lDatabase, ino_t lLogIndex) {
  std::string sText;
  bool bDatabase = false;
  for (const Meaning& oMeaning : kMeanings) {
    const bool bInDatabase = oMeaning.Where == In::Database;
    if (bInDatabase && bDatabase) continue;
    for (const OpenFiles::Lock& oLock : oLocks) {
      if (oLock.Process != iProcess || oLock.Inode != (bInDatabase ? lDatabase : lLogIndex)) continue;
      if (oLock.IsExclusive != oMeaning.IsExclusive || oLock.Last < oMeaning.First || oLock.First > oMeaning.Last) {
        continue;
      }
      sText += (sText.empty() ? "" : ", ") + std::string(oMeaning.Text);
      bDatabase = bDatabase || bInDatabase;
      break;
    }
  }
  return sText.empty() ? NoLock : sText;
}

std::vector<Instances::ListedSession::Entry> Holders(const InstanceFile& oFile) {
  std::vector<Instances::ListedSession::Entry> oSessions;
  const auto oDatabase = FileId::Of(oFile.Path());
  if (!oDatabase) return oSessions;
  const auto oLogIndex = FileId::Of(oFile.PathBeside("-shm"));
  const auto oLocks = OpenFiles::Locks();
  for (const OpenFiles::Process& oProcess : OpenFiles::Holders(*oDatabase)) {
    const std::string sLock =
        oLocks ? LockText(*oLocks, oProcess.ID, oDatabase->Inode, oLogIndex ? oLogIndex->Inode : 0) : std::string();
    const bool bDated = oProcess.Since != ZELLib3::Date{};
    const std::optional<bool> oActive = oLocks ? std::optional(sLock != NoLock) : std::nullopt;
    oSessions.push_back({{std::to_string(oSessions.size() + 1), std::to_string(oProcess.ID), oProcess.Program,
                          oProcess.User, bDated ? Calendar::ISOText(oProcess.Since, ' ') : std::string(), sLock},
                         oActive,
                         {}});
  }
  return oSessions;
}

}  // namespace

std::vector<Instances::ListedSession::Entry> SQLiteSessions::Read() const { return Holders(*m_oFile); }

bool SQLiteSessions::Refresh() {
  Forget();
  if (FileId::Of(m_oFile->Path())) return true;
  return m_oFile->Refuse("no such file");
}

}  // namespace ZELWbr3::SQLite
