#pragma once

#include "zelwbr3/ZELLib3/Analyzer.h"
#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"
#include "zelwbr3/instances/common/analyzer/LockFile.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <functional>
#include <memory>
#include <string>

namespace ZELWbr3::SQLite {

/// The analyzer of a database file: the program zelanalyzer, which runs in the
/// background whether or not this one does, and is found by its lock file.
///
/// Each member looks afresh. Those about a run tell about the last one when
/// none is under way. Members that cannot be read raise ZELLib3::InstanceError.
class SQLiteAnalyzer : public ZELLib3::Analyzer {
 public:
  using Long = ZELLib3::Long;

  /// sProgram is where zelanalyzer is; empty = $ZELWBR3_ANALYZER, otherwise
  /// beside the running program.
  SQLiteAnalyzer(std::shared_ptr<InstanceFile> oFile, std::string sProgram);

  /// 1 while the process lives, 2 otherwise.
  Long State() const override;
  /// How many evaluations there have been, and when the last one was.
  std::string Info() const override;
  std::string ConfigFile() const override { return Record().ConfigFile; }
  std::string ProtocolDir() const override { return m_oFolder.Path(); }
  Long Interval() const override { return Record().Interval; }
  std::string Reconnect() const override;
  std::string ProcessID() const override;
  /// The system's session, which is the process's own: SQLite has none.
  std::string SessionID() const override;
  std::string StartTime() const override;
  bool HasError() const override { return !ErrorText().empty(); }
  /// What it cannot do at the moment, or why it ended, also that it was killed.
  std::string ErrorText() const override;
  std::optional<std::vector<ProtocolSet>> ProtocolSets() override;

  /// Returns when the first evaluation has been written, or is known to be
  /// impossible, which LastError then explains; at the latest after 30 seconds.
  bool Start(const StartOptions& oOptions) override;
  /// Returns when the process has ended; false when it has not within 15
  /// seconds, or none runs.
  bool Stop() override;
  /// Today's set may be deleted while the analyzer runs: it begins it anew.
  bool DeleteProtocols(const std::string& sUntilDate) override;

 private:
  Instances::AnalyzerRecord Record() const;
  /// No value when none runs.
  std::optional<int> Process() const;
  /// What oOperation raises becomes LastError.
  bool Do(const std::function<void()>& oOperation);

  std::shared_ptr<InstanceFile> m_oFile;
  std::string m_sProgram;
  Instances::AnalyzerFolder m_oFolder;
};

}  // namespace ZELWbr3::SQLite
