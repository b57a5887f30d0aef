#pragma once

#include <string>
#include <utility>

namespace ZELWbr3::Testing {

/// Happenings, each a line with its end, until a test reads them.
class Story {
 public:
  void Line(const std::string& sLine) { m_sLines += sLine + "\n"; }
  [[nodiscard]] std::string Lines() { return std::exchange(m_sLines, ""); }

 private:
  std::string m_sLines;
};

}  // namespace ZELWbr3::Testing
