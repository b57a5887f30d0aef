#include "tests/support/ChangedRecording.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/framework/Samples.h"
#include "zelwbr3/pages/charts/PageCharts.h"
#include "zelwbr3/testing/ShownControl.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace ZELWbr3::Testing {
namespace {

class WrittenAnalyzer : public ZELLib3::Analyzer {
 public:
  std::optional<std::vector<ProtocolSet>> ProtocolSets() override { return std::vector<ProtocolSet>(1); }
  std::vector<Protocol> Protocols(Long) override {
    return {{"data", {"Percent"}, {1000, 901000, 1801000}, {10, 20, 30}}};
  }
};

class WatchedRecording : public ChangedRecording {
 public:
  using ChangedRecording::ChangedRecording;
  std::shared_ptr<ZELLib3::Analyzer> Analyzer() override { return m_oAnalyzer; }
  std::shared_ptr<ZELLib3::Analyzer> m_oAnalyzer;
};

}  // namespace

TEST(Charts, GoBackByTheAnalyzersProtocols) {
  const auto oDatabase = std::make_shared<WatchedRecording>("demo");
  for (const std::int64_t iTime : {0, 5000}) {
    Samples::Of(oDatabase)->Add(
        "State", {{.ID = "DataPercent", .Label = "Data Area", .Unit = "%", .Value = 5, .Place = ""}}, iTime);
  }
  ShownControl oControl({ZELWBR3_SOURCE_DIR "/html"});
  const auto oPage = std::make_shared<PageCharts>();
  oPage->Database(oDatabase);
  oControl.Browser->Show(oPage, zelWebBrowserDetail);
  oPage->Show(oDatabase, "State", "DataPercent");
  const auto Times = [&] { return oControl.At("lstSeries").getAttribute("data-times"); };
  EXPECT_FALSE(oControl.IsShown("divSources")) << "there are no protocols";
  EXPECT_EQ(Times(), "0 5000");

  oDatabase->m_oAnalyzer = std::make_shared<WrittenAnalyzer>();
  oControl.Key(116);
  EXPECT_TRUE(oControl.IsShown("divSources"));
  oControl.Click("btnSourceProtocols");
  EXPECT_EQ(Times(), "1000 900000 900000");
  EXPECT_EQ(oControl.At("lstSeries").getAttribute("data-chosen"), "SERIESdata.Percent");
  EXPECT_EQ(oControl.At("SERIESdata.Percent").getAttribute("data-values"), "10 20 30");
  EXPECT_EQ(oControl.At("btnSourceProtocols").getAttribute("aria-pressed"), "true");
  oControl.Click("btnSourceOpen");
  EXPECT_EQ(Times(), "0 5000");
  oControl.Quiet();
}

}  // namespace ZELWbr3::Testing
