#pragma once

#include "zelwbr3/instances/postgres/rows/CellColumns.h"
#include "zelwbr3/instances/postgres/rows/RowReader.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// The rows that statements give, block by block.
///
/// While a page is only looked at, nothing is open on the server: a snapshot would
/// keep VACUUM from removing rows, and a lock would stand in the way of changes. So
/// the rows of different blocks can be of different moments.
class StatementReader : public RowReader {
 public:
  bool Read(Connection& oConnection, Instances::RowBlock& oBlock) override;

 protected:
  /// sFrom is "FROM … AS r"; sAsked stands in errors.
  StatementReader(CellColumns oCells, std::string sFrom, std::string sAsked);

  /// Adds the rows after those that were delivered. As Read, but raises as soon as
  /// a row cannot be read.
  virtual bool Continue(Connection& oConnection, Instances::RowBlock& oBlock) = 0;
  /// The rows of the block are delivered.
  virtual void Deliver(const Instances::RowBlock& oBlock) = 0;

  /// Takes a row; false when no more are wanted. The result begins with the keys.
  using RowTaker = std::function<bool(Instances::RowTexts oRow, const Result& oResult)>;
  /// Reads up to lRows rows of a clause that says where they begin, with keys in
  /// front of their values.
  void ReadRows(Connection& oConnection, std::size_t lRows, const std::vector<std::string>& keys,
                const std::string& sClause, const Connection::Parameters& parameters, const RowTaker& oTake);

  const CellColumns& Cells() const { return m_oCells; }
  const std::string& From() const { return m_sFrom; }
  const std::string& Asked() const { return m_sAsked; }

 private:
  CellColumns m_oCells;
  std::string m_sFrom;
  std::string m_sAsked;
};

}  // namespace ZELWbr3::Postgres
