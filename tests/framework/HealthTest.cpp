#include "zelwbr3/framework/Health.h"

#include "tests/support/ChangedRecording.h"

#include <gtest/gtest.h>

namespace ZELWbr3 {

namespace {

using Testing::ChangedRecording;
using Testing::Changes;
using Level = Health::Level;

Health Examined(const Changes& changes) {
  Changes all = {"StateInfo.Status = 5", "StateInfo.InfoAvailable = true", "PageSize = 8192",
                 "StateInfo.BarThresholds = [70,80,95,60,90,100,70,80,95]"};
  all.insert(all.end(), changes.begin(), changes.end());
  ChangedRecording oRecording("", all);
  return Health::Of(oRecording);
}

struct Case {
  const char* Name;
  Level Severity;
  std::string Begin;
  Changes Changed;
};

}  // namespace

TEST(HealthTest, EachTroubleIsOneFindingWithFigureAndLimit) {
  EXPECT_EQ(Level::OK, Examined({}).Worst());
  const Case cases[] = {
      {"state",
       Level::Warning,
       "The instance is not online: Admin",
       {"StateInfo.Status = 3", "StateInfo.StateText = \"Admin\"", "StateInfo.InfoAvailable = false"}},
      {"state",
       Level::Critical,
       "The instance is not online: Offline",
       {"StateInfo.Status = 2", "StateInfo.StateText = \"Offline\"", "StateInfo.InfoAvailable = false"}},
      {"state",
       Level::Unknown,
       "Online (locked)",
       {"StateInfo.StateText = \"Online (locked)\"", "StateInfo.InfoAvailable = false"}},
      {"data-area",
       Level::Warning,
       "Data area is 80 % full, 200 MB left (limit 80 %)",
       {"StateInfo.DataPercent = 80", "StateInfo.DataTotal = 128000", "StateInfo.DataUsed = 102400"}},
      {"data-area", Level::Critical, "Data area is 95 % full", {"StateInfo.DataPercent = 95"}},
      {"data-area", Level::Critical, "Data area is full", {"StateInfo.DataPercent = 10", "StateInfo.DataFull = true"}},
      {"log-area", Level::Warning, "Log area is 90 % full", {"StateInfo.LogPercent = 90"}},
      {"sessions",
       Level::Critical,
       "19 of 20 sessions are in use (limit 95 %)",
       {"StateInfo.SessionPercent = 95", "StateInfo.SessionsUsed = 19", "StateInfo.SessionsMax = 20"}},
      {"bad-indexes", Level::Warning, "3 indexes are bad", {"StateInfo.BadIndexes = 3"}},
      {"bad-volumes", Level::Critical, "1 volume is bad", {"StateInfo.BadVolumes = 1"}},
      {"history-lost", Level::Warning, "The backup history is lost", {"StateInfo.HistoryLost = true"}},
      {"standby", Level::Warning, "A hot-standby warning is pending", {"HotStandbyWarning = true"}},
      {"cache-hit-rate",
       Level::Warning,
       "The data cache's hit rate is 60 % (limit 90 %)",
       {"StateInfo.CacheHitRate = 60", "Caches.DataCacheAccesses = [20000, 12000, 8000]"}},
      {"parameter-pending",
       Level::Warning,
       "1 parameter waits for a restart: A",
       {R"(Parameters = [{"Name": "A", "Value": "1", "NewValue": "2"}, {"Name": "B", "Value": "1", "NewValue": "1"}])"}},
      {"analyzer",
       Level::Warning,
       "The analyzer has failed: killed",
       {R"(Analyzer = {"HasError": true, "ErrorText": "killed"})"}},
      {"parameter-pending", Level::Unknown, "The parameters could not be read", {R"(fails = ["Parameters.Load"])"}}};
  for (const Case& oCase : cases) {
    SCOPED_TRACE(oCase.Begin);
    const Health oHealth = Examined(oCase.Changed);
    ASSERT_EQ(1u, oHealth.Findings.size());
    EXPECT_EQ(oCase.Name, oHealth.Findings[0].Name);
    EXPECT_EQ(oCase.Severity, oHealth.Findings[0].Severity);
    EXPECT_TRUE(oHealth.Findings[0].Text.starts_with(oCase.Begin)) << oHealth.Findings[0].Text;
  }
}

TEST(HealthTest, WhatIsInOrderIsNoFinding) {
  for (const Changes& changes :
       {Changes{"StateInfo.DataPercent = 79", "StateInfo.LogPercent = 89"},
        Changes{"StateInfo.LogPercent = 100", "LogSettings.AutoOverwrite = 2"}, Changes{"StateInfo.CacheHitRate = 60"},
        Changes{"StateInfo.Status = 4", "HotStandbyRole = 2"}}) {
    EXPECT_EQ(Level::OK, Examined(changes).Worst()) << changes[0];
  }
}

TEST(HealthTest, TheWorstComesFirst) {
  const Health oHealth =
      Examined({"StateInfo.BadIndexes = 1", "StateInfo.BadVolumes = 1", "StateInfo.SessionPercent = 80"});
  ASSERT_EQ(3u, oHealth.Findings.size());
  EXPECT_EQ("bad-volumes", oHealth.Findings[0].Name);
  ASSERT_EQ(3u, oHealth.Bars.size());
  EXPECT_EQ(95, oHealth.Bars[2].Critical);
}

TEST(HealthTest, AnAreaThatFillsUpSaysWhenItWillBeFull) {
  const auto Text = [](double dPagesPerMinute) {
    Samples oSamples;
    for (int i = 0; i <= 30; ++i) {
      oSamples.Add("State", {{"DataUsed", "", "", false, 108800 + (i - 30) * dPagesPerMinute, ""}}, i * 60000);
    }
    ChangedRecording oRecording(
        "", {"StateInfo.Status = 5", "StateInfo.InfoAvailable = true", "PageSize = 8192",
             "StateInfo.BarThresholds = [70,80,95,60,90,100,70,80,95]", "StateInfo.DataPercent = 85",
             "StateInfo.DataTotal = 128000", "StateInfo.DataUsed = 108800"});
    return Health::Of(oRecording, oSamples.Of("State")).Findings.at(0).Text;
  };
  EXPECT_EQ(Text(4), "Data area is 85 % full, 150 MB left; at the present rate in 3 days (limit 80 %)");
  EXPECT_EQ(Text(640), "Data area is 85 % full, 150 MB left; at the present rate in 30 minutes (limit 80 %)");
  EXPECT_EQ(Text(-4), "Data area is 85 % full, 150 MB left (limit 80 %)");
}

}  // namespace ZELWbr3
