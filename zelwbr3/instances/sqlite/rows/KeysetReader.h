#pragma once

#include "zelwbr3/instances/sqlite/file/Statement.h"
#include "zelwbr3/instances/sqlite/rows/CursorReader.h"
#include "zelwbr3/instances/sqlite/rows/TableKey.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

/// The rows of a table in the order of its key. Each block continues after the
/// last key of the one before, so a row costs the same wherever it stands, and
/// rows that come and go elsewhere do not shift it.
///
/// A table without rowid in which a row is too long is read on as any query is:
/// looking for a key, the library would read such a row into memory.
class KeysetReader : public StatementReader {
 public:
  /// oKey has columns. Raises ZELLib3::InstanceError when the table cannot be
  /// read.
  KeysetReader(Connection& oConnection, TableKey oKey);

 private:
  using Key = std::vector<StoredValue>;

  bool Continue(Connection& oConnection, Instances::RowBlock& oBlock) override;
  Instances::RowTexts LongRow(Connection& oConnection, std::size_t lInBlock) override;
  void Deliver(const Instances::RowBlock& oBlock) override;
  void Pause() override;
  Key KeyOf(const Statement& oStatement) const;
  /// What is selected of the rows after the last one read.
  Statement Select(Connection& oConnection, const std::string& sWhat, std::size_t lLimit) const;
  /// What is shown of a long text or blob, of which only that is read. No value
  /// for one that is not long, or that the library cannot read in parts.
  std::optional<std::string> PartOf(Connection& oConnection, const std::string& sColumn, const Key& oKey,
                                    bool bIsBlob) const;

  TableKey m_oKey;
  std::string m_sAsked;
  int m_iKeys;
  std::shared_ptr<const Key> m_oRead;       ///< of the last row read; null before the first
  std::shared_ptr<const Key> m_oDelivered;  ///< of the last row delivered
  std::int64_t m_lDelivered = 0;            ///< rows
  std::unique_ptr<CursorReader> m_oCursor;  ///< once a row was too long to go by the key
};

}  // namespace ZELWbr3::SQLite
