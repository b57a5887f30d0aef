#pragma once

#include "zelwbr3/framework/Health.h"

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <wx/timer.h>

namespace ZELWbr3::Host {

/// Checks instances again and again with `zelreport --check`, each in a process of its
/// own: one that hangs keeps nothing else waiting, and is ended after some seconds.
class InstanceChecks {
 public:
  struct Light {
    Health::Level Level = Health::Level::Unknown;
    std::string Name;  ///< the instance's own; empty if it is not known
    std::string Text;  ///< the worst finding; empty if there is none
  };

  /// oSeen gets each result as soon as it is there.
  InstanceChecks(std::string sProgram, std::function<void(const std::string& sInstance, const Light&)> oSeen);
  ~InstanceChecks();
  InstanceChecks(const InstanceChecks&) = delete;
  InstanceChecks& operator=(const InstanceChecks&) = delete;

  /// Begins to check these instead of those before.
  void Start(std::vector<std::string> instances);
  void Stop();

  static constexpr std::chrono::seconds MostTime{10};
  static constexpr std::chrono::seconds Pause{15};

 private:
  class Process;
  friend class Process;

  void Next();
  void Ended(Process& oProcess);
  void Tick();

  std::string m_sProgram;
  std::function<void(const std::string&, const Light&)> m_oSeen;
  std::vector<std::string> m_instances;
  std::deque<std::string> m_waiting;
  /// They own themselves: the toolkit tells them when their process has ended.
  std::vector<Process*> m_running;
  std::chrono::steady_clock::time_point m_oRoundEnded;
  wxTimer m_oTimer;
};

}  // namespace ZELWbr3::Host
