#include "zelwbr3/instances/postgres/operations/Operations.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/settings/ObservationStore.h"
#include "zelwbr3/instances/postgres/operations/PointInTimeRestart.h"

#include <algorithm>
#include <stdexcept>

namespace ZELWbr3::Postgres {

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr auto kLook = 50ms;
/// The first with recovery.signal; earlier ones have a file of settings instead.
constexpr int kHasRecoverySignal = 120000;

std::string TimeText(std::time_t tTime) { return Calendar::ISOText(Calendar::LocalTime(tTime), ' '); }

}  // namespace

bool Operations::Attempt(const std::function<void()>& oOperation) {
  try {
    m_oServer->TryAgain();
    m_oServer->Waiter().Operate(oOperation);
    return true;
  } catch (const ZELLib3::InstanceError& oError) {
    m_oServer->LastError(oError.ErrorObject());
    return false;
  } catch (const std::exception& oError) {
    return m_oServer->Refuse(Text::OneLine(oError.what()));
  }
}

/// Without the server that an error begins with.
std::string Operations::Why(const std::exception& oError) const {
  const std::string sServer = m_oServer->Name() + ": ";
  const std::string sText = oError.what();
  return sText.starts_with(sServer) ? sText.substr(sServer.size()) : sText;
}

void Operations::Run(const std::function<void(Connection&)>& oStep) {
  Pause(0ms);
  if (!m_oServer->Operate(oStep)) throw ZELLib3::InstanceError(m_oServer->LastError());
}

void Operations::CheckUser() {
  Run([&](Connection& oConnection) {
    if (!m_oServer->Rights().IsSuper) throw std::runtime_error("only a superuser can do that");
    if (oConnection.Execute("SELECT pg_is_in_recovery()", "looking for the role").Text(0, 0) == "t") {
      throw std::runtime_error("a standby follows its primary: its state is changed there");
    }
  });
}

bool Operations::IsAdmin() {
  const auto oReading = m_oServer->Read();
  if (oReading->Figures == nullptr) throw ZELLib3::InstanceError(oReading->Why);
  return oReading->Status == ZELLib3::Status::Admin;
}

ServerControl& Operations::Control() {
  const LocalServer* pLocal = m_oServer->Local();
  if (!pLocal) {
    throw std::runtime_error(
        "it runs on another machine, or its data directory is not known: it cannot be stopped and started from here");
  }
  if (!m_oControl || m_oControl->Server().DataDirectory() != pLocal->DataDirectory()) {
    m_oControl.emplace(*pLocal, [this](std::chrono::milliseconds dTime) { Pause(dTime); });
  }
  if (const std::string sWhyNot = m_oControl->WhyNot(); !sWhyNot.empty()) throw std::runtime_error(sWhyNot);
  return *m_oControl;
}

void Operations::Pause(std::chrono::milliseconds dTime) {
  if (m_oServer->Waiter().Await(-1, 0, Clock::now() + dTime) == Waiter::End::Interrupted) {
    throw std::runtime_error("it was interrupted");
  }
}

void Operations::Stop() {
  Pause(0ms);  // the last moment at which nothing has happened
  m_oServer->Disconnect();
  Finally([&] { Control().Stop(); }, [&] { m_oServer->Disconnect(); });
}

void Operations::Start() {
  Finally([&] { Control().Start(); }, [&] { m_oServer->Disconnect(); });
}

bool Operations::StartIfStopped() {
  if (m_oServer->Connected()) return false;
  Pause(0ms);  // what was interrupted tells nothing
  if (Control().Server().Process()) throw ZELLib3::InstanceError(m_oServer->Read()->Why);
  OrStop(true, [&] { Start(); });
  return true;
}

void Operations::OrStop(bool bStarted, const std::function<void()>& oOperation) {
  try {
    oOperation();
  } catch (...) {
    if (bStarted) m_oServer->Waiter().Shelter([&] { Stop(); });
    throw;
  }
}

void Operations::Reopen() {
  m_oServer->TryAgain();
  m_oServer->Waiter().Shelter([&] { Run([](Connection& oConnection) { Admission(oConnection).Reopen(); }); });
}

void Operations::CloseAndAwait(Sessions pSessions, std::chrono::milliseconds dPatience) {
  const auto dEnd = Clock::now() + dPatience;
  const bool bWasAdmin = IsAdmin();
  try {
    Run([](Connection& oConnection) { Admission(oConnection).Close(); });
    for (;;) {
      std::string sRemaining;
      Run([&](Connection& oConnection) {
        Admission oAdmission(oConnection);
        oAdmission.EndIdleSessions();
        sRemaining = (oAdmission.*pSessions)();
      });
      if (sRemaining.empty()) return;
      if (Clock::now() >= dEnd) {
        throw std::runtime_error("still busy after " +
                                 std::to_string(std::chrono::ceil<std::chrono::seconds>(dPatience).count()) +
                                 " s: " + sRemaining);
      }
      Pause(kLook);
    }
  } catch (const std::exception& oError) {
    if (bWasAdmin) throw;
    try {
      Reopen();
    } catch (const std::exception& oFailure) {
      throw std::runtime_error(Why(oError) +
                               "; and only superusers are let in, which cannot be put back: " + Why(oFailure));
    }
    throw;
  }
}

