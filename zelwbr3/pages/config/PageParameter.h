#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELLib3 {
class Parameter;
}

namespace ZELWbr3 {

/// One configuration parameter: its value, its pending value, an explanation and
/// its change history.
class ZELWBR3_EXPORT PageParameter : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageParameter;

  std::string Name() const override { return "Parameter"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserDetail; }

  /// Keeps a parameter of the instance and shows the page with it. If the
  /// instance does not know the parameter, shows an error and an empty page.
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::Parameter> oParameter);

  void Hide() override;
  void CleanUp() override;

 protected:
  void FillContent() override;
  bool OnClick(const std::string& sID) override;

 private:
  void FillHistory();
  /// The value that the parameter will have.
  std::string NewValue() const;

  std::shared_ptr<ZELLib3::Parameter> m_oParameter;
};

}  // namespace ZELWbr3
