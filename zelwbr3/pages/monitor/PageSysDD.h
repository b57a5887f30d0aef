#pragma once

#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The system tables of the data dictionary: one page file per release. Its
/// links carry the id "ITEM_" and a table's name, and a click opens that table.
class PageSysDD : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageSysDD;
  static constexpr int CommandOpen = 2;

  /// "SysDD" and the release of the instance shown last, such as SysDD74; of
  /// the releases that have a page file the nearest one.
  std::string Name() const override { return m_sName; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }

  using PageUnfilled::Show;
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase);

 protected:
  void FillContent() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  std::string m_sName = "SysDD76";
  /// Name of the table clicked last.
  std::string m_sTable;
};

}  // namespace ZELWbr3
