#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

#include <memory>
#include <string>

namespace ZELLib3 {
class Analyzer;
}

namespace ZELWbr3 {

/// Figures over time: those that are read together with the one that was clicked, or
/// what the analyzer's protocols hold of the last weeks. The page's script draws them;
/// which ones and of which time the user chooses there.
class ZELWBR3_EXPORT PageCharts : public DataPage {
 public:
  std::string Name() const override { return "Charts"; }
  Long PageType() const override { return 17; }
  Long WebBrowser() const override { return zelWebBrowserDetail; }

  /// Shows the samples of a group, with that figure of it chosen.
  void Show(std::shared_ptr<ZELLib3::Database> oDatabase, const std::string& sGroup, const std::string& sFigure);

 protected:
  void FillContent() override;
  bool OnClick(const std::string& sID) override;
  void Close() override { CloseDetail(); }

 private:
  void FillOpen();
  void FillProtocols(ZELLib3::Analyzer& oAnalyzer);

  bool m_bProtocols = false;
  std::string m_sGroup;
  std::string m_sFigure;
};

}  // namespace ZELWbr3
