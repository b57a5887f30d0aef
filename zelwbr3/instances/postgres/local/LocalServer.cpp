#include "zelwbr3/instances/postgres/local/LocalServer.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/Process.h"
#include "zelwbr3/instances/common/SystemUser.h"

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>
#include <sstream>

namespace ZELWbr3::Postgres {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

constexpr double kStartTolerance = 2;  ///< seconds: /proc counts in ticks, and clocks are set
constexpr auto kControlDataTimeout = 5s;
constexpr int kDefaultPort = 5432;

/// Also of files in /proc, which have no size. Empty when it cannot be read.
std::string ReadText(const std::string& sPath) {
  std::ifstream oFile(sPath, std::ios::binary);
  return {std::istreambuf_iterator<char>(oFile), {}};
}

std::string Trimmed(std::string_view sText) { return Text::Trim(sText, " \t\r\n"); }

double Seconds(clockid_t eClock) {
  timespec oTime{};
  clock_gettime(eClock, &oTime);
  return static_cast<double>(oTime.tv_sec) + static_cast<double>(oTime.tv_nsec) / 1e9;
}

struct ProcessState {
  std::string Name;
  char State = 'Z';  ///< Z has ended, and its parent has not taken note
  int Parent = 0;
  double StartedOn = 0;  ///< seconds since 1970
};

/// From /proc/PID/stat, which every user may read: "PID (NAME) STATE …", the time
/// of its start is the 20th field after the name.
std::optional<ProcessState> LookAtProcess(int lProcess) {
  const std::string sStat = ReadText("/proc/" + std::to_string(lProcess) + "/stat");
  const auto iName = sStat.find('(');
  const auto iEnd = sStat.rfind(')');
  if (lProcess <= 0 || iName == std::string::npos || iEnd == std::string::npos) return std::nullopt;
  ProcessState oState;
  oState.Name = sStat.substr(iName + 1, iEnd - iName - 1);
  std::istringstream oFields(sStat.substr(iEnd + 1));
  oFields >> oState.State >> oState.Parent;
  std::string sSkipped;
  for (int iField = 0; iField < 17; ++iField) oFields >> sSkipped;
  double dTicks = 0;
  if (!(oFields >> dTicks)) return std::nullopt;
  const double dSinceStart = Seconds(CLOCK_BOOTTIME) - dTicks / static_cast<double>(sysconf(_SC_CLK_TCK));
  oState.StartedOn = Seconds(CLOCK_REALTIME) - dSinceStart;
  return oState;
}

bool IsServerProcess(const std::optional<ProcessState>& oState) {
  return oState && oState->Name == "postgres" && oState->State != 'Z';
}

/// postmaster.opts: the program, then each argument in double quotes.
std::vector<std::string> Words(const std::string& sLine) {
  const std::string_view kBetween = "\" \"";
  const auto iFirst = sLine.find(" \"");
  std::vector<std::string> words = {sLine.substr(0, iFirst)};
  if (iFirst == std::string::npos) return words;
  std::string sRest = sLine.substr(iFirst + 2);
  if (!sRest.empty() && sRest.back() == '"') sRest.pop_back();
  for (std::size_t iWord = 0; iWord != std::string::npos;) {
    const auto iEnd = sRest.find(kBetween, iWord);
    words.push_back(sRest.substr(iWord, iEnd == std::string::npos ? iEnd : iEnd - iWord));
    iWord = iEnd == std::string::npos ? iEnd : iEnd + kBetween.size();
  }
  return words;
}

/// "-c NAME=VALUE", "-cNAME=VALUE", "--NAME=VALUE", "-X VALUE" and "-XVALUE" as
/// they may stand in a command line.
struct Option {
  std::string Name;
  std::string Value;
  std::vector<std::string> Words;
};

std::vector<Option> OptionsOf(const std::vector<std::string>& words) {
  const std::string_view kWithValue = "BcCdDhkNpSfOtW";
  std::vector<Option> options;
  for (std::size_t i = 1; i < words.size(); ++i) {
    Option oOption{"", "", {words[i]}};
    std::string sText = words[i].substr(std::min<std::size_t>(2, words[i].size()));
    const bool bLong = words[i].starts_with("--");
    if (!bLong && sText.empty() && words[i].size() == 2 && kWithValue.find(words[i][1]) != std::string_view::npos &&
        i + 1 < words.size()) {
      oOption.Words.push_back(sText = words[++i]);
    }
    if (bLong || words[i - oOption.Words.size() + 1].starts_with("-c")) {
      const auto iEquals = sText.find('=');
      oOption.Name = sText.substr(0, iEquals);
      oOption.Value = iEquals == std::string::npos ? "" : sText.substr(iEquals + 1);
      std::replace(oOption.Name.begin(), oOption.Name.end(), '-', '_');
    } else {
      oOption.Name = oOption.Words[0].substr(0, 2);
      oOption.Value = sText;
    }
    options.push_back(std::move(oOption));
  }
  return options;
}

bool IsOfRecovery(const Option& oOption) {
  return oOption.Name.starts_with("recovery_target") || oOption.Name == "restore_command" ||
         oOption.Name == "archive_cleanup_command" || oOption.Name == "recovery_end_command";
}

/// The last "port = NUMBER" of a configuration; no value without one.
std::optional<int> PortIn(const std::string& sConfiguration) {
  std::optional<int> oPort;
  std::istringstream oLines(sConfiguration);
  for (std::string sLine; std::getline(oLines, sLine);) {
    std::string sText = Trimmed(sLine);
    if (!sText.starts_with("port")) continue;
    sText = Text::Trim(sText.substr(4), " \t='");
    if (!sText.empty() && std::isdigit(static_cast<unsigned char>(sText[0]))) oPort = std::atoi(sText.c_str());
  }
  return oPort;
}

}  // namespace

