#include "instances/sqlite/Spool.h"

#include "instances/sqlite/Handle.h"

#include <sqlite3.h>

#include <cerrno>
#include <cstring>

namespace ZELWbr3::SQLite {

Spool::Spool() : m_oFile(std::tmpfile()) {
  if (!m_oFile) Raise("making");
}

void Spool::Raise(const char* sWhat) {
  RaiseError(errno == ENOSPC ? SQLITE_FULL : SQLITE_IOERR, "temporary file",
             std::string(sWhat) + ": " + std::strerror(errno));
}

void Spool::WriteSize(std::size_t lSize) {
  if (std::fwrite(&lSize, sizeof lSize, 1, m_oFile.get()) != 1) Raise("writing");
}

std::size_t Spool::ReadSize() {
  std::size_t lSize = 0;
  if (std::fread(&lSize, sizeof lSize, 1, m_oFile.get()) != 1) Raise("reading");
  return lSize;
}

void Spool::Write(const RowTexts& oRow) {
  WriteSize(oRow.size());
  for (const std::string& sText : oRow) {
    WriteSize(sText.size());
    if (std::fwrite(sText.data(), 1, sText.size(), m_oFile.get()) != sText.size()) Raise("writing");
    m_lBytes += static_cast<std::int64_t>(sText.size());
  }
  ++m_lRows;
}

RowTexts Spool::Read() {
  if (!std::exchange(m_bReading, true)) {
    if (std::fflush(m_oFile.get()) != 0) Raise("writing");
    std::rewind(m_oFile.get());
  }
  RowTexts oRow(ReadSize());
  for (std::string& sText : oRow) {
    sText.resize(ReadSize());
    if (std::fread(sText.data(), 1, sText.size(), m_oFile.get()) != sText.size()) Raise("reading");
  }
  --m_lRows;
  return oRow;
}

}  // namespace ZELWbr3::SQLite
