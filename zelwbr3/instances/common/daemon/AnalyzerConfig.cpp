#include "zelwbr3/instances/common/daemon/AnalyzerConfig.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/base/Text.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace ZELWbr3::Instances {

namespace {

constexpr std::uintmax_t kMostBytes = 65536;
constexpr std::string_view kBlanks = " \t\r";

std::string ReadText(const std::string& sPath) {
  try {
    const std::string sText = ReadFile(sPath, kMostBytes);
    return sText.starts_with("\xEF\xBB\xBF") ? sText.substr(3) : sText;  // an editor's byte order mark
  } catch (const ReadFileError& oError) {
    throw std::runtime_error(Text::OneLine(sPath + ": " + oError.what()));
  }
}

std::string Trimmed(std::string_view sText) { return Text::Trim(sText, kBlanks); }

std::string List(const std::vector<std::string>& names) {
  std::string sNames;
  for (const std::string& sName : names) sNames.append(sNames.empty() ? "" : ", ").append(sName);
  return sNames;
}

}  // namespace

AnalyzerConfig AnalyzerConfig::Read(const std::string& sPath, const std::vector<std::string>& groups) {
  AnalyzerConfig oConfig;
  if (sPath.empty()) return oConfig;
  std::istringstream oText(ReadText(sPath));
  int iLine = 0;
  for (std::string sLine; std::getline(oText, sLine);) {
    ++iLine;
    const auto Raise = [&](const std::string& sWhat) {
      const std::string sLineNumber = std::to_string(iLine);
      throw std::runtime_error(
          Text::OneLine(std::string(sPath).append(": line ").append(sLineNumber + ": ").append(sWhat)));
    };
    sLine = Trimmed(sLine.substr(0, sLine.find('#')));
    if (sLine.empty()) continue;
    const auto lEquals = sLine.find('=');
    const std::string sGroup = Trimmed(sLine.substr(0, lEquals));
    const std::string sValue = lEquals == std::string::npos ? "" : Trimmed(sLine.substr(lEquals + 1));
    if (lEquals == std::string::npos)
      Raise("expected GROUP = yes or GROUP = no, found \"" + sLine.substr(0, 80) + "\"");
    if (std::find(groups.begin(), groups.end(), sGroup) == groups.end()) {
      Raise("there is no group \"" + sGroup.substr(0, 80) + "\", only " + List(groups));
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

}  // namespace ZELWbr3::Instances
