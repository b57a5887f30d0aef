#pragma once

#include "zelwbr3/instances/recorded/writing/Writer.h"

namespace ZELWbr3::Recorded {

// What a recording keeps under one key but an instance delivers step by step.

/// A whole number from 1.
inline const Type& BlockSizeType() {
  static const Type oType = [] {
    Type oPositive = TypeOf<Long>();
    oPositive.lMin = 1;
    return oPositive;
  }();
  return oType;
}

/// Walks what is read in blocks, from Open to the end; `fnNext` steps to the
/// block's next entry and keeps it, and answers its bytes; no value when there is
/// none.
template <class I, class F>
void WalkBlocks(I& oSource, Writer& oWriter, const std::string& sLabel, F fnNext) {
  if (!oWriter.Do("Open", [&] { return oSource.Open(); })) return;
  const auto fnHasMore = [&] { return oWriter.Read("HasMore", [&] { return oSource.HasMore(); }).value_or(false); };
  const auto fnEnded = [&] { return oWriter.Read("EndOfBlock", [&] { return oSource.EndOfBlock(); }).value_or(true); };

  // The first block shows how large blocks are, unless it holds all rows.
  const Long lDelivered = oWriter.Read("RowCount", [&] { return oSource.RowCount(); }).value_or(0);
  if (lDelivered > DefaultBlockSize || (lDelivered > 0 && fnHasMore())) oWriter.Put("BlockSize", lDelivered);

  std::size_t lBytes = 0;
  for (std::size_t lRows = 0;;) {
    const std::size_t lBefore = lRows;
    for (; !fnEnded(); ++lRows) {
      if (lRows >= oWriter.Options().MaxRows || lBytes >= oWriter.Options().MaxBytes) {
        return oWriter.Note(sLabel + ": only the first " + std::to_string(lRows) + " rows are recorded");
      }
      const std::optional<std::size_t> oBytes = fnNext();
      if (!oBytes) break;
      lBytes += *oBytes;
    }
    if (!fnHasMore()) return;
    if (lRows == lBefore) return oWriter.Note(sLabel + ": rows that follow a block without any are not recorded");
    if (!oWriter.Do("ReadMore", [&] { return oSource.ReadMore(); })) return;
  }
}

template <class I>
void WriteRows(I& oSource, Writer& oWriter) {
  std::vector<RowTexts> oRows;
  std::optional<Long> lColumns;
  const auto fnColumns = [&] {
    if (!lColumns) lColumns = oWriter.Read("ColumnCount", [&] { return oSource.ColumnCount(); }).value_or(0);
    return *lColumns;
  };
  const auto sName = oWriter.Read("Name", [&] { return oSource.Name(); });
  const std::string sLabel = InterfaceOf<I>().sClass + " " + Quoted(sName.value_or(""));
  WalkBlocks(oSource, oWriter, sLabel, [&]() -> std::optional<std::size_t> {
    const auto bNext = oWriter.Read("NextRow", [&] { return oSource.NextRow(); });
    if (bNext == false) oWriter.Failed("NextRow");  // the block has not ended
    if (!bNext.value_or(false)) return std::nullopt;
    RowTexts& oRow = oRows.emplace_back();
    std::size_t lBytes = 0;
    for (int lColumn = 0; lColumn < fnColumns(); ++lColumn) {
      oRow.push_back(oWriter.Read("Value", [&] { return oSource.Value(lColumn); }).value_or("(null)"));
      lBytes += oRow.back().size();
    }
    return lBytes;
  });

  std::vector<Column> oColumns;
  for (int lColumn = 0; lColumn < fnColumns(); ++lColumn) {
    oColumns.push_back({oWriter.Read("ColumnName", [&] { return oSource.ColumnName(lColumn); }).value_or(""),
                        oWriter.Read("ColumnTitle", [&] { return oSource.ColumnTitle(lColumn); }).value_or("(null)")});
  }
  oWriter.Put("Columns", oColumns);
  oWriter.Put("Rows", oRows);
}

void WriteHistory(ZELLib3::History& oHistory, Writer& oWriter);
void WriteParameterChanges(ZELLib3::Parameter& oParameter, Writer& oWriter);
void WriteListedChanges(ZELLib3::ParameterHistory& oHistory, Writer& oWriter);
/// Those that the host named, and what there is of the data dictionary.
void WriteTables(ZELLib3::SQLTables& oTables, Writer& oWriter);

}  // namespace ZELWbr3::Recorded
