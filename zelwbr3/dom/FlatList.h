#pragma once

#include "zelwbr3/base/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ZELWbr3 {

/// Writes the wire format between the C++ side and a page: a flat JSON array of
/// whole numbers and strings.
class ZELWBR3_EXPORT FlatListWriter {
 public:
  void Add(std::uint32_t lNumber);
  /// Text must be valid UTF-8.
  void Add(std::string_view sText);

  bool Empty() const { return m_sList.empty(); }
  /// Bytes written so far.
  std::size_t Size() const { return m_sList.size(); }
  /// Closes the list and returns it; the writer is empty again.
  std::string Take();

 private:
  std::string m_sList;
};

/// Reads such a list item by item. If the text is not one, throws
/// std::invalid_argument that says what was expected and where.
class ZELWBR3_EXPORT FlatListReader {
 public:
  explicit FlatListReader(std::string_view sList);

  bool AtEnd() const { return m_bAtEnd; }
  std::uint32_t Number();
  /// A lone surrogate reads as U+FFFD.
  std::string Text();

 private:
  [[noreturn]] void Fail(const char* sExpected) const;
  void Separator();

  std::string_view m_sList;
  std::size_t m_iPosition = 0;
  bool m_bAtEnd = false;
};

}  // namespace ZELWbr3
