#pragma once

#include "zelwbr3/instances/common/rows/RowBlock.h"
#include "zelwbr3/instances/postgres/connection/Connection.h"

#include <string>
#include <vector>

namespace ZELWbr3::Postgres {

/// The columns of a table or view, and how their values are asked for and shown.
/// Long ones are cut by the server, so that a row is bounded whatever is stored.
/// No conversion of a value runs code that somebody else than the server's owner
/// has written.
class CellColumns {
 public:
  /// Of a table or view, by its number at the server. Raises ServerError.
  static CellColumns Of(Connection& oConnection, const std::string& sNumber);
  /// Those of a result, whose values are short.
  explicit CellColumns(const Result& oResult);

  std::vector<Instances::RowColumn> Headings() const;
  /// A statement for the rows of sRows, "FROM … AS r …", with keys in front of the
  /// columns.
  std::string Select(const std::vector<std::string>& keys, const std::string& sRows) const;

  /// The row of a result as it is shown, from field iFirst on.
  Instances::RowTexts RowOf(const Result& oResult, int iFirst) const;

 private:
  /// What is known about the length of a value.
  enum class Length { Short, Bytes, Text, Other };
  struct Column {
    std::string Name;  ///< as it stands in a statement
    Instances::RowColumn Heading;
    Length eLength = Length::Short;

    bool IsLong() const { return eLength == Length::Text || eLength == Length::Other; }
  };

  CellColumns() = default;
  std::string SelectWhole(const std::vector<std::string>& keys, const std::string& sRows) const;

  std::vector<Column> m_columns;
  bool m_bAnyIsLong = false;
};

}  // namespace ZELWbr3::Postgres
