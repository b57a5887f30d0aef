#include "zelwbr3/instances/postgres/rows/CellColumns.h"

#include "zelwbr3/instances/common/rows/CellTexts.h"
#include "zelwbr3/instances/postgres/connection/Queries.h"

namespace ZELWbr3::Postgres {

namespace {

using Instances::CellTexts;

/// The number of the type boolean.
constexpr std::uint32_t kBoolean = 16;

/// The last column of SelectBlock.
constexpr char kFits[] = "fits";

std::string Cell(std::size_t i) { return "c" + std::to_string(i); }
std::string Bytes(std::size_t i) { return "b" + std::to_string(i); }

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
  return m_bAnyIsLong ? SelectCut(keys.size(), "", "FROM (" + sWhole + ") AS r") : sWhole;
}

std::string CellColumns::SelectBlock(const std::vector<std::string>& keys, const std::string& sRows) const {
  const std::string sWhole = SelectWhole(keys, sRows);
  if (!m_bAnyIsLong) return sWhole;
  std::string sBytes = "0";
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    if (m_columns[i].IsLong()) sBytes += " + coalesce(octet_length(" + Cell(i) + "), 0)";
  }
  const std::string sBefore =
      "coalesce(sum(" + sBytes + ") OVER (ROWS BETWEEN UNBOUNDED PRECEDING AND 1 PRECEDING), 0)";
  return SelectCut(keys.size(), kFits,
                   "FROM (SELECT *, " + sBefore + " < " + std::to_string(Instances::RowBlock::MaxBytes) + " AS " +
                       kFits + " FROM (" + sWhole + ") AS r) AS r");
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

std::string CellColumns::SelectCut(std::size_t lKeys, const std::string& sCondition, const std::string& sFrom) const {
  const auto Conditional = [&](const std::string& s) {
    return sCondition.empty() ? s : "CASE WHEN " + sCondition + " THEN " + s + " END";
  };
  std::string sList;
  for (std::size_t i = 0; i < lKeys; ++i) Append(sList, "k" + std::to_string(i));
  for (std::size_t i = 0; i < m_columns.size(); ++i) {
    if (m_columns[i].IsLong()) {
      Append(sList, Conditional("left(" + Cell(i) + ", " + std::to_string(CellTexts::LongestText) + ")"));
      Append(sList, "octet_length(" + Cell(i) + ")");
    } else {
      Append(sList, Cell(i) + (m_columns[i].eLength == Length::Bytes ? ", " + Bytes(i) : ""));
    }
  }
  if (!sCondition.empty()) Append(sList, sCondition);
  return "SELECT " + sList + " " + sFrom;
}

Instances::RowTexts CellColumns::RowOf(const Result& oResult, int iFirst) const {
  Instances::RowTexts oRow;
  oRow.reserve(m_columns.size());
  int i = iFirst;
  for (const Column& oColumn : m_columns) {
    if (oResult.IsNull(0, i)) {
      oRow.emplace_back("(null)");
    } else if (oColumn.eLength == Length::Bytes) {
      oRow.push_back(CellTexts::OfBlob(oResult.Bytes(0, i), oResult.Number(0, i + 1)));
    } else if (oColumn.IsLong()) {
      oRow.push_back(CellTexts::OfText(oResult.Text(0, i), oResult.Number(0, i + 1)));
    } else if (oResult.Type(i) == kBoolean) {
      oRow.emplace_back(oResult.Text(0, i) == "t" ? "true" : "false");
    } else {
      oRow.push_back(CellTexts::OfText(oResult.Text(0, i)));
    }
    i += oColumn.eLength == Length::Short ? 1 : 2;  // its bytes
  }
  return oRow;
}

bool CellColumns::HasValues(const Result& oResult) {
  const int iLast = oResult.Columns() - 1;
  return iLast < 0 || oResult.Name(iLast) != kFits || oResult.Text(0, iLast) == "t";
}

}  // namespace ZELWbr3::Postgres
