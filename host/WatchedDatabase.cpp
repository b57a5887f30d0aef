#include "host/WatchedDatabase.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/recorded/format/Values.h"

#include <utility>

namespace ZELWbr3::Host {

namespace {

using Arguments = std::vector<Recorded::Call::Argument>;

void Tell(const Recorded::CallObserver& oObserver, const char* sName, Arguments arguments = {}) {
  oObserver({sName, std::move(arguments), true});
}

/// Forwards everything to the real analyzer.
class WatchedAnalyzer : public ZELLib3::Analyzer {
 public:
  WatchedAnalyzer(std::shared_ptr<ZELLib3::Analyzer> oAnalyzer, Recorded::CallObserver oObserver)
      : m_oAnalyzer(std::move(oAnalyzer)), m_oObserver(std::move(oObserver)) {}

  ZELLib3::Long State() const override { return m_oAnalyzer->State(); }
  std::string Info() const override { return m_oAnalyzer->Info(); }
  std::string ConfigFile() const override { return m_oAnalyzer->ConfigFile(); }
  std::string ProtocolDir() const override { return m_oAnalyzer->ProtocolDir(); }
  ZELLib3::Long Interval() const override { return m_oAnalyzer->Interval(); }
  std::string Reconnect() const override { return m_oAnalyzer->Reconnect(); }
  std::string ProcessID() const override { return m_oAnalyzer->ProcessID(); }
  std::string SessionID() const override { return m_oAnalyzer->SessionID(); }
  std::string StartTime() const override { return m_oAnalyzer->StartTime(); }
  bool HasError() const override { return m_oAnalyzer->HasError(); }
  std::string ErrorText() const override { return m_oAnalyzer->ErrorText(); }
  std::optional<std::vector<ProtocolSet>> ProtocolSets() override { return m_oAnalyzer->ProtocolSets(); }

  bool Start(const StartOptions& o) override {
    Tell(m_oObserver, "Analyzer.Start", {o.Config, o.Number, o.Interval, o.Delete, o.Reconnect});
    return m_oAnalyzer->Start(o);
  }
  bool Stop() override {
    Tell(m_oObserver, "Analyzer.Stop");
    return m_oAnalyzer->Stop();
  }
  bool DeleteProtocols(const std::string& sUntilDate) override {
    Tell(m_oObserver, "Analyzer.DeleteProtocols", {sUntilDate});
    return m_oAnalyzer->DeleteProtocols(sUntilDate);
  }

 private:
  std::shared_ptr<ZELLib3::Analyzer> m_oAnalyzer;
  Recorded::CallObserver m_oObserver;
};

}  // namespace

WatchedDatabase::WatchedDatabase(const std::string& sPath, Recorded::CallObserver oObserver)
    : SQLiteDatabase(sPath), m_oObserver(std::move(oObserver)) {}

std::shared_ptr<ZELLib3::Analyzer> WatchedDatabase::Analyzer() {
  return std::make_shared<WatchedAnalyzer>(SQLiteDatabase::Analyzer(), m_oObserver);
}

bool WatchedDatabase::Shutdown() {
  Tell(m_oObserver, "Shutdown");
  return SQLiteDatabase::Shutdown();
}

bool WatchedDatabase::ShutdownQuick() {
  Tell(m_oObserver, "ShutdownQuick");
  return SQLiteDatabase::ShutdownQuick();
}

bool WatchedDatabase::Admin() {
  Tell(m_oObserver, "Admin");
  return SQLiteDatabase::Admin();
}

bool WatchedDatabase::Online() {
  Tell(m_oObserver, "Online");
  return SQLiteDatabase::Online();
}

bool WatchedDatabase::RestartUntil(const ZELLib3::Date& dUntil) {
  Tell(m_oObserver, "RestartUntil", {Calendar::ISOText(dUntil)});
  return SQLiteDatabase::RestartUntil(dUntil);
}

bool WatchedDatabase::AutoLogOff() {
  Tell(m_oObserver, "AutoLogOff");
  return SQLiteDatabase::AutoLogOff();
}

}  // namespace ZELWbr3::Host
