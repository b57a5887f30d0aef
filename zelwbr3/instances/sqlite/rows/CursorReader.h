#pragma once

#include "zelwbr3/instances/sqlite/file/Connection.h"
#include "zelwbr3/instances/sqlite/rows/RowReader.h"

#include <cstdint>

namespace ZELWbr3::SQLite {

/// The rows of any query, where there is no key by which it could be continued.
///
/// To come back to a row means to step over all before it, and perhaps to sort
/// them again. That is done for the first block and for one that is asked for
/// after a pause. As soon as blocks are asked for one after the other, the
/// statement stays open in between, so that each costs its own rows only. It is
/// ended by a pause, by the end of the rows, by whatever else is asked of the
/// connection, and when a writer waits for it.
class CursorReader : public RowReader {
 public:
  /// sSQL is one SELECT without a limit; sAsked stands in errors. Raises
  /// ZELLib3::InstanceError when it cannot be prepared.
  CursorReader(Connection& oConnection, const std::string& sSQL, std::string sAsked);

  bool Read(Connection& oConnection, Instances::RowBlock& oBlock) override;
  void Pause() override;

 private:
  /// The statement from the next row on; lLimit rows of it, -1 = all.
  Statement Continue(Connection& oConnection, std::int64_t lLimit) const;
  /// Fills the block from a statement whose current row is the first unless it
  /// has ended. Answers whether there is one behind the block.
  bool Fill(Statement& oStatement, Instances::RowBlock& oBlock);

  std::string m_sSQL;
  std::string m_sAsked;
  std::int64_t m_lRead = 0;    ///< rows delivered
  bool m_bFlowing = false;     ///< a block was read since the last pause
  Connection::Cursor m_oOpen;  ///< at the first row not delivered yet
};

}  // namespace ZELWbr3::SQLite
