#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <memory>

namespace ZELWbr3 {

/// While an object lives, an instance has this runner for what it has to wait
/// for, and is kept. For a task of a page, on its control's thread; scopes nest.
class WaitRunnerScope {
 public:
  /// oDatabase may be null.
  WaitRunnerScope(std::shared_ptr<ZELLib3::Database> oDatabase, ZELLib3::Database::Runner fnRun);
  ~WaitRunnerScope();
  WaitRunnerScope(const WaitRunnerScope&) = delete;
  WaitRunnerScope& operator=(const WaitRunnerScope&) = delete;

  /// While an object lives, the task runs code that is not its own: it pumps
  /// messages or calls the host. Who reads an instance there has nobody to catch
  /// what the task's runner throws.
  class Pause {
   public:
    Pause();
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    WaitRunnerScope* m_pPaused;
  };

 private:
  void Begin() const;
  void End() const;

  /// Each thread has controls and instances of its own.
  static inline thread_local WaitRunnerScope* s_pInnermost = nullptr;

  std::shared_ptr<ZELLib3::Database> m_oDatabase;
  ZELLib3::Database::Runner m_fnRun;
  WaitRunnerScope* m_pOuter;
};

}  // namespace ZELWbr3
