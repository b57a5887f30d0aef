#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

using RowTexts = std::vector<std::string>;

/// A heading of a list: its name, and a title that explains it.
struct RowColumn {
  std::string Name;
  std::string Title = "(null)";
};

/// The rows that are delivered at a time: few enough to be shown without a
/// pause, and bounded in bytes as well, since a row can be of any size.
class RowBlock {
 public:
  static constexpr std::size_t MaxRows = 200;
  static constexpr std::size_t MaxBytes = std::size_t{4} << 20;

  /// Takes no more; one row always fits.
  bool IsFull() const { return m_oRows.size() >= MaxRows || m_lBytes >= MaxBytes; }
  void Add(RowTexts oRow) {
    for (const std::string& sText : oRow) m_lBytes += sText.size();
    m_oRows.push_back(std::move(oRow));
  }
  const std::vector<RowTexts>& Rows() const { return m_oRows; }

 private:
  std::vector<RowTexts> m_oRows;
  std::size_t m_lBytes = 0;
};

}  // namespace ZELWbr3::Instances
