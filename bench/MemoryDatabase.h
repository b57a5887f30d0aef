#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <algorithm>
#include <chrono>
#include <string>
#include <vector>

namespace ZELWbr3::Bench {

using ZELLib3::Long;

/// An extended parameter generated from its number.
class MemoryParameter : public ZELLib3::Parameter {
 public:
  explicit MemoryParameter(Long lNumber) : m_sNumber(std::to_string(lNumber)) {}

  std::string Name() const override { return "PARAMETER_" + m_sNumber; }
  std::string Value() const override { return "value " + m_sNumber; }
  std::string Description() const override { return "What parameter " + m_sNumber + " is good for"; }
  Long Group() const override { return 1; }
  bool Exists() const override { return true; }

 private:
  std::string m_sNumber;
};

class MemoryParameters : public ZELLib3::Parameters {
 public:
  static constexpr int Rows = 5000;

  Long Count() const override { return Rows; }
  std::shared_ptr<ZELLib3::Parameter> Item(Long lIndex) const override {
    return std::make_shared<MemoryParameter>(lIndex);
  }
};

/// A view of many rows that costs nothing to read. It measures how long the
/// reader takes for each block.
class MemoryView : public ZELLib3::SysInfo {
 public:
  static constexpr int Columns = 6;
  /// Few enough rows to be filled in well within one frame of a screen.
  static constexpr int BlockSize = 5000;

  /// Milliseconds from reading each block until its last row was taken.
  std::vector<double> Fills;

  explicit MemoryView(int iRows) : m_iRows(iRows) {}

  std::string Name() const override { return "ROWS"; }
  bool IsEmpty() const override { return false; }
  Long RowCount() const override { return m_lRead; }
  Long ColumnCount() const override { return Columns; }
  std::string ColumnName(Long lColumn) const override { return "COLUMN_" + std::to_string(lColumn); }
  std::string ColumnTitle(Long) const override { return "(null)"; }
  bool Open() override {
    m_lRow = 0;
    m_lRead = BlockSize;
    return true;
  }
  bool ReadMore() override {
    m_oRead = std::chrono::steady_clock::now();
    m_lRow = m_lRead;
    m_lRead = std::min<Long>(m_lRead + BlockSize, m_iRows);
    return true;
  }
  bool NextRow() override {
    if (EndOfBlock()) return false;
    ++m_lRow;
    if (EndOfBlock()) {
      const std::chrono::duration<double, std::milli> oTime = std::chrono::steady_clock::now() - m_oRead;
      Fills.push_back(oTime.count());
    }
    return true;
  }
  std::string Value(Long lColumn) const override {
    return "value " + std::to_string(100000 + m_lRow * Columns + lColumn);
  }
  bool EndOfBlock() const override { return m_lRow >= m_lRead; }
  bool HasMore() const override { return m_lRead < m_iRows; }

 private:
  int m_iRows;
  Long m_lRow;
  Long m_lRead;
  std::chrono::steady_clock::time_point m_oRead;
};

class MemoryDatabase : public ZELLib3::Database {
 public:
  std::shared_ptr<ZELLib3::Parameters> Parameters() override { return std::make_shared<MemoryParameters>(); }
  bool Connected() override { return true; }
};

}  // namespace ZELWbr3::Bench
