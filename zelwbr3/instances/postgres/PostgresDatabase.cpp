#include "zelwbr3/instances/postgres/PostgresDatabase.h"

#include "zelwbr3/instances/common/ThisSystem.h"
#include "zelwbr3/instances/common/settings/ListedParameterHistory.h"
#include "zelwbr3/instances/common/settings/ListedParameters.h"
#include "zelwbr3/instances/postgres/PostgresActivity.h"
#include "zelwbr3/instances/postgres/PostgresCaches.h"
#include "zelwbr3/instances/postgres/PostgresDataArea.h"
#include "zelwbr3/instances/postgres/PostgresHistory.h"
#include "zelwbr3/instances/postgres/PostgresHotStandby.h"
#include "zelwbr3/instances/postgres/PostgresLogArea.h"
#include "zelwbr3/instances/postgres/PostgresSQLTables.h"
#include "zelwbr3/instances/postgres/PostgresSessions.h"
#include "zelwbr3/instances/postgres/PostgresStateInfo.h"
#include "zelwbr3/instances/postgres/PostgresSysInfos.h"
#include "zelwbr3/instances/postgres/PostgresVersion.h"
#include "zelwbr3/instances/postgres/analyzer/AnalyzerSetup.h"
#include "zelwbr3/instances/postgres/analyzer/Bottlenecks.h"
#include "zelwbr3/instances/postgres/operations/Operations.h"
#include "zelwbr3/instances/postgres/server/Server.h"

#include <map>

#include <filesystem>

