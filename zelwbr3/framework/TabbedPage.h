#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/clsTabStrip.h"

namespace ZELWbr3 {

/// A data page with a tab strip, which has the page's name. The tab chosen by the
/// user is selected again when the page is refreshed or shown again, if it can
/// be.
class ZELWBR3_EXPORT TabbedPage : public DataPage {
 public:
  void Hide() override;
  void CleanUp() override;

  /// Chooses a tab, 0-based, as the user would; the next display shows it.
  void ChooseTab(Long lTab) { m_lChosenTab = lTab; }

 protected:
  /// Writes the initial content of the tabs.
  virtual void FillTabs() = 0;
  bool OnClick(const std::string& sID) override;

  clsTabStrip& Tabs() { return m_oTabs; }
  /// The last chosen tab.
  Long ChosenTab() const { return m_lChosenTab; }
  /// Runs something with the tab strip disabled.
  void WithTabsDisabled(const std::function<void()>& oWork);

 private:
  void FillContent() final;

  clsTabStrip m_oTabs;
  Long m_lChosenTab = 0;
};

}  // namespace ZELWbr3
