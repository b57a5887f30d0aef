#pragma once

#include "zelwbr3/ZELLib3/RowSource.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Element.h"

namespace ZELWbr3 {

/// A table whose columns are made at run time from those of a RowSource. In the
/// page file, the table's first body has a heading row and a hidden template row
/// of one cell each.
///
/// A missing value is never written: its cell stays as in the template.
class ZELWBR3_EXPORT BlockTable {
 public:
  /// A column for each column of the source, or Name and Value if the source is
  /// one record.
  enum class View { Columns, Record };

  /// Makes the columns in oTable. Throws std::runtime_error if a row or a cell is
  /// missing in the page file.
  BlockTable(const Element& oTable, const ZELLib3::RowSource& oRows, View eView);

  /// Appends the rows of the source's block.
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
