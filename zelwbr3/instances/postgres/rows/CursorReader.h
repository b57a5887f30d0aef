#pragma once

#include "zelwbr3/instances/postgres/rows/StatementReader.h"

#include <cstddef>
#include <deque>
#include <memory>

namespace ZELWbr3::Postgres {

/// The rows of a view or any query, where there is no key by which it could be
/// continued.
///
/// Returning to a row means stepping over all rows before it, and perhaps sorting
/// them again. So while blocks are read one after the other the statement stays
/// open, and each costs its own rows only. A pause ends it, and so do the end of
/// the rows and anything else that is asked of the connection.
class CursorReader : public StatementReader {
 public:
  CursorReader(CellColumns oCells, std::string sFrom, std::string sAsked)
      : StatementReader(std::move(oCells), std::move(sFrom), std::move(sAsked)) {}
  /// The rows of a query that stands between sFrom's brackets.
  static std::unique_ptr<CursorReader> Of(Connection& oConnection, const std::string& sSQL, const std::string& sAsked);

  void Pause() override;

 private:
  using Cursor = std::unique_ptr<Connection::Cursor>;

  bool Continue(Connection& oConnection, Instances::RowBlock& oBlock) override;
  void Deliver(const Instances::RowBlock& oBlock) override;
  bool Flow(Connection& oConnection, Instances::RowBlock& oBlock);
  std::string Offset() const { return " OFFSET " + std::to_string(m_lDelivered); }

  std::size_t m_lDelivered = 0;                           ///< rows
  std::size_t m_lInBlock = Instances::RowBlock::MaxRows;  ///< rows of the last block
  Cursor m_oCursor;
  std::deque<Instances::RowTexts> m_ahead;  ///< read from the cursor, not delivered yet
};

}  // namespace ZELWbr3::Postgres
