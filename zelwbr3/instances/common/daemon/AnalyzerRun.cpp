#include "zelwbr3/instances/common/daemon/AnalyzerRun.h"

#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <stdexcept>

namespace ZELWbr3::Instances {

namespace {

using Clock = std::chrono::steady_clock;

/// Evaluations keep their rhythm; those whose time has passed while one took
/// long are left out.
Clock::time_point NextAfter(Clock::time_point dLast, std::chrono::seconds dInterval) {
  return dLast + ((Clock::now() - dLast) / dInterval + 1) * dInterval;
}

/// Raises why the instance cannot be opened, before anything is made for it.
const EvaluatedInstance& Readable(const EvaluatedInstance& oInstance) {
  oInstance.Open();
  return oInstance;
}

LockFile MakeLock(const EvaluatedInstance& oInstance) {
  std::filesystem::create_directories(oInstance.Folder.Path());
  return {oInstance.Folder.LockPath(), oInstance.Name};
}

AnalyzerRecord Begin(const std::string& sInstance, const AnalyzerOptions& oOptions) {
  AnalyzerRecord oRecord;
  oRecord.Instance = sInstance;
  oRecord.ConfigFile = oOptions.ConfigFile;
  oRecord.Number = oOptions.Number;
  oRecord.Interval = oOptions.Interval > 0 ? oOptions.Interval : AnalyzerOptions::DefaultInterval;
  oRecord.Reconnect = oOptions.Reconnect;
  oRecord.ProcessID = getpid();
  oRecord.SessionID = getsid(0);
  oRecord.Started = TimeStamp(std::time(nullptr));
  return oRecord;
}

}  // namespace

AnalyzerRun::AnalyzerRun(const EvaluatedInstance& oInstance, const AnalyzerOptions& oOptions,
                         const AnalyzerConfig& oConfig)
    : m_oInstance(Readable(oInstance)),
      m_oConfig(oConfig),
      m_oProtocols(oInstance.Folder.Path()),
      m_oLock(MakeLock(oInstance)),
      m_oRecord(Begin(oInstance.Name, oOptions)) {
  m_oLock.Write(m_oRecord);
  try {
    if (oOptions.DeleteToday) m_oProtocols.Delete(DayOf(m_oRecord.Started));
    Evaluate();
    if (!m_oRecord.Error.empty()) throw std::runtime_error(m_oRecord.Error);
  } catch (const std::exception& oError) {
    End(oError.what());
    throw;
  }
}

bool AnalyzerRun::Run() {
  auto dDue = Clock::now();
  std::string sError;
  try {
    while (!IsComplete()) {
      dDue = NextAfter(dDue, std::chrono::seconds(m_oRecord.Interval));
      if (m_oSignals.ArriveBefore(dDue)) break;
      Evaluate();
      if (!m_oRecord.Error.empty() && m_oRecord.Reconnect == 0) throw std::runtime_error(m_oRecord.Error);
    }
  } catch (const std::exception& oError) {
    sError = oError.what();
  }
  End(sError);
  return sError.empty();
}

void AnalyzerRun::Evaluate() {
  m_oLock.CheckInPlace();
  const std::string sNow = TimeStamp(std::time(nullptr));
  const Figures oFigures = Figures::Read(m_oInstance, m_oConfig);
  m_oProtocols.Append(sNow, oFigures.Lines);
  m_oRecord.Evaluated = sNow;
  ++m_oRecord.Evaluations;
  m_oRecord.Error = oFigures.Error;
  m_oLock.Write(m_oRecord);
}

void AnalyzerRun::End(const std::string& sError) {
  m_oRecord.Error = sError;
  m_oRecord.Ended = TimeStamp(std::time(nullptr));
  try {
    m_oLock.Write(m_oRecord);
  } catch (const std::system_error&) {
    // There is no caller left to tell. The lock file then shows a run that ended
    // unexpectedly.
  }
}

}  // namespace ZELWbr3::Instances
