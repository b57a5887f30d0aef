#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <memory>
#include <utility>
#include <vector>

namespace ZELWbr3::Host {

void Tell(const Recorded::CallObserver& oObserver, const char* sName,
          std::vector<Recorded::Call::Argument> arguments = {});
/// One that reports Start, Stop and DeleteProtocols and is otherwise the same;
/// null for none.
std::shared_ptr<ZELLib3::Analyzer> Watched(std::shared_ptr<ZELLib3::Analyzer> oAnalyzer,
                                           const Recorded::CallObserver& oObserver);

/// An instance of type Base that reports the operations that change it, in order
/// and before they take effect, including those that fail. Recordings do this by
/// themselves.
template <typename Base>
class WatchedDatabase : public Base {
 public:
  /// Made of what Base is made of; raises the same.
  template <typename... Arguments>
  explicit WatchedDatabase(Recorded::CallObserver oObserver, Arguments&&... arguments)
      : Base(std::forward<Arguments>(arguments)...), m_oObserver(std::move(oObserver)) {}

  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override { return Watched(Base::Analyzer(), m_oObserver); }
  bool Shutdown() override {
    Tell(m_oObserver, "Shutdown");
    return Base::Shutdown();
  }
  bool ShutdownQuick() override {
    Tell(m_oObserver, "ShutdownQuick");
    return Base::ShutdownQuick();
  }
  bool Admin() override {
    Tell(m_oObserver, "Admin");
    return Base::Admin();
  }
  bool Online() override {
    Tell(m_oObserver, "Online");
    return Base::Online();
  }
  bool RestartUntil(const ZELLib3::Date& dUntil) override {
    Tell(m_oObserver, "RestartUntil", {Calendar::ISOText(dUntil)});
    return Base::RestartUntil(dUntil);
  }
  bool AutoLogOff() override {
    Tell(m_oObserver, "AutoLogOff");
    return Base::AutoLogOff();
  }

 private:
  Recorded::CallObserver m_oObserver;
};

}  // namespace ZELWbr3::Host
