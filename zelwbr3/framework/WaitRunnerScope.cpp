#include "zelwbr3/framework/WaitRunnerScope.h"

#include <utility>

namespace ZELWbr3 {

WaitRunnerScope::WaitRunnerScope(std::shared_ptr<ZELLib3::Database> oDatabase, ZELLib3::Database::Runner fnRun)
    : m_oDatabase(std::move(oDatabase)), m_fnRun(std::move(fnRun)), m_pOuter(std::exchange(s_pInnermost, this)) {
  Begin();
}

WaitRunnerScope::~WaitRunnerScope() {
  End();
  s_pInnermost = m_pOuter;
  if (m_pOuter != nullptr) m_pOuter->Begin();
}

void WaitRunnerScope::Begin() const {
  if (m_oDatabase != nullptr) m_oDatabase->WaitRunner(m_fnRun);
}

void WaitRunnerScope::End() const {
  if (m_oDatabase != nullptr) m_oDatabase->WaitRunner({});
}

WaitRunnerScope::Pause::Pause() : m_pPaused(std::exchange(s_pInnermost, nullptr)) {
  if (m_pPaused != nullptr) m_pPaused->End();
}

WaitRunnerScope::Pause::~Pause() {
  s_pInnermost = m_pPaused;
  if (m_pPaused != nullptr) m_pPaused->Begin();
}

}  // namespace ZELWbr3
