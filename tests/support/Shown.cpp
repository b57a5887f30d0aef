#include "tests/support/Shown.h"

#include "host/HostPages.h"

#include <algorithm>
#include <map>
#include <stdexcept>

namespace ZELWbr3::Testing {

namespace {

std::string Worded(const Recorded::Call::Argument& oArgument) {
  if (const auto* s = std::get_if<std::string>(&oArgument)) return "\"" + *s + "\"";
  if (const auto* b = std::get_if<bool>(&oArgument)) return *b ? "true" : "false";
  return std::to_string(std::get<std::int32_t>(oArgument));
}

}  // namespace

Shown::Shown(const std::string& sRecording, const Changes& changes)
    : ShownControl({ZELWBR3_SOURCE_DIR "/html"}),
      Database(std::make_shared<ChangedRecording>(sRecording, changes, [this](const Recorded::Call& o) { Tell(o); })) {}

Shown::~Shown() { Quiet(); }

void Shown::Tell(const Recorded::Call& oCall) {
  m_calls.push_back(oCall.Name);
  if (oCall.Changes) {
    std::string sArguments;
    for (const auto& oArgument : oCall.Arguments) sArguments += (sArguments.empty() ? "" : ", ") + Worded(oArgument);
    Line("call " + oCall.Name + "(" + sArguments + ")");
  }
  if (OnCall) OnCall(oCall.Name);
}

int Shown::Uses(const std::string& sOperation) const {
  return static_cast<int>(std::ranges::count(m_calls, sOperation));
}

void Shown::Show(const std::string& sPage) {
  Host::HostPages(*Browser, Database, Commandlist).Show(sPage);
  Settle();
}

void Shown::Do(const std::string& sStep) {
  const std::map<std::string, std::function<void(const std::string&)>> steps = {
      {"show", [this](const std::string& s) { Show(s); }},
      {"click", [this](const std::string& s) { Click(s); }},
      {"focus", [this](const std::string& s) { Focus(s); }},
      {"key", [this](const std::string& s) { Key(std::stoi(s)); }},
      {"item", [this](const std::string& s) { Item(std::stoi(s)); }},
      {"answer", [this](const std::string& s) { Answer(s); }},
      {"with", [this](const std::string& s) { Database->Change({s}); }},
      {"unit", [this](const std::string& s) { Browser->PreferredUnit(std::stoi(s)); }},
  };
  const auto iBlank = sStep.find(' ');
  const auto it = steps.find(sStep.substr(0, iBlank));
  if (it == steps.end() || iBlank == std::string::npos) throw std::invalid_argument("No step: " + sStep);
  it->second(sStep.substr(iBlank + 1));
}

}  // namespace ZELWbr3::Testing
