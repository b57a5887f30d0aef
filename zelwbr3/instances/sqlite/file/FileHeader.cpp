#include "zelwbr3/instances/sqlite/file/FileHeader.h"

#include "zelwbr3/instances/sqlite/file/Handle.h"

#include <sqlite3.h>

#include <cstring>
#include <string_view>

namespace ZELWbr3::SQLite {

namespace {

constexpr std::string_view kMagic("SQLite format 3\0", 16);
constexpr int kPageSize = 16;       // big-endian, 1 = 65536
constexpr int kVersionToRead = 19;  // 2 = WAL mode

}  // namespace

FileHeader::Bytes FileHeader::ReadBytes(sqlite3_file* pFile, const std::string& sPath) {
  constexpr int kBytes = static_cast<int>(Size);
  Bytes bytes{};
  sqlite3_int64 lFileBytes = kBytes;
  int rc = pFile->pMethods->xRead(pFile, bytes.data(), kBytes, 0);
  if (rc == SQLITE_IOERR_SHORT_READ) rc = pFile->pMethods->xFileSize(pFile, &lFileBytes);
  if (rc != SQLITE_OK) RaiseError(rc, sPath, "reading the file header: " + std::string(sqlite3_errstr(rc)));
  if (lFileBytes == 0) return {};
  if (lFileBytes < kBytes || std::memcmp(bytes.data(), kMagic.data(), kMagic.size()) != 0) {
    RaiseError(SQLITE_NOTADB, sPath, "is not a SQLite database, or it is encrypted");
  }
  return bytes;
}

FileHeader FileHeader::Read(sqlite3_file* pFile, const std::string& sPath) {
  const Bytes bytes = ReadBytes(pFile, sPath);
  if (bytes[0] == 0) return {};
  const int iStored = bytes[kPageSize] << 8 | bytes[kPageSize + 1];
  const int iPageSize = iStored == 1 ? 65536 : iStored;
  if (iPageSize < 512 || (iPageSize & (iPageSize - 1)) != 0) {
    RaiseError(SQLITE_NOTADB, sPath, "has a damaged header: page size " + std::to_string(iStored));
  }
  return {iPageSize, bytes[kVersionToRead] == 2};
}

}  // namespace ZELWbr3::SQLite