std::vector<FileSystem> FileSystemsOf(const std::vector<std::string>& folders) {
  std::vector<FileSystem> systems;
  std::set<dev_t> devices;
  for (const std::string& sFolder : folders) {
    struct stat oStat {};
    struct statvfs oSpace {};
    if (stat(sFolder.c_str(), &oStat) != 0 || statvfs(sFolder.c_str(), &oSpace) != 0) continue;
    if (!devices.insert(oStat.st_dev).second) continue;
    systems.push_back(
        {sFolder, static_cast<std::int64_t>(oSpace.f_bavail) * static_cast<std::int64_t>(oSpace.f_frsize)});
  }
  return systems;
}

bool LocalServer::RunsHere(int lBackendProcess, std::time_t tBackendStart) {
  const auto oState = LookAtProcess(lBackendProcess);
  return IsServerProcess(oState) && std::abs(oState->StartedOn - static_cast<double>(tBackendStart)) <= kStartTolerance;
}

std::string LocalServer::FromEnvironment(int iPort) {
  const char* sGiven = std::getenv("PGDATA");
  if (!sGiven || *sGiven != '/') return {};
  const LocalServer oServer(sGiven);
  if (!oServer.IsReadable()) return {};
  if (const auto oPostmaster = oServer.Postmaster()) return oPostmaster->Port == iPort ? sGiven : "";
  std::optional<int> oPort = PortIn(oServer.Read("postgresql.conf"));
  if (const auto oSet = PortIn(oServer.Read("postgresql.auto.conf"))) oPort = oSet;
  for (const Option& oOption : OptionsOf(oServer.LastCommand())) {
    if (oOption.Name == "-p" || oOption.Name == "port") oPort = std::atoi(oOption.Value.c_str());
    if (oOption.Name != "config_file") continue;
    if (const auto oSet = PortIn(ReadText(oOption.Value))) oPort = oSet;
  }
  return oPort.value_or(kDefaultPort) == iPort ? sGiven : "";
}

bool LocalServer::IsReadable() const { return access((m_sDataDirectory + "/PG_VERSION").c_str(), R_OK) == 0; }

bool LocalServer::IsOwner() const {
  struct stat oStat {};
  return stat(m_sDataDirectory.c_str(), &oStat) == 0 && oStat.st_uid == geteuid();
}

std::string LocalServer::Owner() const {
  struct stat oStat {};
  if (stat(m_sDataDirectory.c_str(), &oStat) != 0) return {};
  const auto oUser = Instances::SystemUser::Of(oStat.st_uid);
  return oUser ? oUser->Name : "user " + std::to_string(oStat.st_uid);
}

std::optional<PostmasterFile> LocalServer::Postmaster() const {
  std::istringstream oText(Read("postmaster.pid"));
  std::array<std::string, 8> lines;
  for (std::string& sLine : lines) {
    std::getline(oText, sLine);
    sLine = Trimmed(sLine);
  }
  PostmasterFile oFile;
  // Negative while somebody works on the directory without a server.
  oFile.Process = std::abs(std::atoi(lines[0].c_str()));
  if (oFile.Process == 0) return std::nullopt;
  oFile.DataDirectory = lines[1];
  oFile.Started = std::atoll(lines[2].c_str());
  oFile.Port = std::atoi(lines[3].c_str());
  oFile.SocketFolder = lines[4];
  oFile.ListenAddress = lines[5];
  oFile.Status = lines[7];
  return oFile;
}

