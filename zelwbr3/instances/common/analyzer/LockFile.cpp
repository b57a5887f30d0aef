#include "zelwbr3/instances/common/analyzer/LockFile.h"

#include <sys/stat.h>

#include <stdexcept>

namespace ZELWbr3::Instances {

namespace {

struct flock WholeFile() {
  struct flock oLock {};
  oLock.l_type = F_WRLCK;
  oLock.l_whence = SEEK_SET;
  return oLock;
}

/// A link would lead to a file of another kind, which the analyzer would
/// overwrite; a pipe would block.
Descriptor Open(const std::string& sPath, int lFlags) {
  const int lFile = open(sPath.c_str(), lFlags | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666);
  if (lFile < 0 && errno == ELOOP) throw std::runtime_error(sPath + ": is a symbolic link, not a lock file");
  Descriptor oFile(lFile, sPath);
  struct stat oStat {};
  if (fstat(oFile, &oStat) != 0) RaiseSystemError(sPath);
  if (!S_ISREG(oStat.st_mode)) throw std::runtime_error(sPath + ": is not a regular file");
  return oFile;
}

/// No value when there is no such file.
std::optional<Descriptor> OpenToRead(const std::string& sPath) {
  try {
    return Open(sPath, O_RDONLY);
  } catch (const std::system_error& oError) {
    if (oError.code() == std::errc::no_such_file_or_directory) return std::nullopt;
    throw;
  }
}

}  // namespace

LockFile::LockFile(const std::string& sPath, const std::string& sInstance)
    : m_sPath(sPath), m_oFile(Open(sPath, O_RDWR | O_CREAT)) {
  struct flock oLock = WholeFile();
  if (fcntl(m_oFile, F_SETLK, &oLock) == 0) return;
  if (errno != EACCES && errno != EAGAIN) RaiseSystemError(sPath);
  const auto lHolder = Holder(sPath);
  throw std::runtime_error(sInstance + ": the analyzer is running already" +
                           (lHolder ? ", as process " + std::to_string(*lHolder) : std::string()));
}

void LockFile::CheckInPlace() const {
  struct stat oHeld {};
  struct stat oFound {};
  if (fstat(m_oFile, &oHeld) != 0) RaiseSystemError(m_sPath);
  const bool bFound = lstat(m_sPath.c_str(), &oFound) == 0;
  if (!bFound && errno != ENOENT) RaiseSystemError(m_sPath);
  if (bFound && oHeld.st_dev == oFound.st_dev && oHeld.st_ino == oFound.st_ino) return;
  throw std::runtime_error(m_sPath + ": the lock file has been removed while the analyzer was running");
}

void LockFile::Write(const AnalyzerRecord& oRecord) {
  const std::string sBytes = oRecord.Encode();
  const ssize_t lWritten = pwrite(m_oFile, sBytes.data(), sBytes.size(), 0);
  if (lWritten == static_cast<ssize_t>(sBytes.size())) return;
  if (lWritten >= 0) errno = ENOSPC;
  RaiseSystemError(m_sPath);
}

std::optional<int> LockFile::Holder(const std::string& sPath) {
  const auto oFile = OpenToRead(sPath);
  if (!oFile) return std::nullopt;
  struct flock oLock = WholeFile();
  if (fcntl(*oFile, F_GETLK, &oLock) != 0) RaiseSystemError(sPath);
  return oLock.l_type == F_UNLCK ? std::nullopt : std::optional<int>(oLock.l_pid);
}

std::optional<AnalyzerRecord> LockFile::Read(const std::string& sPath) {
  const auto oFile = OpenToRead(sPath);
  if (!oFile) return std::nullopt;
  std::string sBytes(AnalyzerRecord::Bytes, '\0');
  // A record that is just being written shows as one that does not match its
  // check, and the next look finds it whole.
  for (int iTry = 0; iTry < 100; ++iTry) {
    const ssize_t lRead = pread(*oFile, sBytes.data(), sBytes.size(), 0);
    if (lRead < 0) RaiseSystemError(sPath);
    if (auto oRecord = AnalyzerRecord::Decode({sBytes.data(), static_cast<std::size_t>(lRead)})) return oRecord;
  }
  return std::nullopt;
}

}  // namespace ZELWbr3::Instances
