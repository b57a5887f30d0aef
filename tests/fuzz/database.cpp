#include "tests/fuzz/FuzzTarget.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"

namespace {

/// Where the write-ahead log begins that follows a database in an input: at a
/// page of 512 bytes, with its magic number.
std::size_t FindLog(std::string_view sBytes) {
  for (std::size_t i = 512; i + 4 <= sBytes.size(); i += 512) {
    if (sBytes.substr(i, 3) == "\x37\x7f\x06" && (static_cast<unsigned char>(sBytes[i + 3]) & 0xFE) == 0x82) return i;
  }
  return sBytes.size();
}

/// The rows of the first tables and views that the schema names.
void ReadTables(ZELLib3::Database& oDatabase) {
  const auto oList = oDatabase.SQLTables()->NewTable();
  oList->Owner("SYSDD");
  oList->Name("TABLES");
  if (!oList->Open()) return;
  for (int i = 0; i < 20 && oList->NextRow(); ++i) {
    const auto oTable = oDatabase.SQLTables()->NewTable();
    oTable->Owner(oList->Value(0));
    oTable->Name(oList->Value(1));
    if (!oTable->Open()) continue;
    do {
      while (oTable->NextRow()) {
        for (int iColumn = 0; iColumn < oTable->ColumnCount(); ++iColumn) oTable->Value(iColumn);
      }
    } while (oTable->RowCount() < 1000 && oTable->HasMore() && oTable->ReadMore());
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* pBytes, std::size_t lBytes) {
  const std::string_view sBytes(reinterpret_cast<const char*>(pBytes), lBytes);
  const std::size_t lLog = FindLog(sBytes);
  for (const char* sLeft : {"a.db-shm", "a.db-wal", "a.db-journal"}) std::filesystem::remove(Fuzz::Folder() / sLeft);
  const std::string sPath = Fuzz::Write("a.db", sBytes.substr(0, lLog));
  if (lLog < lBytes) Fuzz::Write("a.db-wal", sBytes.substr(lLog));
  ZELWbr3::SQLite::LimitMemory(256 << 20);
  ZELWbr3::SQLite::Options oOptions;
  oOptions.ReadingTimeout = std::chrono::milliseconds(20);
  oOptions.StateFolder = Fuzz::Folder() / "state";
  try {
    const auto oDatabase = ZELWbr3::SQLite::OpenDatabase(sPath, oOptions);
    ReadTables(*oDatabase);
    Fuzz::Exercise(oDatabase, lBytes);
    oDatabase->Admin();
    oDatabase->Online();
  } catch (const ZELLib3::InstanceError&) {
    // Most inputs are none.
  }
  return 0;
}
