#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/ScreenPointer.h"

#include <memory>

namespace ZELWbr3 {

/// The wait cursor, nested: shown until each Show has had its Hide.
class ZELWBR3_EXPORT clsHourglass {
 public:
  explicit clsHourglass(ScreenPointer& oScreen) : m_oScreen(oScreen) {}
  /// Restores the default pointer at any nesting depth.
  ~clsHourglass() { m_oScreen.MousePointer(ScreenPointer::Default); }
  clsHourglass(const clsHourglass&) = delete;
  clsHourglass& operator=(const clsHourglass&) = delete;

  void Show();
  void Hide();
  /// Suspends the wait cursor for a dialog; Continue restores it.
  void Break();
  void Continue();

  /// The wait cursor for the lifetime of an object.
  class Scope {
   public:
    explicit Scope(std::shared_ptr<clsHourglass> oHourglass);
    ~Scope();
    Scope(const Scope&) = delete;
    Scope& operator=(const Scope&) = delete;

   private:
    std::shared_ptr<clsHourglass> m_oHourglass;
  };

  /// Break and Continue for the lifetime of an object, around something modal.
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
