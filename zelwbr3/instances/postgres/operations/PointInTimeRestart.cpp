#include "zelwbr3/instances/postgres/operations/PointInTimeRestart.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/SizeText.h"
#include "zelwbr3/instances/common/Process.h"

#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace ZELWbr3::Postgres {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

/// A terabyte from a slow disk.
constexpr auto kCopyTimeout = 6h;
/// The server writes while it recovers.
constexpr std::int64_t kReserve = std::int64_t{64} << 20;

std::string InUTC(std::time_t tTime, const char* sFormat) {
  std::tm oTime{};
  gmtime_r(&tTime, &oTime);
  std::array<char, 40> text{};
  return {text.data(), std::strftime(text.data(), text.size(), sFormat, &oTime)};
}

std::string StampOf(const ZELLib3::Date& d) {
  std::string sStamp = Calendar::ISOText(d);
  std::erase_if(sStamp, [](char c) { return c < '0' || c > '9'; });
  return sStamp;
}

std::int64_t BytesIn(const std::string& sFolder) {
  std::int64_t lBytes = 0;
  for (const auto& oEntry : fs::recursive_directory_iterator(sFolder)) {
    if (oEntry.is_regular_file()) lBytes += static_cast<std::int64_t>(oEntry.file_size());
  }
  return lBytes;
}

dev_t DeviceOf(const std::string& sPath) {
  struct stat oStat {};
  return stat(sPath.c_str(), &oStat) == 0 ? oStat.st_dev : 0;
}

}  // namespace

PointInTimeRestart::PointInTimeRestart(ServerControl& oControl, Backup oBackup, std::time_t tUntil)
    : m_oControl(oControl),
      m_oBackup(std::move(oBackup)),
      m_tUntil(tUntil),
      m_sData(fs::path(oControl.Server().DataDirectory()).lexically_normal()),
      m_sOld(m_sData + ".before-" + StampOf(Calendar::Now())) {}

std::string PointInTimeRestart::Target() const { return InUTC(m_tUntil, "%Y-%m-%d %H:%M:%S+00"); }

void PointInTimeRestart::Check() const {
  const std::string sParent = fs::path(m_sData).parent_path();
  if (access(sParent.c_str(), W_OK) != 0) {
    throw std::runtime_error("the data directory cannot be kept beside itself: " + sParent + " cannot be written");
  }
  if (fs::is_symlink(m_sData) || DeviceOf(m_sData) != DeviceOf(sParent)) {
    throw std::runtime_error(m_sData + " is a link or a file system of its own, which cannot be renamed");
  }
  if (fs::is_symlink(m_sData + "/pg_wal")) {
    throw std::runtime_error("its log lies elsewhere, behind the link " + m_sData +
                             "/pg_wal, which a backup does not bring back");
  }
  const std::int64_t lNeeded = m_oBackup.Directory.empty() ? m_oBackup.Bytes : BytesIn(m_oBackup.Directory);
  for (const FileSystem& oDisk : FileSystemsOf({sParent})) {
    if (oDisk.BytesLeft >= lNeeded + kReserve) continue;
    throw std::runtime_error("the backup needs " + SizeText(lNeeded) + ", and there are " + SizeText(oDisk.BytesLeft) +
                             " left in " + sParent);
  }
}

void PointInTimeRestart::Run() {
  fs::rename(m_sData, m_sOld);
  try {
    Restore();
    Replay();
  } catch (const std::exception& oError) {
    const std::string sWhy = oError.what();
    try {
      PutBack();
    } catch (const std::exception& oFailure) {
      throw std::runtime_error(sWhy + "; and the old data directory, " + m_sOld +
                               ", cannot be put back: " + oFailure.what());
    }
    throw std::runtime_error(sWhy);
  }
}

void PointInTimeRestart::Restore() const {
  if (m_oBackup.Stanza.empty()) {
    CopyDirectory();
  } else {
    RestoreByPgBackRest();
  }
  // The configuration is today's; without the options of the last start, it would
  // not be found where it lies elsewhere.
  for (const char* sFile : {"postmaster.opts", "postgresql.conf", "pg_hba.conf", "pg_ident.conf"}) CopyFromOld(sFile);
  CopyUnarchived();
}

void PointInTimeRestart::RestoreByPgBackRest() const {
  fs::create_directory(m_sData);
  fs::permissions(m_sData, fs::status(m_sOld).permissions());
  Instances::RunProgram(
      {{FindPgBackRest(), "--stanza=" + m_oBackup.Stanza, "--repo=" + m_oBackup.Repository,
        "--set=" + m_oBackup.Item.Label, "--pg1-path=" + m_sData, "--type=time", "--target=" + Target(),
        "--target-action=promote", "--log-level-console=off", "--log-level-stderr=error", "restore"},
       {}},
      kCopyTimeout);
}

void PointInTimeRestart::CopyDirectory() const {
  Instances::RunProgram({{"/bin/cp", "-a", "--", m_oBackup.Directory, m_sData}, {}}, kCopyTimeout);
  for (const char* sFile : {"postmaster.pid", "standby.signal"}) fs::remove(m_sData + "/" + sFile);
  CopyFromOld("postgresql.auto.conf");
  std::ofstream(m_sData + "/recovery.signal").flush();
}

void PointInTimeRestart::CopyFromOld(const std::string& sFile) const {
  if (!fs::exists(m_sOld + "/" + sFile)) return;
  fs::copy_file(m_sOld + "/" + sFile, m_sData + "/" + sFile, fs::copy_options::overwrite_existing);
}

/// What was committed last may not have reached the archive.
void PointInTimeRestart::CopyUnarchived() const {
  for (const auto& oEntry : fs::directory_iterator(m_sOld + "/pg_wal/archive_status")) {
    const fs::path oSegment = oEntry.path().filename();
    if (oSegment.extension() == ".ready") CopyFromOld("pg_wal/" + oSegment.stem().string());
  }
}

void PointInTimeRestart::Replay() {
  if (!m_oBackup.Stanza.empty()) return m_oControl.Recover({});  // it has written what is needed
  m_oControl.Recover({"restore_command=" + m_oBackup.RestoreCommand, "recovery_target_time=" + Target(),
                      "recovery_target_inclusive=on", "recovery_target_timeline=latest",
                      "recovery_target_action=promote"});
  m_oControl.Stop();
  m_oControl.Start();
}

void PointInTimeRestart::PutBack() {
  m_oControl.Stop();
  fs::remove_all(m_sData);
  fs::rename(m_sOld, m_sData);
}

}  // namespace ZELWbr3::Postgres
