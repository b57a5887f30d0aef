#pragma once

#include "zelwbr3/ZELLib3/SysInfo.h"
#include "zelwbr3/instances/sqlite/rows/RowSourceOf.h"
#include "zelwbr3/instances/sqlite/rows/SystemView.h"

namespace ZELWbr3::SQLite {

/// One system view of a database file, read afresh by each Open.
class SQLiteSysInfo : public RowSourceOf<ZELLib3::SysInfo> {
 public:
  /// iIndex is the view's position in the list, from 1. oView lives as long as
  /// the program.
  SQLiteSysInfo(std::shared_ptr<InstanceFile> oFile, const SystemView& oView, ZELLib3::Long iIndex)
      : RowSourceOf(std::move(oFile)), m_oView(oView), m_iIndex(iIndex) {}

  ZELLib3::Long Index() const override { return m_iIndex; }
  std::string Name() const override { return m_oView.Name; }
  std::string Description() const override { return m_oView.Description; }
  bool IsRecord() const override { return m_oView.IsRecord; }

 protected:
  std::unique_ptr<RowReader> MakeReader(Connection& oConnection) override { return m_oView.MakeReader(oConnection); }

 private:
  const SystemView& m_oView;
  ZELLib3::Long m_iIndex;
};

}  // namespace ZELWbr3::SQLite
