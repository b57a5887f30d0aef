#pragma once

#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/clsTabStrip.h"

namespace ZELWbr3 {

/// A data page whose content is divided by a tab strip, which has the page's
/// name. The tab that the user has chosen is selected again when the page is
/// refreshed or shown another time, as far as it can be.
class TabbedPage : public DataPage {
 public:
  void Hide() override;
  void CleanUp() override;

 protected:
  /// Writes what the tabs show from the beginning.
  virtual void FillTabs() = 0;
  bool OnClick(const std::string& sID) override;

  clsTabStrip& Tabs() { return m_oTabs; }
  /// The tab chosen last.
  Long ChosenTab() const { return m_lChosenTab; }
  /// Runs something with the tab strip disabled.
  void WithTabsDisabled(const std::function<void()>& oWork);

 private:
  void FillContent() final;

  clsTabStrip m_oTabs;
  Long m_lChosenTab = 0;
};

}  // namespace ZELWbr3
