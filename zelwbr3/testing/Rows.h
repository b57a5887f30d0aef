#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// Rows of views and tables, each as its texts.
using Rows = std::vector<std::vector<std::string>>;

/// The rows of the block that stands ready.
inline Rows ReadBlock(ZELLib3::RowSource& oSource) {
  Rows oRows;
  while (oSource.NextRow()) {
    auto& oRow = oRows.emplace_back();
    for (int i = 0; i < oSource.ColumnCount(); ++i) oRow.push_back(oSource.Value(i));
  }
  return oRows;
}

/// All rows, block by block, of a source that is open.
inline Rows ReadAll(ZELLib3::RowSource& oSource) {
  Rows oRows = ReadBlock(oSource);
  while (oSource.HasMore()) {
    if (!oSource.ReadMore()) throw std::runtime_error("a block cannot be read");
    for (auto& oRow : ReadBlock(oSource)) oRows.push_back(std::move(oRow));
  }
  return oRows;
}

inline Rows OpenAndRead(ZELLib3::Database& oDatabase, ZELLib3::RowSource& oSource) {
  if (!oSource.Open()) throw std::runtime_error(oDatabase.LastError().ErrorText);
  return ReadAll(oSource);
}

inline std::shared_ptr<ZELLib3::SQLTable> Table(ZELLib3::Database& oDatabase, const std::string& sOwner,
                                                const std::string& sName) {
  auto oTable = oDatabase.SQLTables()->NewTable();
  oTable->Owner(sOwner);
  oTable->Name(sName);
  return oTable;
}

inline std::shared_ptr<ZELLib3::SysInfo> View(ZELLib3::Database& oDatabase, const std::string& sName) {
  const auto oViews = oDatabase.SysInfos();
  for (int i = 1; i <= oViews->Count(); ++i) {
    if (oViews->Item(i)->Name() == sName) return oViews->Item(i);
  }
  throw std::runtime_error("no view " + sName);
}

inline Rows ReadTable(ZELLib3::Database& oDatabase, const std::string& sOwner, const std::string& sName) {
  return OpenAndRead(oDatabase, *Table(oDatabase, sOwner, sName));
}
inline Rows ReadView(ZELLib3::Database& oDatabase, const std::string& sName) {
  return OpenAndRead(oDatabase, *View(oDatabase, sName));
}

}  // namespace ZELWbr3::Testing
