#include "zelwbr3/instances/postgres/local/ServerControl.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/Process.h"
#include "zelwbr3/instances/common/UserFolder.h"

#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <system_error>

namespace ZELWbr3::Postgres {

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kTimeout = 60s;  ///< that pg_ctl itself waits
constexpr auto kSlack = 10s;    ///< until pg_ctl is taken to hang
constexpr auto kNoProgress = 10min;
constexpr auto kLook = 100ms;

/// For the shell that pg_ctl starts the server with.
std::string Quoted(const std::string& sText) {
  std::string sQuoted = "'";
  for (const char c : sText) sQuoted += c == '\'' ? "'\\''" : std::string(1, c);
  return sQuoted + "'";
}

/// The last line with a reason that was written after iFrom bytes.
std::string ReasonIn(const std::string& sLog, std::uintmax_t iFrom) {
  std::ifstream oFile(sLog, std::ios::binary);
  oFile.seekg(static_cast<std::streamoff>(iFrom));
  std::string sReason;
  for (std::string sLine; std::getline(oFile, sLine);) {
    for (const std::string_view sMark : {"FATAL:", "PANIC:"}) {
      const auto iMark = sLine.find(sMark);
      if (iMark != std::string::npos) sReason = Text::Trim(sLine.substr(iMark + sMark.size()));
    }
  }
  return sReason;
}

std::uintmax_t SizeOf(const std::string& sPath) {
  std::error_code oError;
  const std::uintmax_t lSize = fs::file_size(sPath, oError);
  return oError ? 0 : lSize;
}

}  // namespace

std::string ServerControl::WhyNot() const {
  const std::string& sFolder = m_oServer.DataDirectory();
  if (!m_oServer.IsOwner()) {
    const std::string sOwner = m_oServer.Owner();
    return sOwner.empty() ? "its data directory " + sFolder + " cannot be seen"
                          : "only " + sOwner + " can stop and start it, who owns " + sFolder;
  }
  if (m_oServer.IsUnderPatroni()) return "Patroni would start it again; use its own commands";
  if (m_oServer.Program("pg_ctl").empty()) {
    return sFolder + "/postmaster.opts does not tell the program that it was started with";
  }
  return {};
}

void ServerControl::Control(const std::vector<std::string>& arguments, std::chrono::seconds dTimeout) const {
  Instances::ProgramCall oCall{{m_oServer.Program("pg_ctl"), "-D", m_oServer.DataDirectory()}, {}};
  oCall.Arguments.insert(oCall.Arguments.end(), arguments.begin(), arguments.end());
  Instances::RunProgram(oCall, dTimeout);
}

void ServerControl::Stop() {
  const auto oProcess = m_oServer.Process();
  if (!oProcess) return;
  if (const std::string sOutput = m_oServer.OutputFile(); !sOutput.empty()) m_sLog = sOutput;
  Control({"stop", "-m", "fast", "-w", "-t", std::to_string(kTimeout.count())}, kTimeout + kSlack);
}

/// Where its output went before, or a file of its port's own.
std::string ServerControl::LogPath() const {
  if (!m_sLog.empty() && access(m_sLog.c_str(), W_OK) == 0) return m_sLog;
  const fs::path oFolder = Instances::UserFolder::State();
  fs::create_directories(oFolder);
  return oFolder / ("postgres-" + fs::path(m_oServer.DataDirectory()).filename().string() + ".log");
}

void ServerControl::Start(const std::vector<std::string>& settings, const std::string& sClusterState) {
  const auto oLeft = m_oServer.Postmaster();
  std::vector<std::string> command = m_oServer.LastCommand();
  if (command.empty()) throw std::runtime_error(WhyNot());
  for (const std::string& sSetting : settings) command.insert(command.end(), {"-c", sSetting});
  std::string sOptions;
  for (std::size_t i = 1; i < command.size(); ++i) sOptions.append(i > 1 ? " " : "").append(Quoted(command[i]));
  const std::string sLog = LogPath();
  const std::uintmax_t iBefore = SizeOf(sLog);
  try {
    std::vector<std::string> arguments = {"start", "-w",       "-t", std::to_string(kTimeout.count()),
                                          "-p",    command[0], "-l", sLog};
    if (!sOptions.empty()) arguments.insert(arguments.end(), {"-o", sOptions});
    try {
      Control(arguments, kTimeout + kSlack);
    } catch (const std::runtime_error&) {
      if (!m_oServer.Process()) throw;  // otherwise it is still recovering
    }
    AwaitReady(sClusterState);
  } catch (const std::runtime_error& oError) {
    std::string sReason = ReasonIn(sLog, iBefore);
    // One that was killed is listed until its parent takes note, and its number may
    // have become another program's.
    if (oLeft && !m_oServer.Process() && sReason.find("postmaster.pid") != std::string::npos) {
      sReason += ": process " + std::to_string(oLeft->Process) + ", which it names, is no server any more; remove it";
    }
    throw std::runtime_error("the server does not start: " + (sReason.empty() ? oError.what() : sReason) + " (see " +
                             sLog + ")");
  }
}

/// The server says "ready", too, when it only takes reading connections for the
/// time of a recovery; then pg_controldata tells when that has ended. An empty
/// state is any.
void ServerControl::AwaitReady(const std::string& sClusterState) const {
  std::string sSeen;
  auto dEnd = Clock::now() + kNoProgress;
  for (;;) {
    const auto oPostmaster = m_oServer.Postmaster();
    if (!oPostmaster || !m_oServer.Process()) throw std::runtime_error("it has ended again");
    const bool bReady = oPostmaster->Status == "ready" || oPostmaster->Status == "standby";
    if (bReady && (sClusterState.empty() || m_oServer.ControlData("Database cluster state") == sClusterState)) return;
    if (const std::string sNow = oPostmaster->Status + m_oServer.Activity(); sNow != sSeen) {
      sSeen = sNow;
      dEnd = Clock::now() + kNoProgress;
    }
    if (Clock::now() > dEnd) {
      Control({"stop", "-m", "immediate"}, kTimeout + kSlack);
      throw std::runtime_error("no progress within 10 minutes");
    }
    m_oPause(kLook);
  }
}

}  // namespace ZELWbr3::Postgres
