// zelanalyzer: evaluates an instance at an interval, in the background.

#include "host/CommandLine.h"
#include "host/OpenServer.h"
#include "zelwbr3/instances/common/daemon/AnalyzerRun.h"
#include "zelwbr3/instances/common/daemon/Daemonize.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"

#include <filesystem>
#include <limits>

namespace {

using namespace ZELWbr3;

std::string Absolute(const std::string& sPath) { return std::filesystem::absolute(sPath).lexically_normal().string(); }

Instances::EvaluatedInstance DatabaseFile(const std::string& sName) {
  const std::string sFile = Absolute(sName);
  return {sFile, Instances::AnalyzerFolder(sFile), [sFile] { return SQLite::OpenDatabase(sFile); },
          Instances::CommonGroups()};
}

Instances::EvaluatedInstance InstanceOf(const std::string& sInstance) {
  if (Host::IsServer(sInstance)) return Host::EvaluatedServer(sInstance);
  const std::string sKind = "sqlite:";
  if (!sInstance.starts_with(sKind)) {
    throw std::invalid_argument("The instance \"" + sInstance + "\" is neither sqlite:FILE nor postgresql://…");
  }
  if (sInstance == sKind) throw std::invalid_argument("The instance \"" + sInstance + "\" names no file");
  return DatabaseFile(sInstance.substr(sKind.size()));
}

int Run(Instances::AnalyzerOptions oOptions, const std::string& sInstance) {
  const Instances::EvaluatedInstance oInstance = InstanceOf(sInstance);
  if (!oOptions.ConfigFile.empty()) oOptions.ConfigFile = Absolute(oOptions.ConfigFile);
  const auto oConfig = Instances::AnalyzerConfig::Read(oOptions.ConfigFile, oInstance.GroupNames());
  return Instances::Daemonize([&](const Instances::Started& oStarted) {
    Instances::AnalyzerRun oRun(oInstance, oOptions, oConfig);
    try {
      oStarted();
    } catch (const std::exception& oError) {
      oRun.End(oError.what());
      throw;
    }
    return oRun.Run() ? 0 : 1;
  });
}

}  // namespace

int main(int argc, char** argv) {
  std::string sInstance;
  Instances::AnalyzerOptions oOptions;
  const CLI::Range oCount(0, std::numeric_limits<int>::max());
  Host::CommandLine oApp("zelanalyzer",
                         "Starts the analyzer of an instance in the background: it evaluates the instance at an "
                         "interval and writes protocol sets.");
  oApp.add_option("INSTANCE", sInstance, "sqlite:FILE or postgresql://…");
  oApp.add_option("--config", oOptions.ConfigFile, "Configuration file: which groups of figures are written");
  oApp.add_option("--number", oOptions.Number, "Evaluations until it ends, 0 (endless) unless given")->check(oCount);
  oApp.add_option("--interval", oOptions.Interval,
                  "Seconds between two evaluations, " + std::to_string(Instances::AnalyzerOptions::DefaultInterval) +
                      " when 0 or not given")
      ->check(oCount);
  oApp.add_flag("--delete", oOptions.DeleteToday, "Delete today's protocol files first");
  oApp.add_flag("--reconnect", oOptions.Reconnect, "Go on when the instance cannot be read for a while");
  return oApp.Run(argc, argv, [&] {
    // Not left to the parser, which would say so before it names an unknown option.
    if (sInstance.empty()) throw std::invalid_argument("INSTANCE is required");
    return Run(oOptions, sInstance);
  });
}
