#pragma once

#include "instances/sqlite/RowBlock.h"

#include <cstdint>
#include <cstdio>
#include <memory>
#include <utility>

namespace ZELWbr3::SQLite {

/// Rows on their way, in a temporary file without a name: first written, then
/// read in the same order. Failures raise ZELLib3::InstanceError.
class Spool {
 public:
  Spool();

  void Write(const RowTexts& oRow);
  /// The next row; call only while there are Rows left. After the first call
  /// nothing is written any more.
  RowTexts Read();

  /// Written and not yet read.
  std::int64_t Rows() const { return m_lRows; }
  /// Written altogether.
  std::int64_t Bytes() const { return m_lBytes; }

 private:
  struct CloseFile {
    void operator()(std::FILE* pFile) const { std::fclose(pFile); }
  };

  void WriteSize(std::size_t lSize);
  std::size_t ReadSize();
  [[noreturn]] static void Raise(const char* sWhat);

  std::unique_ptr<std::FILE, CloseFile> m_oFile;
  std::int64_t m_lRows = 0;
  std::int64_t m_lBytes = 0;
  bool m_bReading = false;
};

}  // namespace ZELWbr3::SQLite
