// zelanalyzer: evaluates an instance at an interval, in the background.

#include "host/OpenServer.h"
#include "host/StandardStreams.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/base/Version.h"
#include "zelwbr3/instances/common/daemon/AnalyzerRun.h"
#include "zelwbr3/instances/common/daemon/Daemonize.h"
#include "zelwbr3/instances/sqlite/SQLiteDatabase.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <iostream>
#include <limits>

namespace {

using namespace ZELWbr3;

int Complain(const std::string& sText) {
  std::cerr << "zelanalyzer: " << Text::OneLine(sText) << '\n';
  return 1;
}

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
  Host::ReserveStandardStreams();
  std::string sInstance;
  Instances::AnalyzerOptions oOptions;
  const CLI::Range oCount(0, std::numeric_limits<int>::max());
  CLI::App oApp(
      "Starts the analyzer of an instance in the background: it evaluates the instance at an interval and writes "
      "protocol sets.",
      "zelanalyzer");
  oApp.add_option("INSTANCE", sInstance, "sqlite:FILE or postgresql://…");
  oApp.add_option("--config", oOptions.ConfigFile, "Configuration file: which groups of figures are written");
  oApp.add_option("--number", oOptions.Number, "Evaluations until it ends, 0 (endless) unless given")->check(oCount);
  oApp.add_option("--interval", oOptions.Interval,
                  "Seconds between two evaluations, " + std::to_string(Instances::AnalyzerOptions::DefaultInterval) +
                      " when 0 or not given")
      ->check(oCount);
  oApp.add_flag("--delete", oOptions.DeleteToday, "Delete today's protocol files first");
  oApp.add_flag("--reconnect", oOptions.Reconnect, "Go on when the instance cannot be read for a while");
  oApp.set_version_flag("--version", "zelanalyzer " ZELWBR3_VERSION);
  try {
    oApp.parse(argc, argv);
  } catch (const CLI::Success& oSuccess) {
    return oApp.exit(oSuccess);  // help was asked for
  } catch (const CLI::ParseError& oError) {
    return Complain(oError.what());
  }
  // Not left to the parser, which would say so before it names an unknown option.
  if (sInstance.empty()) return Complain("INSTANCE is required");
  try {
    return Run(oOptions, sInstance);
  } catch (const std::exception& oError) {
    return Complain(oError.what());
  }
}
