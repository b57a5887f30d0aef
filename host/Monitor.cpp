#include "host/Monitor.h"

#include "host/OpenInstance.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/Given.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <sstream>
#include <utility>

namespace ZELWbr3::Host {

namespace {

std::vector<Monitor::Figure> FiguresOf(ZELLib3::Database& oDatabase) {
  const auto oState = Given(oDatabase.StateInfo());
  std::vector<Monitor::Figure> figures;
  const auto Add = [&](const char* sName, const char* sHelp, double nValue, bool bCounts = false) {
    if (nValue >= 0 && std::isfinite(nValue)) figures.push_back({sName, sHelp, bCounts, nValue});
  };
  Add("zelwbr3_status", "Operational state: 2 offline, 3 admin, 5 online.", oState->Status());
  if (!oState->InfoAvailable()) return figures;
  const double nPage = oDatabase.PageSize();
  Add("zelwbr3_data_area_used_bytes", "Used bytes of the data area.", nPage * oState->DataUsed());
  Add("zelwbr3_data_area_size_bytes", "Size of the data area.", nPage * oState->DataTotal());
  Add("zelwbr3_log_area_used_bytes", "Used bytes of the log area.", nPage * oState->LogUsed());
  Add("zelwbr3_log_area_size_bytes", "Size of the log area.", nPage * oState->LogTotal());
  Add("zelwbr3_sessions", "Sessions that are open.", oState->SessionsUsed());
  Add("zelwbr3_sessions_max", "Sessions that may be open.", oState->SessionsMax());
  Add("zelwbr3_data_cache_hit_ratio", "Hit rate of the data cache, 0 to 1.", oState->CacheHitRate() / 100.0);
  Add("zelwbr3_bad_indexes", "Indexes that are bad.", oState->BadIndexes());
  Add("zelwbr3_bad_volumes", "Volumes that are bad.", oState->BadVolumes());
  try {
    const auto oActivity = Given(oDatabase.Activity());
    Add("zelwbr3_commits_total", "Transactions committed.", oActivity->SQLCounter(7), true);
    Add("zelwbr3_rollbacks_total", "Transactions rolled back.", oActivity->SQLCounter(6), true);
    Add("zelwbr3_physical_reads_total", "Pages read from disk.", oActivity->IOCounter(0), true);
    Add("zelwbr3_logical_reads_total", "Pages read.", oActivity->IOCounter(1), true);
    Add("zelwbr3_physical_writes_total", "Pages written to disk.", oActivity->IOCounter(2), true);
    Add("zelwbr3_lock_collisions_total", "Locks that had to be waited for.", oActivity->LockCounter(7), true);
  } catch (const ZELLib3::InstanceError&) {
    // The other figures are good without it.
  }
  return figures;
}

/// A label's value.
std::string Label(const std::string& sText) {
  std::string sLabel;
  for (const char c : Text::OneLine(Text::Clean(sText))) {
    if (c == '"' || c == '\\') sLabel += '\\';
    sLabel += c;
  }
  return sLabel;
}

std::string Number(double nValue) {
  std::ostringstream oText;
  oText.imbue(std::locale::classic());
  oText.precision(15);
  oText << nValue;
  return oText.str();
}

/// The metrics in the order in which they came up, each with all its samples.
class Metrics {
 public:
  void Add(const std::string& sName, const char* sHelp, bool bCounts, const std::string& sLabels, double nValue) {
    auto it = m_index.find(sName);
    if (it == m_index.end()) {
      it = m_index.emplace(sName, m_blocks.size()).first;
      m_blocks.push_back("# HELP " + sName + " " + sHelp + "\n# TYPE " + sName + (bCounts ? " counter\n" : " gauge\n"));
    }
    m_blocks[it->second] += sName + "{" + sLabels + "} " + Number(nValue) + "\n";
  }
  std::string Text() const {
    std::string sAll;
    for (const std::string& sBlock : m_blocks) sAll += sBlock;
    return sAll;
  }

