#include "zelwbr3/instances/sqlite/analyzer/AnalyzerConfig.h"

#include "zelwbr3/instances/sqlite/Descriptor.h"
#include "zelwbr3/instances/sqlite/OneLine.h"
#include "zelwbr3/instances/sqlite/analyzer/Figures.h"

#include <sys/stat.h>

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace ZELWbr3::SQLite {

namespace {

constexpr off_t kMostBytes = 65536;

std::string ReadText(const std::string& sPath) {
  const Descriptor oFile(sPath, O_RDONLY | O_NONBLOCK);
  struct stat oStat {};
  if (fstat(oFile, &oStat) != 0) RaiseSystemError(sPath);
  if (!S_ISREG(oStat.st_mode)) throw std::runtime_error(sPath + ": is not a regular file");
  if (oStat.st_size > kMostBytes) throw std::runtime_error(sPath + ": is too large for a configuration file");
  std::string sText(static_cast<std::size_t>(oStat.st_size), '\0');
  const ssize_t lRead = read(oFile, sText.data(), sText.size());
  if (lRead < 0) RaiseSystemError(sPath);
  sText.resize(static_cast<std::size_t>(lRead));
  return sText.starts_with("\xEF\xBB\xBF") ? sText.substr(3) : sText;  // an editor's byte order mark
}

std::string Trimmed(const std::string& sText) {
  constexpr char kBlanks[] = " \t\r";
  const auto lFrom = sText.find_first_not_of(kBlanks);
  return lFrom == std::string::npos ? "" : sText.substr(lFrom, sText.find_last_not_of(kBlanks) - lFrom + 1);
}

std::string Known() {
  std::string sNames;
  for (const std::string_view sGroup : Figures::OptionalGroups()) {
    sNames.append(sNames.empty() ? "" : ", ").append(sGroup);
  }
  return sNames;
}

}  // namespace

AnalyzerConfig AnalyzerConfig::Read(const std::string& sPath) {
  AnalyzerConfig oConfig;
  if (sPath.empty()) return oConfig;
  std::istringstream oText(ReadText(sPath));
  const auto groups = Figures::OptionalGroups();
  int iLine = 0;
  for (std::string sLine; std::getline(oText, sLine);) {
    ++iLine;
    const auto Raise = [&](const std::string& sWhat) {
      const std::string sLineNumber = std::to_string(iLine);
      throw std::runtime_error(OneLine(std::string(sPath).append(": line ").append(sLineNumber + ": ").append(sWhat)));
    };
    sLine = Trimmed(sLine.substr(0, sLine.find('#')));
    if (sLine.empty()) continue;
    const auto lEquals = sLine.find('=');
    const std::string sGroup = Trimmed(sLine.substr(0, lEquals));
    const std::string sValue = lEquals == std::string::npos ? "" : Trimmed(sLine.substr(lEquals + 1));
    if (lEquals == std::string::npos)
      Raise("expected GROUP = yes or GROUP = no, found \"" + sLine.substr(0, 80) + "\"");
    if (std::find(groups.begin(), groups.end(), sGroup) == groups.end()) {
      Raise("there is no group \"" + sGroup.substr(0, 80) + "\", only " + Known());
    }
    if (sValue == "yes") {
      oConfig.m_off.erase(sGroup);
    } else if (sValue == "no") {
      oConfig.m_off.insert(sGroup);
    } else {
      Raise(sGroup + ": expected yes or no, found \"" + sValue.substr(0, 80) + "\"");
    }
  }
  return oConfig;
}

}  // namespace ZELWbr3::SQLite
