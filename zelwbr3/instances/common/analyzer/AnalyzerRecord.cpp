#include "zelwbr3/instances/common/analyzer/AnalyzerRecord.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/analyzer/Hash.h"

#include <charconv>
#include <variant>

namespace ZELWbr3::Instances {

namespace {

using Member = std::variant<std::string AnalyzerRecord::*, int AnalyzerRecord::*>;

struct Field {
  std::string_view Name;
  Member What;
};

constexpr Field kFields[] = {
    {"instance", &AnalyzerRecord::Instance},   {"config", &AnalyzerRecord::ConfigFile},
    {"number", &AnalyzerRecord::Number},       {"interval", &AnalyzerRecord::Interval},
    {"reconnect", &AnalyzerRecord::Reconnect}, {"process", &AnalyzerRecord::ProcessID},
    {"session", &AnalyzerRecord::SessionID},   {"evaluations", &AnalyzerRecord::Evaluations},
    {"started", &AnalyzerRecord::Started},     {"evaluated", &AnalyzerRecord::Evaluated},
    {"ended", &AnalyzerRecord::Ended},         {"error", &AnalyzerRecord::Error},
};

// Three texts may be as long as a path, and all fields fit into a record.
constexpr std::size_t kLongestText = 2400;
constexpr std::string_view kCheck = "check=";

std::string TextOf(const AnalyzerRecord& oRecord, const Member& oMember) {
  if (const auto* pNumber = std::get_if<int AnalyzerRecord::*>(&oMember)) return std::to_string(oRecord.*(*pNumber));
  return Text::OneLine((oRecord.*std::get<std::string AnalyzerRecord::*>(oMember)).substr(0, kLongestText));
}

bool Set(AnalyzerRecord& oRecord, const Member& oMember, std::string_view sText) {
  if (const auto* pText = std::get_if<std::string AnalyzerRecord::*>(&oMember)) {
    oRecord.*(*pText) = sText;
    return true;
  }
  int& lNumber = oRecord.*std::get<int AnalyzerRecord::*>(oMember);
  const auto oResult = std::from_chars(sText.data(), sText.data() + sText.size(), lNumber);
  return oResult.ec == std::errc() && oResult.ptr == sText.data() + sText.size();
}

}  // namespace

std::string AnalyzerRecord::Encode() const {
  std::string sText;
  for (const Field& oField : kFields) {
    sText.append(oField.Name).append("=").append(TextOf(*this, oField.What)).append("\n");
  }
  const std::string sCheck = Hash(sText);
  sText.append(kCheck).append(sCheck).append("\n");
  sText.resize(Bytes, '\n');
  return sText;
}

std::optional<AnalyzerRecord> AnalyzerRecord::Decode(std::string_view sBytes) {
  AnalyzerRecord oRecord;
  std::size_t lFrom = 0;
  for (const Field& oField : kFields) {
    const std::size_t lEnd = sBytes.find('\n', lFrom);
    if (lEnd == std::string_view::npos) return std::nullopt;
    const std::string_view sLine = sBytes.substr(lFrom, lEnd - lFrom);
    const std::size_t lName = oField.Name.size();
    if (sLine.substr(0, lName) != oField.Name || sLine.substr(lName, 1) != "=") return std::nullopt;
    if (!Set(oRecord, oField.What, sLine.substr(lName + 1))) return std::nullopt;
    lFrom = lEnd + 1;
  }
  const std::string sCheck = std::string(kCheck) + Hash(sBytes.substr(0, lFrom)) + "\n";
  return sBytes.substr(lFrom, sCheck.size()) == sCheck ? std::optional(oRecord) : std::nullopt;
}

}  // namespace ZELWbr3::Instances