 private:
  std::map<std::string, std::size_t> m_index;
  std::vector<std::string> m_blocks;
};

}  // namespace

Monitor::Monitor(std::string sInstance, std::chrono::milliseconds oEvery)
    : m_sInstance(std::move(sInstance)),
      m_sName(ShownInstance(m_sInstance)),
      m_oEvery(oEvery),
      m_oThread([this] { Run(); }) {}

Monitor::~Monitor() {
  {
    const std::scoped_lock oLock(m_oMutex);
    m_bStop = true;
    m_oStop.notify_all();
    if (m_oDatabase != nullptr) m_oDatabase->Interrupt();
  }
  m_oThread.join();
}

Monitor::Reading Monitor::Last() const {
  const std::scoped_lock oLock(m_oMutex);
  return m_oLast;
}

void Monitor::Run() {
  std::unique_lock oLock(m_oMutex);
  while (!m_bStop) {
    oLock.unlock();
    Reading oReading = Read();
    oLock.lock();
    if (oReading.Title.empty()) oReading.Title = m_oLast.Title;
    m_oLast = std::move(oReading);
    m_oStop.wait_for(oLock, m_oEvery, [this] { return m_bStop; });
  }
}

Monitor::Reading Monitor::Read() {
  Reading oReading{.Done = true, .When = std::chrono::system_clock::now()};
  const auto oBegin = std::chrono::steady_clock::now();
  const auto Keep = [this](std::shared_ptr<ZELLib3::Database> oDatabase) {
    const std::scoped_lock oLock(m_oMutex);
    m_oDatabase = std::move(oDatabase);
  };
  try {
    if (m_oDatabase == nullptr) Keep(OpenInstance(m_sInstance));
    oReading.Title = m_oDatabase->InstanceName();
    oReading.Health = Health::Of(*m_oDatabase);
    oReading.Figures = FiguresOf(*m_oDatabase);
    oReading.Connected = m_oDatabase->StateInfo()->InfoAvailable();
  } catch (const std::exception& o) {
    oReading.Health.Findings = {{Health::Level::Unknown, "state", Text::OneLine(o.what()), "Main"}};
    Keep(nullptr);  // opened anew next time
  }
  oReading.Took = std::chrono::steady_clock::now() - oBegin;
  return oReading;
}

std::string MetricsText(const std::vector<std::unique_ptr<Monitor>>& monitors) {
  Metrics oMetrics;
  for (const auto& oMonitor : monitors) {
    const Monitor::Reading o = oMonitor->Last();
    const std::string sInstance = "database=\"" + Label(oMonitor->Name()) + "\"";
    const bool bRead = o.Done && o.Connected && o.Health.Worst() != Health::Level::Unknown;
    oMetrics.Add("zelwbr3_up", "Whether the instance answers and everything could be read.", false, sInstance,
                 bRead ? 1 : 0);
    if (!o.Done) continue;
    oMetrics.Add("zelwbr3_read_duration_seconds", "How long reading these figures took.", false, sInstance,
                 o.Took.count());
    oMetrics.Add("zelwbr3_read_timestamp_seconds", "When these figures were read.", false, sInstance,
                 std::chrono::duration<double>(o.When.time_since_epoch()).count());
    for (const auto eLevel : {Health::Level::Warning, Health::Level::Critical, Health::Level::Unknown}) {
      const auto iCount = std::ranges::count(o.Health.Findings, eLevel, &Health::Finding::Severity);
      oMetrics.Add("zelwbr3_findings", "What needs attention, by level.", false,
                   sInstance + ",level=\"" + Health::LevelName(eLevel) + "\"", static_cast<double>(iCount));
    }
    // One sample for each kind: a name may be found more than once.
    std::map<std::pair<std::string, std::string>, int> oKinds;
    for (const Health::Finding& oFinding : o.Health.Findings)
      ++oKinds[{oFinding.Name, Health::LevelName(oFinding.Severity)}];
    for (const auto& [oKind, iCount] : oKinds) {
      oMetrics.Add("zelwbr3_finding", "What needs attention, by kind.", false,
                   sInstance + ",name=\"" + Label(oKind.first) + "\",level=\"" + oKind.second + "\"", iCount);
    }
    for (const Health::Bar& oBar : o.Health.Bars) {
      if (oBar.Percent < 0) continue;  // not known
      oMetrics.Add("zelwbr3_fill_ratio", "Fill level, 0 to 1.", false, sInstance + ",area=\"" + Label(oBar.Name) + "\"",
                   oBar.Percent / 100.0);
    }
    for (const Monitor::Figure& oFigure : o.Figures) {
      oMetrics.Add(oFigure.Name, oFigure.Help, oFigure.Counts, sInstance, oFigure.Value);
    }
  }
  return oMetrics.Text();
}

std::string LightsJSON(const std::vector<std::unique_ptr<Monitor>>& monitors) {
  nlohmann::ordered_json oLights = nlohmann::ordered_json::array();
  for (const auto& oMonitor : monitors) {
    const Monitor::Reading o = oMonitor->Last();
    const auto& findings = o.Health.Findings;
    oLights.push_back({{"name", Text::Clean(oMonitor->Name())},
                       {"title", Text::Clean(Text::OneLine(o.Title))},
                       {"level", o.Done ? Health::LevelName(o.Health.Worst()) : "UNKNOWN"},
                       {"text", !o.Done            ? "Reading"
                                : findings.empty() ? ""
                                                   : Text::Clean(findings.front().Text)}});
  }
  return oLights.dump();
}

}  // namespace ZELWbr3::Host
