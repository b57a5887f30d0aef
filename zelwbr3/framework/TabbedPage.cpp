#include "zelwbr3/framework/TabbedPage.h"

#include "zelwbr3/base/Finally.h"
#include "zelwbr3/framework/PageController.h"

namespace ZELWbr3 {

void TabbedPage::Hide() {
  m_oTabs.CleanUp();
  DataPage::Hide();
}

void TabbedPage::CleanUp() {
  m_oTabs.CleanUp();
  DataPage::CleanUp();
}

void TabbedPage::FillContent() {
  m_oTabs.Init(Document(), Name());
  Finally([this] { WithTabsDisabled([this] { FillTabs(); }); },
          [this] {
            if (m_oTabs.IsSelectable(m_lChosenTab)) m_oTabs.Select(m_lChosenTab);
          });
}

void TabbedPage::WithTabsDisabled(const std::function<void()>& oWork) {
  m_oTabs.Enabled(false);
  Finally(oWork, [this] { m_oTabs.Enabled(true); });
}

bool TabbedPage::OnClick(const std::string& sID) {
  if (!m_oTabs.Enabled() || !m_oTabs.HandleOnClick(sID)) return false;
  m_lChosenTab = m_oTabs.Selected();
  return true;
}

}  // namespace ZELWbr3
