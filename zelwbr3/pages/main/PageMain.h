#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/Health.h"
#include "zelwbr3/framework/PageType.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZELLib3 {
class StateInfo;
}

namespace ZELWbr3 {

/// An overview of the instance: what needs attention, a summary with the instance picture and three
/// fill bars, tables of details, the hot-standby nodes, and a warning if an area
/// is full.
class ZELWBR3_EXPORT PageMain : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageMain;

  std::string Name() const override { return "Main"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserMain; }

  /// What the page shows at the moment; none while it shows none.
  const std::vector<Health::Finding>& Findings() const { return m_oHealth.Findings; }

 protected:
  void FillContent() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;
  bool ShowsFooter() const override { return true; }

 private:
  using Flag = bool (ZELLib3::StateInfo::*)() const;
  using Figure = Long (ZELLib3::StateInfo::*)() const;

  /// Runs an operation that changes the instance's state, and shows the new
  /// state.
  void ChangeState(const std::function<bool(ZELLib3::Database&)>& oOperation);

  void FillPicture();
  void FillNameAndState();
  void FillBars();
  void FillTexts();
  void FillLogRows();
  void FillDetails();
  void FillHotStandby();
  /// Keeps the figures for the curves and for the forecast.
  void SampleState();
  void FillHealth();

  /// The present state; never kept.
  std::shared_ptr<ZELLib3::StateInfo> State() const;
  /// True if the instance is in a state in which its areas have figures.
  bool AreasOpen() const;
  bool IsAtLeast(int lVersion) const;
  struct AreaSize {
    const char* Label;
    Long Pages;
  };
  /// Writes the text of an area: a blank, that it is full, or its sizes, with the exact
  /// pages for its tooltip.
  void FillArea(std::string_view sID, Flag pFull, const std::string& sFullText,
                const std::function<std::vector<AreaSize>()>& oSizes);

  Health m_oHealth;
};

}  // namespace ZELWbr3
