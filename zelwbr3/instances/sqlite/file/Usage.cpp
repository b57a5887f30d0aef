#include "zelwbr3/instances/sqlite/file/Usage.h"

#include "zelwbr3/instances/sqlite/file/Connection.h"
#include "zelwbr3/instances/sqlite/file/Statement.h"

#include <sqlite3.h>

#include <algorithm>

namespace ZELWbr3::SQLite {

namespace {

class ReadTransaction {
 public:
  explicit ReadTransaction(Connection& oConnection) : m_pHandle(oConnection.Handle()) {
    oConnection.EndCursor();  // its moment would become that of the transaction
    Execute(m_pHandle, "BEGIN", "beginning to read");
  }
  // The end of a transaction that has only read cannot fail.
  ~ReadTransaction() { sqlite3_exec(m_pHandle, "COMMIT", nullptr, nullptr, nullptr); }
  ReadTransaction(const ReadTransaction&) = delete;
  ReadTransaction& operator=(const ReadTransaction&) = delete;

 private:
  sqlite3* m_pHandle;
};

std::int64_t HandleStatus(const Connection& oConnection, int lCounter) {
  int iCurrent = 0;
  int iHighest = 0;
  sqlite3_db_status(oConnection.Handle(), lCounter, &iCurrent, &iHighest, 0);
  return iCurrent;
}

}  // namespace

Usage Usage::Read(Connection& oConnection) {
  const ReadTransaction oTransaction(oConnection);
  Usage oUsage;
  const int iUnit = UnitOf(oConnection.PageSize());
  oUsage.PagesInUnit = iUnit / oConnection.PageSize();
  const std::int64_t lPages = oConnection.Number("PRAGMA main.page_count", "reading the page count");
  const std::int64_t lFree = oConnection.Number("PRAGMA main.freelist_count", "reading the number of free pages");
  oUsage.PageCount = oUsage.PagesOf(lPages);
  oUsage.FreePages = lFree / oUsage.PagesInUnit;
  oUsage.TempPages = oUsage.PagesOf(oConnection.Number("PRAGMA temp.page_count", "reading the temporary page count"));
  oUsage.IsFull = lPages >= oConnection.MaxPageCount() && lFree == 0;
  oUsage.File = oConnection.File();
  oUsage.UsesWal = oConnection.UsesWal();
  oUsage.Wal = WalFile::Read(oConnection);
  oUsage.AutoCheckpoint =
      std::max<std::int64_t>(0, oConnection.Number("PRAGMA wal_autocheckpoint", "reading the checkpoint limit"));
  // Negative: the limit is not pages but KB.
  const std::int64_t lLimit = oConnection.Number("PRAGMA main.cache_size", "reading the cache size");
  oUsage.CachePages = lLimit < 0 ? -lLimit * 1024 / iUnit : oUsage.PagesOf(lLimit);
  const std::int64_t lUsedBytes = HandleStatus(oConnection, SQLITE_DBSTATUS_CACHE_USED);
  oUsage.CacheUsed = std::min(lUsedBytes / iUnit, oUsage.CachePages);
  oUsage.CacheHits = HandleStatus(oConnection, SQLITE_DBSTATUS_CACHE_HIT);
  oUsage.CacheMisses = HandleStatus(oConnection, SQLITE_DBSTATUS_CACHE_MISS);
  oUsage.CacheWrites = HandleStatus(oConnection, SQLITE_DBSTATUS_CACHE_WRITE);
  oUsage.SchemaBytes = HandleStatus(oConnection, SQLITE_DBSTATUS_SCHEMA_USED);
  return oUsage;
}

}  // namespace ZELWbr3::SQLite
