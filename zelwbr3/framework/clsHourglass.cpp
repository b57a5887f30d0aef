#include "zelwbr3/framework/clsHourglass.h"

namespace ZELWbr3 {

void clsHourglass::Show() {
  if (m_lNesting == 0) m_oScreen.MousePointer(ScreenPointer::Hourglass);
  ++m_lNesting;
}

void clsHourglass::Hide() {
  if (m_lNesting > 0) m_lNesting -= 1;
  if (m_lNesting == 0) m_oScreen.MousePointer(ScreenPointer::Default);
}

void clsHourglass::Break() {
  m_iSaved = m_oScreen.MousePointer();
  m_oScreen.MousePointer(ScreenPointer::Default);
}

void clsHourglass::Continue() { m_oScreen.MousePointer(m_iSaved); }

clsHourglass::Scope::Scope(std::shared_ptr<clsHourglass> oHourglass) : m_oHourglass(std::move(oHourglass)) {
  m_oHourglass->Show();
}

clsHourglass::Scope::~Scope() { m_oHourglass->Hide(); }

clsHourglass::Pause::Pause(std::shared_ptr<clsHourglass> oHourglass) : m_oHourglass(std::move(oHourglass)) {
  m_oHourglass->Break();
}

clsHourglass::Pause::~Pause() { m_oHourglass->Continue(); }

}  // namespace ZELWbr3
