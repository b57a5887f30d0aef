#include "zelwbr3/instances/sqlite/SQLiteAnalyzer.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/Process.h"
#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include <sqlite3.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::SQLite {

namespace {

using namespace std::chrono_literals;

constexpr auto kStartTimeout = 30s;
constexpr auto kStopTimeout = 15s;
constexpr char kName[] = "zelanalyzer";

/// Reads what a member needs.
template <typename Function>
auto Ask(const std::string& sFile, Function oRead) {
  try {
    return oRead();
  } catch (const std::exception& oError) {
    RaiseError(SQLITE_ERROR, sFile, std::string("the analyzer is not known: ") + oError.what());
  }
}

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

SQLiteAnalyzer::SQLiteAnalyzer(std::shared_ptr<InstanceFile> oFile, std::string sProgram)
    : m_oFile(std::move(oFile)),
      m_sProgram(std::move(sProgram)),
      m_oFolder(Ask(m_oFile->Path(), [&] { return Instances::AnalyzerFolder(m_oFile->Path()); })) {}

Instances::AnalyzerRecord SQLiteAnalyzer::Record() const {
  return Ask(m_oFile->Path(),
             [&] { return Instances::LockFile::Read(m_oFolder.LockPath()).value_or(Instances::AnalyzerRecord{}); });
}

std::optional<int> SQLiteAnalyzer::Process() const {
  return Ask(m_oFile->Path(), [&] { return Instances::LockFile::Holder(m_oFolder.LockPath()); });
}

ZELLib3::Long SQLiteAnalyzer::State() const {
  return Process() ? ZELLib3::AnalyzerState::Started : ZELLib3::AnalyzerState::Stopped;
}

std::string SQLiteAnalyzer::Info() const {
  const Instances::AnalyzerRecord oRecord = Record();
  std::string sInfo = std::to_string(oRecord.Evaluations);
  if (oRecord.Number > 0) sInfo += " of " + std::to_string(oRecord.Number);
  sInfo += oRecord.Evaluations == 1 && oRecord.Number == 0 ? " evaluation" : " evaluations";
  const std::string sTime = Instances::ReadableTime(oRecord.Evaluated);
  return sTime.empty() ? sInfo : sInfo + ", the last one at " + sTime;
}

std::string SQLiteAnalyzer::Reconnect() const { return Record().Reconnect != 0 ? "Yes" : "No"; }

std::string SQLiteAnalyzer::ProcessID() const {
  const auto lProcess = Process();
  return std::to_string(lProcess && *lProcess > 0 ? *lProcess : Record().ProcessID);
}

std::string SQLiteAnalyzer::SessionID() const { return std::to_string(Record().SessionID); }

std::string SQLiteAnalyzer::StartTime() const { return Instances::ReadableTime(Record().Started); }

std::string SQLiteAnalyzer::ErrorText() const {
  // First the process, then what it wrote: what it writes at its end is there
  // when it is gone.
  const bool bRuns = Process().has_value();
  const Instances::AnalyzerRecord oRecord = Record();
  if (!oRecord.Error.empty() || bRuns || oRecord.Started.empty() || !oRecord.Ended.empty()) return oRecord.Error;
  std::string sText = "The analyzer, process " + std::to_string(oRecord.ProcessID) + ", ended unexpectedly";
  if (const std::string sTime = Instances::ReadableTime(oRecord.Evaluated); !sTime.empty()) sText += " after " + sTime;
  return sText + ": it was killed, or the system went down";
}

std::optional<std::vector<ZELLib3::Analyzer::ProtocolSet>> SQLiteAnalyzer::ProtocolSets() {
  std::optional<std::vector<ProtocolSet>> oSets;
  Do([&] { oSets = Instances::ProtocolFolder(m_oFolder.Path()).Sets(); });
  return oSets;
}

bool SQLiteAnalyzer::Start(const StartOptions& oOptions) {
  return Do([&] {
    CheckNotNegative("number", oOptions.Number);
    CheckNotNegative("interval", oOptions.Interval);
    std::vector<std::string> arguments = {FindProgram(m_sProgram), "sqlite:" + m_oFile->Path(),
                                          "--number=" + std::to_string(oOptions.Number),
                                          "--interval=" + std::to_string(oOptions.Interval)};
    if (!oOptions.Config.empty()) arguments.push_back("--config=" + oOptions.Config);
    if (oOptions.Delete) arguments.emplace_back("--delete");
    if (oOptions.Reconnect) arguments.emplace_back("--reconnect");
    Instances::RunProgram({arguments, {}}, kStartTimeout);
  });
}

bool SQLiteAnalyzer::Stop() {
  return Do([&] {
    const auto lProcess = Process();
    if (!lProcess) throw std::runtime_error("the analyzer is not running");
    if (*lProcess <= 0) throw std::runtime_error("the analyzer runs on another machine or in another container");
    const Instances::RunningProcess oProcess(*lProcess);
    // Asked again, now that the number cannot become another process's.
    if (Process() != lProcess) throw std::runtime_error("the analyzer has ended just now");
    oProcess.AskToEnd();
    if (oProcess.WaitForEnd(kStopTimeout)) return;
    throw std::runtime_error("the analyzer, process " + std::to_string(*lProcess) + ", has not ended in time");
  });
}

bool SQLiteAnalyzer::DeleteProtocols(const std::string& sUntilDate) {
  return Do([&] {
    if (!Calendar::ParseCompactDay(sUntilDate))
      throw std::runtime_error("\"" + sUntilDate + "\" is not a date YYYYMMDD");
    Instances::ProtocolFolder(m_oFolder.Path()).DeleteUntil(sUntilDate);
  });
}

bool SQLiteAnalyzer::Do(const std::function<void()>& oOperation) {
  try {
    oOperation();
    return true;
  } catch (const std::exception& oError) {
    // The text that LastError gets begins with the file.
    const std::string sText = Without(std::string(kName) + ": ", oError.what());
    return m_oFile->Refuse(Text::OneLine(Without(m_oFile->Path() + ": ", sText)));
  }
}

}  // namespace ZELWbr3::SQLite
