#pragma once

#include "zelwbr3/ZELLib3/SQLTable.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/pages/monitor/RowsPage.h"

namespace ZELWbr3 {

/// The rows of one table.
class ZELWBR3_EXPORT PageSQLTable : public RowsPage<ZELLib3::SQLTable> {
 public:
  static constexpr int Type = zelWebBrowserPageSQLTable;

  std::string Name() const override { return "SQLTable"; }
  Long PageType() const override { return Type; }

  const std::shared_ptr<ZELLib3::SQLTable>& SQLTable() const { return Rows(); }
  void SQLTable(std::shared_ptr<ZELLib3::SQLTable> oSQLTable) { Rows(std::move(oSQLTable)); }

 private:
  void FillHead() override {
    SetText("txtFormTitle", Text::Isolated(SQLTable()->Owner()) + "." + Text::Isolated(SQLTable()->Name()));
  }
  void BeginTable() override { MakeTable("tabSQLTable", BlockTable::View::Columns); }
};

}  // namespace ZELWbr3
