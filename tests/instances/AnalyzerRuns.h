#pragma once

#include "tests/instances/SQLiteFiles.h"
#include "zelwbr3/instances/common/Process.h"
#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"
#include "zelwbr3/instances/common/analyzer/LockFile.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"

#include <signal.h>
#include <sys/inotify.h>
#include <sys/poll.h>

#include <chrono>

/// A database file in WAL mode with real analyzers, which keep their files
/// below a folder of the test's own and end with it at the latest.
class AnalyzerRuns : public SQLiteFiles::SQLiteTest {
 protected:
  using Options = ZELLib3::Analyzer::StartOptions;
  using LockFile = ZELWbr3::Instances::LockFile;
  using RunningProcess = ZELWbr3::Instances::RunningProcess;

  static constexpr std::chrono::seconds kPatience{30};
  static constexpr int kNever = 86400;  ///< seconds between two evaluations

  AnalyzerRuns() {
    setenv("XDG_STATE_HOME", Path("state").c_str(), 1);
    setenv("ZELWBR3_ANALYZER", ZELANALYZER, 1);
    SQLiteFiles::Application(Path(), "PRAGMA journal_mode=WAL; CREATE TABLE t(v)");
    Open();
  }
  ~AnalyzerRuns() override {
    if (!std::filesystem::is_directory(Analyzer().Path())) return;
    if (const auto lProcess = LockFile::Holder(Analyzer().LockPath())) Kill(*lProcess);
  }

  ZELWbr3::Instances::AnalyzerFolder Analyzer() const { return ZELWbr3::Instances::AnalyzerFolder(Path()); }
  ZELWbr3::Instances::ProtocolFolder Protocols() const { return ZELWbr3::Instances::ProtocolFolder(Analyzer().Path()); }

  static Options Every(int lSeconds, int lNumber = 0) {
    Options oOptions;
    oOptions.Interval = lSeconds;
    oOptions.Number = lNumber;
    return oOptions;
  }

  /// "ok", or the error text without the file that it begins with.
  std::string Done(bool bDone) const {
    const std::string sFile = Path() + ": ";
    return bDone ? "ok" : Error().starts_with(sFile) ? Error().substr(sFile.size()) : Error();
  }
  std::string Start(const Options& oOptions) const { return Done(m_oDatabase->Analyzer()->Start(oOptions)); }
  std::string Stop() const { return Done(m_oDatabase->Analyzer()->Stop()); }
  std::string Delete(const std::string& sUntil) const { return Done(m_oDatabase->Analyzer()->DeleteProtocols(sUntil)); }

  /// "1" or "2", and the error text after it.
  std::string State() const {
    const auto oAnalyzer = m_oDatabase->Analyzer();
    EXPECT_EQ(oAnalyzer->HasError(), !oAnalyzer->ErrorText().empty());
    return std::to_string(oAnalyzer->State()) + (oAnalyzer->HasError() ? " " + oAnalyzer->ErrorText() : "");
  }
  int ProcessID() const { return std::stoi(m_oDatabase->Analyzer()->ProcessID()); }

  /// True also for one whose parent has taken note.
  static bool HasEnded(int lProcess, std::chrono::seconds dWait = {}) {
    try {
      return RunningProcess(lProcess).WaitForEnd(dWait);
    } catch (const std::system_error&) {
      return true;
    }
  }
  static void Kill(int lProcess) {
    kill(lProcess, SIGKILL);
    EXPECT_TRUE(HasEnded(lProcess, kPatience));
  }
  /// Waits until the analyzer has ended by itself.
  void AwaitEnd() const {
    const auto lProcess = LockFile::Holder(Analyzer().LockPath());
    EXPECT_TRUE(!lProcess || HasEnded(*lProcess, kPatience)) << "the analyzer still runs";
  }
  /// Waits until what the analyzer writes into its lock file makes something
  /// true.
  void Await(const std::function<bool()>& oIsTrue) const {
    const ZELWbr3::Instances::Descriptor oWatch(inotify_init1(IN_CLOEXEC), "inotify");
    ASSERT_GE(inotify_add_watch(oWatch, Analyzer().LockPath().c_str(), IN_MODIFY), 0);
    const auto dEnd = std::chrono::steady_clock::now() + kPatience;
    while (!oIsTrue()) {
      ASSERT_LT(std::chrono::steady_clock::now(), dEnd) << "the analyzer's state is " << State();
      pollfd oPoll{oWatch, POLLIN, 0};
      poll(&oPoll, 1, 1000);
      char events[4096];
      if (oPoll.revents == 0) continue;
      ASSERT_GT(read(oWatch, events, sizeof events), 0);
    }
  }

  /// The lines of one protocol file of all sets, oldest first, without their
  /// times.
  std::vector<std::string> Lines(const std::string& sFile) const {
    std::vector<std::string> lines;
    for (const auto& sSet : SQLiteFiles::Names(Analyzer().Path())) {
      std::ifstream oStream(Analyzer().Path() + "/" + sSet + "/" + sFile + ".csv");
      for (std::string sLine; std::getline(oStream, sLine);) {
        const auto lTime = sLine.find(',');
        lines.push_back(sLine.erase(lTime, sLine.find(',', lTime + 1) - lTime));
      }
    }
    return lines;
  }
};
