#pragma once

#include "zelwbr3/instances/postgres/rows/StatementReader.h"

#include <cstddef>
#include <deque>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// What a table can be read on by, after any of its values and without stepping
/// over what comes before.
struct TableKey {
  std::vector<std::string> Columns;  ///< as they stand in a statement
  std::vector<std::string> Types;
  /// The rows come in its order by themselves, and sorting them would cost.
  bool IsStoredOrder = false;

  /// No columns when there is none. Raises ServerError.
  static TableKey Of(Connection& oConnection, const std::string& sRelation);
  /// Where a row is stored. One that is changed moves: it may come twice, or not
  /// at all.
  static TableKey Tid() { return {{"r.ctid"}, {"tid"}, true}; }

  /// "(a, b) > ($1::int, $2::text)".
  std::string After() const;
  std::string List() const;
};

/// The rows of a table in the order of a key. Each block continues after the last
/// key of the one before, so a row costs the same wherever it stands, and rows that
/// come and go elsewhere do not shift it. While blocks are read one after the other,
/// one statement reads several of them; a pause drops what was read ahead.
class KeysetReader : public StatementReader {
 public:
  KeysetReader(CellColumns oCells, std::string sFrom, TableKey oKey, std::string sAsked)
      : StatementReader(std::move(oCells), std::move(sFrom), std::move(sAsked)), m_oKey(std::move(oKey)) {}

  void Pause() override;

 private:
  static constexpr std::size_t MostBlocks = 8;
  struct Row {
    Instances::RowTexts Texts;
    Connection::Parameters Key;
  };

  bool Continue(Connection& oConnection, Instances::RowBlock& oBlock) override;
  void Deliver(const Instances::RowBlock&) override { m_delivered = m_read; }

  bool ReadAhead(Connection& oConnection, std::deque<Row>& ahead);

  TableKey m_oKey;
  std::size_t m_lBlocks = 1;           ///< that the next statement reads
  std::deque<Row> m_ahead;             ///< read, not delivered yet
  Connection::Parameters m_read;       ///< key of the last row read; empty before the first
  Connection::Parameters m_delivered;  ///< of the last row delivered
};

}  // namespace ZELWbr3::Postgres
