#pragma once

#include "zelwbr3/instances/common/analyzer/LockFile.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"
#include "zelwbr3/instances/common/daemon/AnalyzerConfig.h"
#include "zelwbr3/instances/common/daemon/Figures.h"
#include "zelwbr3/instances/common/daemon/StopSignals.h"

#include <string>

namespace ZELWbr3::Instances {

struct AnalyzerOptions {
  static constexpr int DefaultInterval = 900;

  std::string ConfigFile;    ///< absolute; empty = default
  int Number = 0;            ///< evaluations until it ends; 0 = endless
  int Interval = 0;          ///< seconds between two evaluations; 0 = default
  bool DeleteToday = false;  ///< delete today's protocol files first
  bool Reconnect = false;    ///< go on when the instance cannot be read for a while
};

/// The analyzer of an instance at work: evaluates it at each interval and writes
/// protocol sets. At most one runs for an instance.
class AnalyzerRun {
 public:
  /// Takes the analyzer's lock and makes the first evaluation. Raises an
  /// exception that says why it cannot run: another one runs, the instance
  /// cannot be read (also with Reconnect: the name may be wrong), or nothing can be
  /// written.
  AnalyzerRun(const EvaluatedInstance& oInstance, const AnalyzerOptions& oOptions, const AnalyzerConfig& oConfig);

  /// Goes on until the number of evaluations is reached, the process is asked
  /// to stop (SIGTERM, SIGINT), or it cannot go on: the lock file then says
  /// why, and the answer is false.
  bool Run();
  /// Writes into the lock file that it has ended, and why: empty when it was to.
  void End(const std::string& sError);

 private:
  void Evaluate();
  bool IsComplete() const { return m_oRecord.Number > 0 && m_oRecord.Evaluations >= m_oRecord.Number; }

  StopSignals m_oSignals;
  EvaluatedInstance m_oInstance;
  AnalyzerConfig m_oConfig;
  ProtocolFolder m_oProtocols;
  LockFile m_oLock;
  AnalyzerRecord m_oRecord;
};

}  // namespace ZELWbr3::Instances