namespace ZELWbr3::Postgres {

PostgresDatabase::PostgresDatabase(std::string_view sAddress, const Options& oOptions)
    : PostgresDatabase(std::make_shared<Server>(sAddress, oOptions)) {}

PostgresDatabase::PostgresDatabase(std::shared_ptr<Server> oServer)
    : m_oServer(std::move(oServer)),
      m_oParameters(std::make_shared<ServerParameters>(m_oServer)),
      m_oOperations(std::make_shared<Operations>(m_oServer)) {}

std::shared_ptr<ZELLib3::StateInfo> PostgresDatabase::StateInfo() {
  return std::make_shared<PostgresStateInfo>(m_oServer);
}

std::shared_ptr<ZELLib3::Parameters> PostgresDatabase::Parameters() {
  return std::make_shared<Instances::ListedParameters>(m_oParameters);
}

std::shared_ptr<ZELLib3::LogSettings> PostgresDatabase::LogSettings() {
  return std::make_shared<PostgresLogSettings>(m_oServer);
}

std::shared_ptr<ZELLib3::SysInfos> PostgresDatabase::SysInfos() {
  return std::make_shared<PostgresSysInfos>(m_oServer);
}

std::shared_ptr<ZELLib3::ParameterHistory> PostgresDatabase::ParameterHistory() {
  return std::make_shared<Instances::ListedParameterHistory>(m_oParameters);
}

std::shared_ptr<ZELLib3::Caches> PostgresDatabase::Caches() {
  return std::make_shared<PostgresCaches>(m_oServer, m_oParameters);
}

std::shared_ptr<ZELLib3::Activity> PostgresDatabase::Activity() {
  return std::make_shared<PostgresActivity>(m_oServer);
}

std::shared_ptr<ZELLib3::SQLTables> PostgresDatabase::SQLTables() {
  return std::make_shared<PostgresSQLTables>(m_oServer);
}

std::shared_ptr<ZELLib3::DataArea> PostgresDatabase::DataArea() {
  return std::make_shared<PostgresDataArea>(m_oServer);
}

std::shared_ptr<ZELLib3::LogArea> PostgresDatabase::LogArea() { return std::make_shared<PostgresLogArea>(m_oServer); }

std::shared_ptr<ZELLib3::Sessions> PostgresDatabase::Sessions() {
  return std::make_shared<PostgresSessions>(m_oServer);
}

std::shared_ptr<ZELLib3::HotStandby> PostgresDatabase::HotStandby() {
  return std::make_shared<PostgresHotStandby>(m_oServer);
}

ZELLib3::Error PostgresDatabase::LastError() { return m_oServer->LastError(); }

std::string PostgresDatabase::InstanceName() { return m_oServer->InstanceName(); }

ZELLib3::Long PostgresDatabase::InstanceNumber() { return m_oServer->Rights().Port; }

std::shared_ptr<ZELLib3::Version> PostgresDatabase::Version() {
  return std::make_shared<PostgresVersion>(m_oServer->Rights().VersionText);
}

/// The page shows both in brackets, so neither is ever empty.
std::string PostgresDatabase::OSVersion() {
  if (m_oServer->Local() != nullptr) return Instances::ThisSystem().release;
  const std::string& sPlatform = m_oServer->Rights().Platform;
  return sPlatform.empty() ? "unknown" : sPlatform.substr(0, sPlatform.find('-'));
}

std::string PostgresDatabase::OSName() {
  if (m_oServer->Local() != nullptr) return Instances::ThisSystem().sysname;
  const std::string& sPlatform = m_oServer->Rights().Platform;
  if (sPlatform.empty()) return "unknown";
  return sPlatform.find("linux") != std::string::npos ? "Linux" : sPlatform;
}

bool PostgresDatabase::Connected() { return m_oServer->Refresh(); }

ZELLib3::Long PostgresDatabase::PageSize() { return m_oServer->PageSize(); }

std::string PostgresDatabase::RunDirectory() { return m_oServer->DataDirectory(); }

ZELLib3::Long PostgresDatabase::HotStandbyRole() { return PostgresHotStandby::Role(*m_oServer); }

bool PostgresDatabase::HotStandbyWarning() {
  const auto oFigures = m_oServer->ReadFigures();
  return oFigures && oFigures->StandbyWarns();
}

std::vector<ZELLib3::Trouble> PostgresDatabase::Troubles() {
  using Kind = ZELLib3::Trouble::Kind;
  static const std::map<std::string, Kind> kinds = {{"Locks", Kind::LockWait},
                                                    {"Transaction", Kind::LongTransaction},
                                                    {"Archive", Kind::Archive},
                                                    {"Slot", Kind::Archive}};
  std::vector<ZELLib3::Trouble> troubles;
  // Without an interval there are no rates, which none of these is about.
  for (const Bottleneck& o : Bottleneck::Find(*m_oServer, {})) {
    if (const auto it = kinds.find(o.Name); it != kinds.end()) troubles.push_back({it->second, o.Text, o.Level >= 3});
  }
  return troubles;
}

void PostgresDatabase::Interrupt() { m_oServer->Interrupt(); }

void PostgresDatabase::WaitRunner(Runner oRunner) { m_oServer->Waiter().Runner(std::move(oRunner)); }

std::shared_ptr<ZELLib3::History> PostgresDatabase::History() { return std::make_shared<PostgresHistory>(m_oServer); }

std::shared_ptr<ZELLib3::Analyzer> PostgresDatabase::Analyzer() {
  return std::make_shared<Instances::BackgroundAnalyzer>(AnalyzerSetupOf(m_oServer));
}

bool PostgresDatabase::Shutdown() { return m_oOperations->Shutdown(); }

bool PostgresDatabase::ShutdownQuick() { return m_oOperations->ShutdownQuick(); }

bool PostgresDatabase::Admin() { return m_oOperations->Admin(); }

bool PostgresDatabase::Online() { return m_oOperations->Online(); }

bool PostgresDatabase::RestartUntil(const ZELLib3::Date& dUntil) { return m_oOperations->RestartUntil(dUntil); }

bool PostgresDatabase::AutoLogOff() { return m_oOperations->AutoLogOff(); }

bool PostgresDatabase::RegisterBackup(const std::string& sPath, const ZELLib3::Date& dCompleted,
                                      const std::string& sLabel, const std::string& sRestoreCommand) {
  if (sPath.empty()) return m_oServer->Refuse("a backup without a name cannot be registered");
  if (dCompleted == ZELLib3::Date{}) {
    return m_oServer->Refuse("the backup " + sPath + " cannot be registered without a date");
  }
  if (!m_oServer->Options().Observations) {
    return m_oServer->Refuse("the backup " + sPath + " cannot be registered: nothing is remembered about servers here");
  }
  try {
    Register(*m_oServer, {std::filesystem::absolute(sPath).lexically_normal(), dCompleted, sLabel, sRestoreCommand});
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    m_oServer->LastError(oError.ErrorObject());
    return false;
  }
}

std::shared_ptr<ZELLib3::Database> OpenDatabase(std::string_view sAddress) { return OpenDatabase(sAddress, Options{}); }

std::shared_ptr<ZELLib3::Database> OpenDatabase(std::string_view sAddress, const Options& oOptions) {
  return std::make_shared<PostgresDatabase>(sAddress, oOptions);
}

}  // namespace ZELWbr3::Postgres