std::optional<int> LocalServer::Process() const {
  const auto oPostmaster = Postmaster();
  if (!oPostmaster || !IsServerProcess(LookAtProcess(oPostmaster->Process))) return std::nullopt;
  // Its working directory is the data directory; only the owner may see that.
  std::error_code oError;
  const fs::path oFolder = fs::read_symlink("/proc/" + std::to_string(oPostmaster->Process) + "/cwd", oError);
  if (!oError && !fs::equivalent(oFolder, m_sDataDirectory, oError)) return std::nullopt;
  return oPostmaster->Process;
}

std::string LocalServer::OutputFile() const {
  const auto oProcess = Process();
  if (!oProcess) return {};
  std::error_code oError;
  const fs::path oFile = fs::read_symlink("/proc/" + std::to_string(*oProcess) + "/fd/2", oError);
  return !oError && fs::is_regular_file(oFile, oError) ? oFile.string() : std::string();
}

std::string LocalServer::Activity() const {
  const auto oProcess = Process();
  if (!oProcess) return {};
  const std::string sProcess = std::to_string(*oProcess);
  std::istringstream oChildren(ReadText("/proc/" + sProcess + "/task/" + sProcess + "/children"));
  std::string sTitles;
  for (int lChild = 0; oChildren >> lChild;) sTitles += ReadText("/proc/" + std::to_string(lChild) + "/cmdline");
  return sTitles;
}

bool LocalServer::IsUnderPatroni() const {
  const std::string_view kName = "patroni";
  const auto oServer = Process();
  for (auto oState = LookAtProcess(oServer.value_or(0)); oState; oState = LookAtProcess(oState->Parent)) {
    if (oState->Name == kName) return true;
  }
  std::error_code oError;
  if (!fs::exists(m_sDataDirectory + "/patroni.dynamic.json", oError)) return false;
  for (const auto& oEntry : fs::directory_iterator("/proc", oError)) {
    const auto oState = LookAtProcess(std::atoi(oEntry.path().filename().c_str()));
    if (oState && oState->Name == kName) return true;
  }
  return false;
}

std::vector<std::string> LocalServer::LastCommand() const {
  const std::string sLine = Trimmed(Read("postmaster.opts"));
  if (sLine.empty()) return {};
  const std::vector<std::string> words = Words(sLine);
  std::vector<std::string> command = {words[0]};
  for (Option& oOption : OptionsOf(words)) {
    if (IsOfRecovery(oOption)) continue;
    if (oOption.Name == "-D" || oOption.Name == "data_directory") {
      // It may be the folder of the configuration only.
      const std::string sFile = oOption.Value + "/postgresql.conf";
      std::error_code oIgnored;
      if (!oOption.Value.starts_with('/') || fs::equivalent(oOption.Value, m_sDataDirectory, oIgnored)) continue;
      if (!fs::exists(sFile, oIgnored)) continue;
      oOption.Words = {"-c", "config_file=" + sFile};
    }
    command.insert(command.end(), oOption.Words.begin(), oOption.Words.end());
  }
  return command;
}

std::string LocalServer::Program(const std::string& sName) const {
  const auto command = LastCommand();
  if (command.empty() || !command[0].starts_with('/')) return {};
  return fs::path(command[0]).parent_path() / sName;
}

std::string LocalServer::ControlData(const std::string& sName) const {
  const std::string sProgram = Program("pg_controldata");
  if (sProgram.empty() || !IsOwner()) return {};
  try {
    std::istringstream oLines(Instances::RunProgram({{sProgram, m_sDataDirectory}, {"LC_ALL=C"}}, kControlDataTimeout));
    for (std::string sLine; std::getline(oLines, sLine);) {
      if (sLine.starts_with(sName + ":")) return Trimmed(sLine.substr(sName.size() + 1));
    }
  } catch (const std::exception&) {
    // A damaged directory tells nothing.
  }
  return {};
}

std::string LocalServer::Read(const std::string& sFile) const { return ReadText(m_sDataDirectory + "/" + sFile); }

}  // namespace ZELWbr3::Postgres
