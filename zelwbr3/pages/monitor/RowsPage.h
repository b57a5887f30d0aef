#pragma once

#include "zelwbr3/pages/monitor/BlockPage.h"
#include "zelwbr3/pages/monitor/BlockTable.h"

#include <memory>
#include <optional>
#include <utility>

namespace ZELWbr3 {

/// A page that other pages open to show the rows of a table or view.
template <class RowSource>
class RowsPage : public BlockPage {
 public:
  Long WebBrowser() const override { return zelWebBrowserDetail; }

  using DataPage::Show;
  /// Keeps both and shows the page.
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<RowSource> oRows) {
    Rows(std::move(oRows));
    DataPage::Show(std::move(oDatabase));
  }

 protected:
  const std::shared_ptr<RowSource>& Rows() const { return m_oRows; }
  void Rows(std::shared_ptr<RowSource> oRows) {
    Forget();
    m_oRows = std::move(oRows);
  }
  void MakeTable(std::string_view sTable, BlockTable::View eView) {
    m_oTable.emplace(RequiredElement(sTable), *m_oRows, eView);
  }

 private:
  std::shared_ptr<ZELLib3::BlockSource> Source() final { return m_oRows; }
  void AddBlock() final { m_oTable->AddBlock(*m_oRows); }
  void ReleaseSource() final {
    m_oTable.reset();
    m_oRows.reset();
  }

  std::shared_ptr<RowSource> m_oRows;
  std::optional<BlockTable> m_oTable;
};

}  // namespace ZELWbr3
