#include "zelwbr3/instances/postgres/rows/CellColumns.h"

#include "zelwbr3/instances/common/rows/CellTexts.h"
#include "zelwbr3/instances/postgres/connection/Queries.h"

#include <optional>
#include <sstream>

namespace ZELWbr3::Postgres {

namespace {

using Instances::CellTexts;

/// The number of the type boolean.
constexpr std::uint32_t kBoolean = 16;

std::string Cell(std::size_t i) { return "c" + std::to_string(i); }
std::string Bytes(std::size_t i) { return "b" + std::to_string(i); }

/// Bytes of the values in the long columns of a row; empty unless one is cut.
std::vector<std::int64_t> Lengths(const Result& oRow) {
  std::vector<std::int64_t> lengths;
  const int iLast = oRow.Columns() - 1;
  if (oRow.IsNull(0, iLast)) return lengths;
  std::istringstream oText(oRow.Text(0, iLast));
  for (std::int64_t lLength = 0; oText >> lLength;) lengths.push_back(lLength);
  return lengths;
}

void Append(std::string& sList, const std::string& sEntry) { sList += (sList.empty() ? "" : ", ") + sEntry; }

}  // namespace

CellColumns CellColumns::Of(Connection& oConnection, const std::string& sNumber) {
  const Result o = oConnection.Execute(Queries::SQL("relation.columns"), "reading the columns", {sNumber});
  CellColumns oColumns;
  for (int i = 0; i < o.Rows(); ++i) {
    const std::string sLength = o.Text(i, "length");
    oColumns.m_columns.push_back({"r." + o.Text(i, "name"),
                                  {o.Text(i, "heading"), o.Text(i, "type")},
                                  sLength == "bytes"   ? Length::Bytes
                                  : sLength == "text"  ? Length::Text
                                  : sLength == "other" ? Length::Other
                                                       : Length::Short});
    oColumns.m_bAnyIsLong |= oColumns.m_columns.back().IsLong();
  }
  return oColumns;
}

CellColumns::CellColumns(const Result& oResult) {
  for (int i = 0; i < oResult.Columns(); ++i) {
    const std::string sName = oResult.Name(i);
    m_columns.push_back({"r.\"" + sName + '"', {sName}});
  }
}

std::vector<Instances::RowColumn> CellColumns::Headings() const {
  std::vector<Instances::RowColumn> headings;
  for (const Column& oColumn : m_columns) headings.push_back(oColumn.Heading);
  return headings;
}

std::string CellColumns::Select(const std::vector<std::string>& keys, const std::string& sRows) const {
  const std::string sWhole = SelectWhole(keys, sRows);
  if (!m_bAnyIsLong) return sWhole;
  // The lengths are only told where something is cut, which is rare.
  const std::string sLongest = std::to_string(CellTexts::LongestText);
  std::string sList;
  std::string sLengths;
  for (std::size_t i = 0; i < keys.size(); ++i) Append(sList, "k" + std::to_string(i));
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    const std::string sCell = Cell(i);
    if (m_columns[i].IsLong()) {
      const std::string sLength = "octet_length(" + sCell + ")";
      Append(sList, "CASE WHEN " + sLength + " > " + sLongest + " THEN left(" + sCell + ", " + sLongest + ") ELSE " +
                        sCell + " END");
      Append(sLengths, "coalesce(" + sLength + ", 0)");
    } else {
      Append(sList, sCell + (m_columns[i].eLength == Length::Bytes ? ", " + Bytes(i) : ""));
    }
  }
  return "SELECT " + sList + ", CASE WHEN greatest(" + sLengths + ") > " + sLongest + " THEN concat_ws(' ', " +
         sLengths + ") END FROM (" + sWhole + ") AS r";
}

std::string CellColumns::SelectWhole(const std::vector<std::string>& keys, const std::string& sRows) const {
  std::string sList;
  for (std::size_t i = 0; i < keys.size(); ++i) Append(sList, keys[i] + " AS k" + std::to_string(i));
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    const auto& [sName, oHeading, eLength] = m_columns[i];
    if (eLength == Length::Bytes) {
      Append(sList, "substring(" + sName + " FROM 1 FOR " + std::to_string(CellTexts::BlobBytesShown) + ") AS " +
                        Cell(i) + ", octet_length(" + sName + ") AS " + Bytes(i));
    } else if (eLength == Length::Other) {
      // Not a cast, which the owner of the type may have defined. An IS NOT NULL
      // would look into a row.
      Append(sList, "CASE num_nonnulls(" + sName + ") WHEN 1 THEN format('%s', " + sName + ") END AS " + Cell(i));
    } else {
      Append(sList, sName + (eLength == Length::Text ? "::text" : "") + " AS " + Cell(i));
    }
  }
  return "SELECT " + sList + " " + sRows;
}

Instances::RowTexts CellColumns::RowOf(const Result& oResult, int iFirst) const {
  Instances::RowTexts oRow;
  oRow.reserve(m_columns.size());
  const auto lengths = m_bAnyIsLong ? Lengths(oResult) : std::vector<std::int64_t>();
  auto itLength = lengths.begin();
  int i = iFirst;
  for (const Column& oColumn : m_columns) {
    std::optional<std::int64_t> lLength;
    if (oColumn.IsLong() && itLength != lengths.end()) lLength = *itLength++;
    if (oResult.IsNull(0, i)) {
      oRow.emplace_back("(null)");
    } else if (oColumn.eLength == Length::Bytes) {
      oRow.push_back(CellTexts::OfBlob(oResult.Bytes(0, i), oResult.Number(0, i + 1)));
    } else if (lLength) {
      oRow.push_back(CellTexts::OfText(oResult.Text(0, i), *lLength));
    } else if (oResult.Type(i) == kBoolean) {
      oRow.emplace_back(oResult.Text(0, i) == "t" ? "true" : "false");
    } else {
      oRow.push_back(CellTexts::OfText(oResult.Text(0, i)));
    }
    i += oColumn.eLength == Length::Bytes ? 2 : 1;
  }
  return oRow;
}

}  // namespace ZELWbr3::Postgres
