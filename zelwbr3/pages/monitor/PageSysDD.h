#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/pages/PageUnfilled.h"

namespace ZELWbr3 {

/// The system tables of the data dictionary: one page file per release. Its links
/// have the id "ITEM_" and a table's name; a click opens that table.
class ZELWBR3_EXPORT PageSysDD : public PageUnfilled {
 public:
  static constexpr int Type = zelWebBrowserPageSysDD;
  static constexpr int CommandOpen = 2;

  /// "SysDD" and the release of the last instance shown, such as SysDD74; the
  /// nearest release that has a page file.
  std::string Name() const override { return m_sName; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

  using PageUnfilled::Show;
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase);

 protected:
  void FillContent() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  std::string m_sName = "SysDD76";
  /// Name of the last clicked table.
  std::string m_sTable;
};

}  // namespace ZELWbr3
