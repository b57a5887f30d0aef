#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

namespace ZELWbr3::Testing {

/// A folder of one test's own, gone with it.
class TempFolder {
 public:
  TempFolder() {
    std::string sPattern = std::filesystem::temp_directory_path() / "zelwbr3-test-XXXXXX";
    if (mkdtemp(sPattern.data()) == nullptr) throw std::runtime_error("No folder like " + sPattern);
    m_oPath = sPattern;
  }
  ~TempFolder() {
    std::error_code eIgnored;
    std::filesystem::remove_all(m_oPath, eIgnored);
  }
  TempFolder(const TempFolder&) = delete;
  TempFolder& operator=(const TempFolder&) = delete;

  std::string Path() const { return m_oPath; }
  std::string Path(const std::string& sName) const { return m_oPath / sName; }

  std::string Write(const std::string& sName, const std::string& sText) const {
    std::ofstream(m_oPath / sName, std::ios::binary) << sText;
    return Path(sName);
  }
  std::string Read(const std::string& sName) const {
    std::ifstream oFile(m_oPath / sName, std::ios::binary);
    return {std::istreambuf_iterator<char>(oFile), {}};
  }

 private:
  std::filesystem::path m_oPath;
};

}  // namespace ZELWbr3::Testing
