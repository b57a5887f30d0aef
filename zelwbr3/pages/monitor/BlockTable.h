#pragma once

#include "zelwbr3/ZELLib3/RowSource.h"
#include "zelwbr3/dom/Element.h"

namespace ZELWbr3 {

/// A table whose columns are made at run time from what a RowSource delivers.
/// The page file's table has, in its first body, a heading row and a hidden
/// template row of one cell each.
///
/// A missing value is never written: its cell stays as the template has it.
class BlockTable {
 public:
  /// A column for each column of the source, or Name and Value for a source
  /// that is one record.
  enum class View { Columns, Record };

  /// Makes the columns in oTable. Throws std::runtime_error when the page file
  /// lacks a row or a cell.
  BlockTable(const Element& oTable, const ZELLib3::RowSource& oRows, View eView);

  /// Appends what the source's block holds.
  void AddBlock(ZELLib3::RowSource& oRows);

 private:
  void MakeColumns(const ZELLib3::RowSource& oRows);
  void MakeRecordColumns();
  void AddRecord(ZELLib3::RowSource& oRows);

  Element& m_oHeadings;
  Element& m_oTemplate;
  View m_eView;
};

}  // namespace ZELWbr3
