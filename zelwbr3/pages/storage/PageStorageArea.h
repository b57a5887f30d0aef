#pragma once

#include "zelwbr3/framework/ParameterLink.h"
#include "zelwbr3/framework/TabbedPage.h"
#include "zelwbr3/pages/storage/StorageArea.h"

#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3 {

/// The page of a storage area: its volumes, the parameters and settings that
/// shape it, how its space is used, input and output by volume, and for the
/// log the activity of its writer. One tab each; the last ones have figures
/// only while the instance is online. An element that the page file lacks is
/// skipped.
class PageStorageArea : public TabbedPage {
 public:
  static constexpr int CommandOpenParameter = 2;

  std::string Name() const override { return m_oArea.Name; }
  Long PageType() const override { return int{m_oArea.PageType}; }
  Long WebBrowser() const override { return PageSite::zelWebBrowserWork; }

 protected:
  explicit PageStorageArea(const StorageArea& oArea) : m_oArea(oArea) {}

  void FillTabs() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  /// Texts of a volume's row, from the cell after its running number on.
  using VolumeTexts = std::function<std::vector<std::string>(const ZELLib3::Volume&)>;

  /// Fills a part of a tab; when that fails the other parts are filled all the
  /// same, and the tab says that it is not complete.
  void FillPart(int iTab, void (PageStorageArea::*pFill)());
  void ShowUnread(int iTab);
  void FillVolumes();
  void FillSettings();
  void FillParameters();
  void FillUsage();
  void FillIO();
  void FillActivity();

  /// Writes the figures of a header table.
  void FillFigures(std::string_view sTable, std::span<const StorageArea::Figure> figures);
  /// Adds a row for each volume of the area that is in use.
  void FillVolumeRows(std::string_view sTable, const VolumeTexts& oTexts);
  /// The share of a number of pages as text; 0 percent when there is no whole.
  std::string Percent(Long lPart, Long lWhole) const;
  Element* Find(std::string_view sID) const { return Document()->all().item(sID); }

  const StorageArea& m_oArea;
  ParameterLink m_oParameterLink;
};

}  // namespace ZELWbr3
