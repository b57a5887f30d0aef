#include "zelwbr3/instances/common/analyzer/BackgroundAnalyzer.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/Process.h"
#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::Instances {

namespace {

using namespace std::chrono_literals;

constexpr auto kStartTimeout = 30s;
constexpr auto kStopTimeout = 15s;
constexpr char kName[] = "zelanalyzer";

std::string Without(std::string_view sBeginning, const std::string& sText) {
  return sText.starts_with(sBeginning) ? sText.substr(sBeginning.size()) : sText;
}

std::string FindProgram(const std::string& sProgram) {
  if (!sProgram.empty()) return sProgram;
  if (const char* sVariable = std::getenv("ZELWBR3_ANALYZER"); sVariable && *sVariable) return sVariable;
  const auto oBeside = std::filesystem::read_symlink("/proc/self/exe").parent_path() / kName;
  if (std::filesystem::exists(oBeside)) return oBeside;
  throw std::runtime_error("the program " + oBeside.string() +
                           " does not exist, and the environment variable ZELWBR3_ANALYZER does not name another");
}

void CheckNotNegative(const char* sName, ZELLib3::Long lValue) {
  if (lValue < 0) throw std::runtime_error(std::string("the ") + sName + " " + std::to_string(lValue) + " is negative");
}

}  // namespace

/// Reads what a member needs.
template <typename Function>
auto BackgroundAnalyzer::Ask(Function oRead) const {
  try {
    return oRead();
  } catch (const std::exception& oError) {
    throw ZELLib3::InstanceError(m_oSetup.Refuse(std::string("the analyzer is not known: ") + oError.what()));
  }
}

BackgroundAnalyzer::BackgroundAnalyzer(Setup oSetup)
    : m_oSetup(std::move(oSetup)), m_oFolder(Ask([&] { return m_oSetup.Folder(); })) {}

AnalyzerRecord BackgroundAnalyzer::Record() const {
  return Ask([&] { return LockFile::Read(m_oFolder.LockPath()).value_or(AnalyzerRecord{}); });
}

std::optional<int> BackgroundAnalyzer::Process() const {
  return Ask([&] { return LockFile::Holder(m_oFolder.LockPath()); });
}

ZELLib3::Long BackgroundAnalyzer::State() const {
  return Process() ? ZELLib3::AnalyzerState::Started : ZELLib3::AnalyzerState::Stopped;
}

std::string BackgroundAnalyzer::Info() const {
  const AnalyzerRecord oRecord = Record();
  std::string sInfo = std::to_string(oRecord.Evaluations);
  if (oRecord.Number > 0) sInfo += " of " + std::to_string(oRecord.Number);
  sInfo += oRecord.Evaluations == 1 && oRecord.Number == 0 ? " evaluation" : " evaluations";
  const std::string sTime = ReadableTime(oRecord.Evaluated);
  return sTime.empty() ? sInfo : sInfo + ", the last one at " + sTime;
}

std::string BackgroundAnalyzer::Reconnect() const { return Record().Reconnect != 0 ? "Yes" : "No"; }

std::string BackgroundAnalyzer::ProcessID() const {
  const auto lProcess = Process();
  return std::to_string(lProcess && *lProcess > 0 ? *lProcess : Record().ProcessID);
}

std::string BackgroundAnalyzer::SessionID() const { return std::to_string(Record().SessionID); }

std::string BackgroundAnalyzer::StartTime() const { return ReadableTime(Record().Started); }

std::string BackgroundAnalyzer::ErrorText() const {
  // First the process, then what it wrote: what it writes at its end is there
  // when it is gone.
  const bool bRuns = Process().has_value();
  const AnalyzerRecord oRecord = Record();
  if (!oRecord.Error.empty() || bRuns || oRecord.Started.empty() || !oRecord.Ended.empty()) return oRecord.Error;
  std::string sText = "The analyzer, process " + std::to_string(oRecord.ProcessID) + ", ended unexpectedly";
  if (const std::string sTime = ReadableTime(oRecord.Evaluated); !sTime.empty()) sText += " after " + sTime;
  return sText + ": it was killed, or the system went down";
}

std::optional<std::vector<ZELLib3::Analyzer::ProtocolSet>> BackgroundAnalyzer::ProtocolSets() {
  std::optional<std::vector<ProtocolSet>> oSets;
  Do([&] { oSets = ProtocolFolder(m_oFolder.Path()).Sets(); });
  return oSets;
}

std::vector<ZELLib3::Analyzer::Protocol> BackgroundAnalyzer::Protocols(Long lDays) {
  const auto tFrom = std::time(nullptr) - static_cast<std::time_t>(std::int32_t{lDays} - 1) * 24 * 60 * 60;
  return Ask([&] { return ProtocolFolder(m_oFolder.Path()).Read(DayOf(TimeStamp(tFrom))); });
}

bool BackgroundAnalyzer::Start(const StartOptions& oOptions) {
  return Do([&] {
    CheckNotNegative("number", oOptions.Number);
    CheckNotNegative("interval", oOptions.Interval);
    std::vector<std::string> arguments = {FindProgram(m_oSetup.Program), m_oSetup.Argument,
                                          "--number=" + std::to_string(oOptions.Number),
                                          "--interval=" + std::to_string(oOptions.Interval)};
    if (!oOptions.Config.empty()) arguments.push_back("--config=" + oOptions.Config);
    if (oOptions.Delete) arguments.emplace_back("--delete");
    if (oOptions.Reconnect) arguments.emplace_back("--reconnect");
    RunProgram({arguments, m_oSetup.Environment}, kStartTimeout);
  });
}

bool BackgroundAnalyzer::Stop() {
  return Do([&] {
    const auto lProcess = Process();
    if (!lProcess) throw std::runtime_error("the analyzer is not running");
    if (*lProcess <= 0) throw std::runtime_error("the analyzer runs on another machine or in another container");
    const RunningProcess oProcess(*lProcess);
    // Asked again, now that the number cannot become another process's.
    if (Process() != lProcess) throw std::runtime_error("the analyzer has ended just now");
    oProcess.AskToEnd();
    if (oProcess.WaitForEnd(kStopTimeout)) return;
    throw std::runtime_error("the analyzer, process " + std::to_string(*lProcess) + ", has not ended in time");
  });
}

bool BackgroundAnalyzer::DeleteProtocols(const std::string& sUntilDate) {
  return Do([&] {
    if (!Calendar::ParseCompactDay(sUntilDate))
      throw std::runtime_error("\"" + sUntilDate + "\" is not a date YYYYMMDD");
    ProtocolFolder(m_oFolder.Path()).DeleteUntil(sUntilDate);
  });
}

bool BackgroundAnalyzer::Do(const std::function<void()>& oOperation) {
  try {
    oOperation();
    return true;
  } catch (const std::exception& oError) {
    // The text that LastError gets begins with the instance.
    const std::string sText = Without(std::string(kName) + ": ", oError.what());
    m_oSetup.Refuse(Text::OneLine(Without(m_oSetup.Instance + ": ", sText)));
    return false;
  }
}

}  // namespace ZELWbr3::Instances
