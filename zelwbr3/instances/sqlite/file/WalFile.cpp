#include "zelwbr3/instances/sqlite/file/WalFile.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"

#include <sqlite3.h>

#include <cstring>

namespace ZELWbr3::SQLite {

namespace {

constexpr std::int64_t kWalHeaderBytes = 32;
constexpr std::int64_t kFrameHeaderBytes = 24;

// The index of the log in shared memory, in the machine's byte order: a header
// of 48 bytes, a second copy of it, then what the checkpoints have done. A
// writer writes the second copy first, so equal copies are a valid header.
constexpr int kIndexRegionBytes = 32768;
constexpr std::size_t kIndexHeaderBytes = 48;
constexpr std::size_t kInitialized = 12;
constexpr std::size_t kLastFrame = 16;
constexpr std::size_t kCheckpointed = 96;

std::uint32_t Number(const volatile char* pIndex, std::size_t lOffset) {
  return *reinterpret_cast<const volatile std::uint32_t*>(pIndex + lOffset);
}

/// Two copies that differ are being written at this moment: looked at again,
/// not for ever.
bool IsSettled(const volatile char* pIndex) {
  for (int iTry = 0; iTry < 1000; ++iTry) {
    bool bEqual = true;
    for (std::size_t i = 0; i < kIndexHeaderBytes; i += 4) {
      bEqual = bEqual && Number(pIndex, i) == Number(pIndex, i + kIndexHeaderBytes);
    }
    if (bEqual) return pIndex[kInitialized] != 0;
  }
  return false;
}

}  // namespace

std::int64_t WalFile::FramesIn(std::int64_t lFileBytes, int iPageSize) {
  return lFileBytes > kWalHeaderBytes ? (lFileBytes - kWalHeaderBytes) / (kFrameHeaderBytes + iPageSize) : 0;
}

WalFile WalFile::Read(const Connection& oConnection) {
  WalFile oResult;
  if (!oConnection.SharesWal()) return oResult;
  if (const auto oFile = FileId::Of(oConnection.WalPath())) {
    oResult.FileFrames = FramesIn(oFile->Bytes, oConnection.PageSize());
  }
  // Mapped already by the read transaction. Opening the shared memory file
  // here would, on closing it, drop the locks that this process holds on it.
  volatile void* pRegion = nullptr;
  sqlite3_file* pFile = oConnection.MainFile();
  const int rc = pFile->pMethods->iVersion >= 2 && pFile->pMethods->xShmMap
                     ? pFile->pMethods->xShmMap(pFile, 0, kIndexRegionBytes, 0, &pRegion)
                     : SQLITE_OK;
  const auto* pIndex = static_cast<const volatile char*>(pRegion);
  if ((rc & 0xff) != SQLITE_OK && (rc & 0xff) != SQLITE_READONLY) {
    RaiseError(rc, oConnection.WalPath(), "reading the log's index: " + std::string(sqlite3_errstr(rc)));
  }
  if (pIndex && IsSettled(pIndex)) {
    oResult.Frames = Number(pIndex, kLastFrame);
    oResult.Checkpointed = Number(pIndex, kCheckpointed);
  } else {
    // Without a valid index it is not known which frames have been copied.
    oResult.Frames = oResult.FileFrames;
  }
  return oResult;
}

}  // namespace ZELWbr3::SQLite
