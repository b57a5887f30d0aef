#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/framework/ParameterLink.h"
#include "zelwbr3/framework/TabbedPage.h"

#include <array>
#include <set>
#include <string>

namespace ZELWbr3 {

/// The configuration parameters: a tab for each group and one for changes by
/// date. A tab is filled when it is first selected. A parameter's own history
/// opens below its row, and its name is a link to its page.
class ZELWBR3_EXPORT PageParameters : public TabbedPage {
 public:
  static constexpr int Type = zelWebBrowserPageParameters;

  /// Fills tab 0; the commands of tabs 1 to 3 follow.
  static constexpr int CommandFillTab = 2;
  static constexpr int CommandOpenParameter = 6;
  static constexpr int CommandToggleHistory = 7;

  std::string Name() const override { return "Parameters"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

  void Hide() override;

 protected:
  void FillTabs() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  /// Does nothing if the document already shows the tab.
  void FillTab(Long lTab);
  void FillGroup(std::size_t iGroup);
  /// Tells the page's script of a value that waits for a restart, and of changes.
  static void MarkChange(Element& oValue, const ZELLib3::Parameter& oParameter);
  void FillHistory();

  /// Shows or hides the history below the last clicked row.
  void ToggleHistory();
  /// Shows the histories again that are open, after a refresh.
  void OpenHistories(Element& oTable);
  /// Adds the history, hidden. False if the parameter does not exist.
  bool AddHistory();
  /// Shows or hides the history below the row; returns the number of entries.
  int ShowHistory(bool bShow);

  static constexpr std::size_t TabHistory = 3;
  std::array<bool, TabHistory + 1> m_filled{};
  ParameterLink m_oParameterLink;
  /// The parameter whose history was last clicked, and its row.
  std::string m_sParameter;
  Element* m_oRow = nullptr;
  /// The parameters whose histories are open; until the page is left.
  std::set<std::string> m_open;
};

}  // namespace ZELWbr3
