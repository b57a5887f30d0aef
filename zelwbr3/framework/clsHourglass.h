#pragma once

#include "zelwbr3/platform/ScreenPointer.h"

#include <memory>

namespace ZELWbr3 {

/// The wait cursor, nested: shown from the first Show until as many Hides.
class clsHourglass {
 public:
  explicit clsHourglass(ScreenPointer& oScreen) : m_oScreen(oScreen) {}
  /// Restores the default pointer, however deep the nesting.
  ~clsHourglass() { m_oScreen.MousePointer(ScreenPointer::Default); }
  clsHourglass(const clsHourglass&) = delete;
  clsHourglass& operator=(const clsHourglass&) = delete;

  void Show();
  void Hide();
  /// Suspends the wait cursor, for a dialog; Continue restores what was there.
  void Break();
  void Continue();

  /// The wait cursor for one stretch of work.
  class Scope {
   public:
    explicit Scope(std::shared_ptr<clsHourglass> oHourglass);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    std::shared_ptr<clsHourglass> m_oHourglass;
  };

  /// Break and Continue around something modal.
  class Pause {
   public:
    explicit Pause(std::shared_ptr<clsHourglass> oHourglass);
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    std::shared_ptr<clsHourglass> m_oHourglass;
  };

 private:
  ScreenPointer& m_oScreen;
  Long m_lNesting = 0;
  Integer m_iSaved = ScreenPointer::Default;
};

}  // namespace ZELWbr3
