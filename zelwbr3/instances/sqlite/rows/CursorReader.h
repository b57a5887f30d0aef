#pragma once

#include "zelwbr3/instances/sqlite/file/Connection.h"
#include "zelwbr3/instances/sqlite/rows/StatementReader.h"

#include <cstdint>
#include <string>

namespace ZELWbr3::SQLite {

/// The rows of any query, where there is no key by which it could be continued.
///
/// Returning to a row means stepping over all rows before it, and perhaps sorting
/// them again. That happens for the first block and for a block that is read
/// after a pause. While blocks are read one after the other the statement stays
/// open, so that each costs its own rows only. A pause ends it, and so do the
/// end of the rows, any other use of the connection, and a waiting writer.
class CursorReader : public StatementReader {
 public:
  /// sSQL is one SELECT without a limit, of which the first lFirst rows are left
  /// out; sAsked stands in errors. Raises ZELLib3::InstanceError when it cannot be
  /// prepared.
  CursorReader(Connection& oConnection, std::string sSQL, std::string sAsked, std::int64_t lFirst = 0);

  void Pause() override;

 private:
  friend class KeysetReader;  // which goes on as one

  bool Continue(Connection& oConnection, Instances::RowBlock& oBlock) override;
  Instances::RowTexts LongRow(Connection& oConnection, std::size_t lInBlock) override;
  void Deliver(const Instances::RowBlock& oBlock) override;
  /// The statement from a row on, counted from 0; lLimit rows of it, -1 = all.
  Statement StatementFrom(Connection& oConnection, const std::string& sSQL, std::int64_t lRow,
                          std::int64_t lLimit) const;
  /// Adds rows from the current one of a statement on until the block is full or
  /// the statement has ended. Answers whether there is one after the block.
  bool Fill(Statement& oStatement, Instances::RowBlock& oBlock);

  std::string m_sSQL;
  std::string m_sAsked;
  std::int64_t m_lRead;        ///< rows delivered
  bool m_bFlowing = false;     ///< a block was read since the last pause
  Connection::Cursor m_oOpen;  ///< at the first row not delivered yet
};

}  // namespace ZELWbr3::SQLite
