#include "host/WatchedDatabase.h"

#include <utility>

namespace ZELWbr3::Host {

namespace {

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
  std::vector<Protocol> Protocols(ZELLib3::Long lDays) override { return m_oAnalyzer->Protocols(lDays); }

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

void Tell(const Recorded::CallObserver& oObserver, const char* sName, std::vector<Recorded::Call::Argument> arguments) {
  oObserver({sName, std::move(arguments), true});
}

std::shared_ptr<ZELLib3::Analyzer> Watched(std::shared_ptr<ZELLib3::Analyzer> oAnalyzer,
                                           const Recorded::CallObserver& oObserver) {
  return oAnalyzer ? std::make_shared<WatchedAnalyzer>(std::move(oAnalyzer), oObserver) : nullptr;
}

}  // namespace ZELWbr3::Host