bool Operations::Admin() {
  return Attempt([&] {
    OrStop(StartIfStopped(), [&] {
      CheckUser();
      CloseAndAwait(&Admission::OrdinarySessions, m_oServer->Options().Patience);
    });
  });
}

bool Operations::Online() {
  return Attempt([&] {
    // Once it runs, it is online for those whom it lets in.
    if (StartIfStopped() && !IsAdmin()) return;
    CheckUser();
    Reopen();
  });
}

bool Operations::Shutdown() {
  return Attempt([&] {
    CheckUser();
    Control();
    const bool bWasAdmin = IsAdmin();
    CloseAndAwait(&Admission::OpenTransactions, 2 * m_oServer->Options().Patience);
    if (!bWasAdmin) Reopen();
    Stop();
  });
}

bool Operations::ShutdownQuick() {
  return Attempt([&] {
    if (m_oServer->Connected()) CheckUser();
    if (!Control().Server().Process()) throw std::runtime_error("the server does not run");
    Stop();
  });
}

bool Operations::AutoLogOff() {
  return Attempt([&] {
    CheckUser();
    Control();
  });
}

bool Operations::RestartUntil(const ZELLib3::Date& dUntil) {
  return Attempt([&] {
    const std::time_t tUntil = Calendar::TimeOf(dUntil);
    const std::string sUntil = Calendar::ISOText(dUntil, ' ');
    if (tUntil >= std::time(nullptr)) throw std::runtime_error(sUntil + " has not passed yet");
    // What its backups are, the server tells.
    OrStop(StartIfStopped(), [&] { RestartUntil(tUntil, sUntil); });
  });
}

void Operations::RestartUntil(std::time_t tUntil, const std::string& sUntil) {
  CheckUser();
  ServerControl& oControl = Control();
  PointInTimeRestart oRestart(oControl, BackupBefore(tUntil, sUntil), tUntil);
  oRestart.Check();
  Run([&](Connection& oConnection) {
    // The server looks for the end of its recovery at the first commit after it.
    Connection::Change oMark(oConnection, "marking the end of the log");
    oConnection.Execute("SELECT txid_current()", "marking the end of the log");
    oMark.Commit();
  });
  Stop();
  try {
    Finally([&] { oRestart.Run(); }, [&] { m_oServer->Disconnect(); });
  } catch (const std::exception& oError) {
    try {
      m_oServer->Waiter().Shelter([&] { Start(); });  // with the old data directory
    } catch (const std::exception& oFailure) {
      throw std::runtime_error(std::string(oError.what()) + "; and afterwards " + oFailure.what());
    }
    throw;
  }
  if (const auto& oStore = m_oServer->Options().Observations) {
    oStore->Add(m_oServer->Key(), {oRestart.OldDirectory(), Calendar::Now(), "Before the restart until " + sUntil, -1});
  }
  // It may have been in admin state then.
  m_oServer->Waiter().Shelter([&] {
    if (IsAdmin()) Reopen();
  });
}

Backup Operations::BackupBefore(std::time_t tUntil, const std::string& sUntil) {
  std::string sTablespaces;
  Run([&](Connection& oConnection) {
    sTablespaces = oConnection
                       .Execute(
                           "SELECT string_agg(spcname, ', ' ORDER BY spcname) FROM pg_tablespace "
                           "WHERE spcname NOT IN ('pg_default', 'pg_global')",
                           "looking for tablespaces")
                       .Text(0, 0);
  });
  if (!sTablespaces.empty()) {
    throw std::runtime_error("it has tablespaces outside its data directory, which a backup would write over: " +
                             sTablespaces);
  }
  const bool bOnlyPgBackRest = m_oServer->Rights().Version < kHasRecoverySignal;
  std::vector<Backup> backups = BackupsOf(*m_oServer);
  std::erase_if(backups, [&](const Backup& o) { return !o.CanBeRestored() || (bOnlyPgBackRest && o.Stanza.empty()); });
  if (backups.empty()) {
    throw std::runtime_error(
        "no backup is known that a restart could begin with: one of pgBackRest, or a registered directory with its "
        "restore command");
  }
  std::ranges::sort(backups, std::greater<>(), &Backup::Completed);
  const std::time_t tOldest = backups.back().Completed;
  // Both are whole seconds: an end within the same one may be later.
  const auto it = std::ranges::find_if(backups, [&](const Backup& o) { return o.Completed < tUntil; });
  if (it != backups.end()) return *it;
  throw std::runtime_error("no backup had ended at " + sUntil +
                           " that a restart could begin with: the oldest one ended at " + TimeText(tOldest));
}

}  // namespace ZELWbr3::Postgres
