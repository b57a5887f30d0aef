#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/ParameterLink.h"
#include "zelwbr3/framework/TabbedPage.h"
#include "zelwbr3/pages/storage/StorageArea.h"

#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3 {

/// The page of a storage area: its volumes, its settings and parameters, its
/// usage, input and output by volume and, for the log, the activity of its
/// writer. One tab each; the last ones only have figures while the instance is
/// online. Elements missing in the page file are skipped.
class ZELWBR3_EXPORT PageStorageArea : public TabbedPage {
 public:
  static constexpr int CommandOpenParameter = 2;

  std::string Name() const override { return m_oArea.Name; }
  Long PageType() const override { return int{m_oArea.PageType}; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

 protected:
  explicit PageStorageArea(const StorageArea& oArea) : m_oArea(oArea) {}

  void FillTabs() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  /// Texts of a volume's row, starting after the name.
  using VolumeTexts = std::function<std::vector<std::string>(const ZELLib3::Volume&)>;

  /// Fills a part of a tab. If that fails, the other parts are still filled, and
  /// the tab says that it is not complete.
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
  /// Adds a row for each configured volume of the area.
  void FillVolumeRows(std::string_view sTable, const VolumeTexts& oTexts);
  /// The share of a number of pages as text; 0 percent if the whole is 0.
  std::string Percent(Long lPart, Long lWhole) const;
  Element* Find(std::string_view sID) const { return Document()->all().item(sID); }

  const StorageArea& m_oArea;
  ParameterLink m_oParameterLink;
};

}  // namespace ZELWbr3
