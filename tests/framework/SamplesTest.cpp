#include "zelwbr3/framework/Samples.h"

#include "zelwbr3/ZELLib3/Analyzer.h"
#include "zelwbr3/framework/ProtocolSamples.h"

#include <gtest/gtest.h>

#include <cmath>

#include <malloc.h>

namespace ZELWbr3 {

namespace {

std::vector<Samples::Figure> Counters(int iCount, double dValue) {
  std::vector<Samples::Figure> figures;
  for (int i = 0; i < iCount; ++i) figures.push_back({std::to_string(i), "", "", true, dValue, ""});
  return figures;
}

}  // namespace

TEST(SamplesTest, KeepADayAtFiveSecondsInLessThan20MB) {
  const auto Heap = [] { return mallinfo2().uordblks + mallinfo2().hblkhd; };
  const std::size_t iBefore = Heap();
  Samples oSamples;
  for (int i = 0; i <= 24 * 60 * 60 / 5; ++i) {
    const std::int64_t iTime = std::int64_t{i} * 5000;
    oSamples.Add("Activity", Counters(36, i), iTime);
    oSamples.Add("Caches", Counters(9, i), iTime);
    oSamples.Add("State", Counters(6, i), iTime);
  }
  EXPECT_LT(Heap() - iBefore, 20u * 1000 * 1000);
  const Samples::Group& oGroup = *oSamples.Of("Activity");
  EXPECT_EQ(oGroup.Count(), Samples::Most);
  EXPECT_EQ(oGroup.Time(0), 5000);  // the oldest one has gone
  EXPECT_EQ(oGroup.Value(0, 35), 1);
  EXPECT_EQ(oGroup.Value(Samples::Most - 1, 0), 24 * 60 * 60 / 5);
}

TEST(SamplesTest, KeepTheNewestAndOneInFiveSecondsBeforeIt) {
  Samples oSamples;
  for (int i = 0; i <= 20; ++i) oSamples.Add("State", Counters(1, i), i * 2000);
  const Samples::Group& oGroup = *oSamples.Of("State");
  EXPECT_EQ(oGroup.Value(oGroup.Count() - 1, 0), 20);
  for (std::size_t i = 1; i + 1 < oGroup.Count(); ++i) EXPECT_GE(oGroup.Time(i) - oGroup.Time(i - 1), 5000) << i;
  EXPECT_EQ(oGroup.Rate("0", 30000), 0.5);
  EXPECT_EQ(oGroup.Rate("0", 3600000), std::nullopt) << "less than a tenth of the time is known";
  EXPECT_EQ(oGroup.Rate("none", 30000), std::nullopt);

  oSamples.Add("State", Counters(2, 1), 50000);  // other figures
  EXPECT_EQ(oSamples.Of("State")->Count(), 1u);
  EXPECT_EQ(oSamples.Of("Activity"), nullptr);
}

namespace {

class WrittenAnalyzer : public ZELLib3::Analyzer {
 public:
  std::vector<Protocol> Protocols(Long) override {
    constexpr double NotKnown = Samples::NotKnown;
    return {{"data", {"Used", "Percent", "PageSize"}, {0, 900000, 1800000}, {10, 1, 4096, 20, 2, 4096, 30, 3, 4096}},
            {"sessions", {"Used", "Max"}, {900000, 1800000}, {5, 20, NotKnown, 20}}};
  }
};

}  // namespace

TEST(SamplesTest, BeginWithWhatTheAnalyzerHasWritten) {
  const std::vector<Samples::Figure> figures = {
      {.ID = "DataPercent", .Label = "Data Area", .Unit = "%", .Value = 4, .Place = "txtData"},
      {.ID = "SessionPercent", .Label = "Sessions", .Unit = "%", .Value = 50, .Place = ""},
      {.ID = "Other", .Label = "", .Unit = "", .Value = 6, .Place = ""}};
  WrittenAnalyzer oAnalyzer;
  Samples oSamples;
  for (int i = 0; i < 2; ++i) {
    ProtocolSamples::Begin(oSamples, oAnalyzer, figures);  // only once
    oSamples.Add("State", figures, 1830000 + i * 5000);
  }
  const Samples::Group& oState = *oSamples.Of("State");
  std::string sRead;
  for (std::size_t i = 0; i < oState.Count(); ++i) {
    sRead += std::to_string(oState.Time(i) / 1000) + ":";
    for (std::size_t iFigure = 0; iFigure < figures.size(); ++iFigure) {
      const double d = oState.Value(i, iFigure);
      sRead += std::isnan(d) ? " -" : " " + std::to_string(static_cast<int>(d));
    }
    sRead += "\n";
  }
  EXPECT_EQ(sRead, "0: 1 - -\n900: 2 25 -\n1800: 3 - -\n1830: 4 50 6\n1835: 4 50 6\n");

  ProtocolSamples::Add(oSamples, oAnalyzer, 28);
  std::string sLabels;
  for (const auto& o : oSamples.Of(ProtocolSamples::Name)->Figures()) sLabels += o.ID + "=" + o.Label + o.Unit + "\n";
  EXPECT_EQ(sLabels,
            "data.Used=Data: Used\ndata.Percent=Data: Percent%\nsessions.Used=Sessions: Used\nsessions.Max=Sessions: "
            "Max\n");
  EXPECT_EQ(ProtocolSamples::Nearest("DataPercent"), "data.Percent");
}

}  // namespace ZELWbr3
