#pragma once

#include "zelwbr3/ZELLib3/Analyzer.h"
#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"
#include "zelwbr3/instances/common/analyzer/LockFile.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"

#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// The analyzer of an instance: the program zelanalyzer, which runs in the
/// background whether or not this one does, and is found by its lock file.
///
/// Each member looks afresh. Those about a run tell about the last one when
/// none is under way. Members that cannot be read raise ZELLib3::InstanceError.
class BackgroundAnalyzer : public ZELLib3::Analyzer {
 public:
  using Long = ZELLib3::Long;

  struct Setup {
    std::string Instance;  ///< as the instance's error texts begin
    std::string Argument;  ///< what zelanalyzer is to open
    /// "NAME=VALUE": what it needs and must not stand in its arguments.
    std::vector<std::string> Environment;
    /// Where zelanalyzer is; empty = $ZELWBR3_ANALYZER, otherwise beside the
    /// running program.
    std::string Program;
    /// May raise that there is none.
    std::function<AnalyzerFolder()> Folder;
    /// Makes why something cannot be done the instance's LastError, and answers
    /// that.
    std::function<ZELLib3::Error(const std::string& sWhy)> Refuse;
  };

  explicit BackgroundAnalyzer(Setup oSetup);

  /// 1 while the process lives, 2 otherwise.
  Long State() const override;
  /// How many evaluations there have been, and when the last one was.
  std::string Info() const override;
  std::string ConfigFile() const override { return Record().ConfigFile; }
  std::string ProtocolDir() const override { return m_oFolder.Path(); }
  Long Interval() const override { return Record().Interval; }
  std::string Reconnect() const override;
  std::string ProcessID() const override;
  /// The system's session, which is the process's own: there need not be another.
  std::string SessionID() const override;
  std::string StartTime() const override;
  bool HasError() const override { return !ErrorText().empty(); }
  /// What it cannot do at the moment, or why it ended, also that it was killed.
  std::string ErrorText() const override;
  std::optional<std::vector<ProtocolSet>> ProtocolSets() override;

  std::vector<Protocol> Protocols(Long lDays) override;

  /// Returns when the first evaluation has been written, or is known to be
  /// impossible, which LastError then explains; at the latest after 30 seconds.
  bool Start(const StartOptions& oOptions) override;
  /// Returns when the process has ended; false when it has not within 15
  /// seconds, or none runs.
  bool Stop() override;
  /// Today's set may be deleted while the analyzer runs: it begins it anew.
  bool DeleteProtocols(const std::string& sUntilDate) override;

 private:
  template <typename Function>
  auto Ask(Function oRead) const;
  AnalyzerRecord Record() const;
  /// No value when none runs.
  std::optional<int> Process() const;
  /// What oOperation raises becomes LastError.
  bool Do(const std::function<void()>& oOperation);

  Setup m_oSetup;
  AnalyzerFolder m_oFolder;
};

}  // namespace ZELWbr3::Instances
