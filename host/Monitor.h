#pragma once

#include "zelwbr3/framework/Health.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace ZELWbr3::Host {

/// Reads the health and figures of one instance every few seconds, on a thread
/// and over a connection of its own.
class Monitor {
 public:
  /// A figure as a program reads it.
  struct Figure {
    const char* Name;  ///< by the conventions of Prometheus, with its unit
    const char* Help;
    bool Counts;  ///< only grows, since the instance was started
    double Value;
  };
  struct Reading {
    /// False until the first one.
    bool Done = false;
    bool Connected = false;
    /// The instance's own name; empty until it has been read once.
    std::string Title = {};
    ZELWbr3::Health Health = {};
    std::vector<Figure> Figures = {};
    std::chrono::duration<double> Took{};
    std::chrono::system_clock::time_point When{};
  };

  Monitor(std::string sInstance, std::chrono::milliseconds oEvery);
  ~Monitor();
  Monitor(const Monitor&) = delete;
  Monitor& operator=(const Monitor&) = delete;

  /// The instance's name on the command line, without a password.
  const std::string& Name() const { return m_sName; }
  /// What was read last. From any thread.
  Reading Last() const;

 private:
  void Run();
  Reading Read();

  std::string m_sInstance;
  std::string m_sName;
  std::chrono::milliseconds m_oEvery;
  mutable std::mutex m_oMutex;
  std::condition_variable m_oStop;
  bool m_bStop = false;
  Reading m_oLast;
  /// For Interrupt; set and used under the mutex.
  std::shared_ptr<ZELLib3::Database> m_oDatabase;
  std::thread m_oThread;
};

/// All readings in the text format of Prometheus.
std::string MetricsText(const std::vector<std::unique_ptr<Monitor>>& monitors);
/// [{"name": "…", "title": "…", "level": "WARNING", "text": "…"}, …] in the order of the monitors.
std::string LightsJSON(const std::vector<std::unique_ptr<Monitor>>& monitors);

}  // namespace ZELWbr3::Host
