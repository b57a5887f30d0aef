#pragma once

#include "zelwbr3/web/WebPlatform.h"
#include "zelwbr3/web/WebPump.h"
#include "zelwbr3/web/Wire.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace ZELWbr3::Web {

/// One shell and the program that it shows, which runs on a thread of its own.
/// All members are for the server's thread.
class Session {
 public:
  /// The program: makes a control on the platform and handles what comes, until
  /// ClosingError ends it.
  using Program = std::function<void(WebPlatform&)>;

  /// sCookie is the cookie of the browser that has begun it.
  Session(std::string sCookie, std::size_t iInstance);
  /// The thread must have ended.
  ~Session();

  const std::string& Number() const { return m_sNumber; }
  const std::string& Cookie() const { return m_sCookie; }
  std::size_t Instance() const { return m_iInstance; }
  Web::Wire& Wire() { return m_oWire; }

  /// Begins the program. oEnded is called on its thread when it has ended.
  void Begin(const PageFiles& oFiles, const Greeting& oGreeting, const WebPlatform::TraceTo& oTrace, Program oProgram,
             std::function<void()> oEnded);
  /// A message of the shell. False if no more can be taken for now.
  bool Arrive(std::string sMessage);
  /// Messages that have arrived since the shell was loaded.
  std::uint64_t Arrived() const { return m_iArrived; }
  /// The shell was loaded anew; its number from now on.
  void BeginAgain(std::string sLoad, const Greeting& oGreeting);
  /// How often a shell has been attached.
  std::uint64_t Returns() const { return m_iReturns; }
  void Returned() { ++m_iReturns; }
  /// The number that the shell gave its present load.
  const std::string& Load() const { return m_sLoad; }
  void Load(std::string sLoad) { m_sLoad = std::move(sLoad); }

  void End(const std::string& sReason);
  bool IsEnding() const { return m_bEnding; }
  /// Asks a program that is at work to end it. Call it again until it has ended.
  void Interrupt() { m_oPump.Interrupt(); }

 private:
  std::string m_sNumber;
  std::string m_sCookie;
  std::size_t m_iInstance;
  std::string m_sLoad;
  std::uint64_t m_iArrived = 0;
  std::uint64_t m_iReturns = 0;
  bool m_bEnding = false;
  Web::Wire m_oWire;
  WebPump m_oPump;
  /// Only for the program's thread.
  WebPlatform* m_oPlatform = nullptr;
  std::thread m_oThread;
};

}  // namespace ZELWbr3::Web
