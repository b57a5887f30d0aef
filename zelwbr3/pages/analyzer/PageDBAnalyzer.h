#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

#include <memory>

namespace ZELLib3 {
class Analyzer;
}

namespace ZELWbr3 {

/// The database analyzer of the instance: its state, its settings and its
/// protocol sets. Commands start it, stop it and delete old protocol sets.
class ZELWBR3_EXPORT PageDBAnalyzer : public DataPage {
 public:
  static constexpr int Type = zelWebBrowserPageDBAnalyzer;

  static constexpr int CommandStart = 2;
  static constexpr int CommandStop = 3;
  static constexpr int CommandDelete = 5;

  std::string Name() const override { return "DBAnalyzer"; }
  Long PageType() const override { return Type; }
  Long WebBrowser() const override { return zelWebBrowserMain; }

 protected:
  void FillContent() override;
  void OnCommand(Long lCommand) override;
  void Close() override;

 private:
  /// An action of the page: asks the user and calls the analyzer. True if the
  /// instance has changed.
  using Action = bool (PageDBAnalyzer::*)(ZELLib3::Analyzer&);

  bool Start(ZELLib3::Analyzer& oAnalyzer);
  bool Stop(ZELLib3::Analyzer& oAnalyzer);
  bool DeleteProtocols(ZELLib3::Analyzer& oAnalyzer);

  void AddItems();
  /// Enables the items that the analyzer's state allows.
  void EnableItems();
  void EnableItems(bool bStart, bool bStop, bool bDelete);

  // Elements missing in the page file are skipped.
  void FillState(const ZELLib3::Analyzer* oAnalyzer);
  void FillError(const ZELLib3::Analyzer* oAnalyzer);
  void FillRun(const ZELLib3::Analyzer* oAnalyzer);
  void FillProtocolSets(ZELLib3::Analyzer* oAnalyzer);
  void ShowRow(std::string_view sID, bool bVisible);
};

}  // namespace ZELWbr3
