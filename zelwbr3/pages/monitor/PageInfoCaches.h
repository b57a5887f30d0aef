#pragma once

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/framework/ParameterLink.h"

#include <string>
#include <vector>

namespace ZELWbr3 {

/// The caches of the instance: their sizes, accesses and hit rates, the usage of
/// the data cache, and the parameters that set the sizes. A click on a
/// parameter's name opens the parameter.
class ZELWBR3_EXPORT PageInfoCaches : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageInfoCaches;
  static constexpr int CommandOpenParameter = 2;

  std::string Name() const override { return "InfoCaches"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserWork; }

 protected:
  void FillContent() override;
  bool OnClick(const std::string& sID) override;
  void OnCommand(Long lCommand) override;

 private:
  /// An access counter by index: 0 accesses, 1 successful, 2 unsuccessful.
  using Counter = double (ZELLib3::Caches::*)(Long) const;

  void FillSizes(const ZELLib3::Caches& oCaches);
  void FillAccesses(const ZELLib3::Caches& oCaches);
  void FillParameters(const ZELLib3::Caches& oCaches);
  void FillUsage(const ZELLib3::Caches& oCaches);

  Element& Template(std::string_view sTable) const;
  void AddSize(Element& oTemplate, const std::string& sLabel, double dSize);
  void AddAccesses(Element& oTemplate, const std::string& sLabel, const ZELLib3::Caches& oCaches, Counter pCounter);
  void AddParameter(Element& oTemplate, const ZELLib3::Parameter& oParameter, double dSize);
  void AddParameter(Element& oTemplate, const ZELLib3::Parameter& oParameter, const std::string& sValue);

  bool HasObjectStore() const { return Database()->InstanceType() == ZELLib3::InstanceType::ObjectStore; }
  /// True from the release on whose caches share one I/O buffer cache.
  bool SharesIOBufferCache() const;
  std::string FormatRate(double dWhole, double dPart) const;

  ParameterLink m_oParameterLink;
  std::vector<Samples::Figure> m_figures;  ///< what this fill has read
};

}  // namespace ZELWbr3
