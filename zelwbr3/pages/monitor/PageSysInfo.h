#pragma once

#include "zelwbr3/ZELLib3/SysInfo.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/pages/monitor/RowsPage.h"

namespace ZELWbr3 {

/// One system information view: a table of its rows, or names and values if it
/// is one record.
class ZELWBR3_EXPORT PageSysInfo : public RowsPage<ZELLib3::SysInfo> {
 public:
  static constexpr int Type = zelWebBrowserPageSysInfo;

  std::string Name() const override { return "SysInfo"; }
  Long PageType() const override { return Type; }

  const std::shared_ptr<ZELLib3::SysInfo>& SysInfo() const { return Rows(); }
  void SysInfo(std::shared_ptr<ZELLib3::SysInfo> oSysInfo) { Rows(std::move(oSysInfo)); }

 private:
  void FillHead() override;
  void BeginTable() override;
};

}  // namespace ZELWbr3
