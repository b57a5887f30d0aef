#include "zelwbr3/framework/Health.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/SizeText.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/Given.h"

#include <algorithm>
#include <array>
#include <functional>
#include <string_view>
#include <utility>

namespace ZELWbr3 {

namespace {

using Level = Health::Level;
using ZELLib3::Long;

/// Accesses of the data cache from which its hit rate says something.
constexpr double kLoad = 10000;
constexpr int kLowHitRate = 90;
/// Database::HotStandbyRole of a standby.
constexpr int kStandby = 2;
/// Milliseconds in which an area's growth is looked at.
constexpr std::int64_t Hour = 60 * 60 * 1000;
/// Names that a sentence lists.
constexpr std::size_t kMostNames = 5;

/// How bad a level is; what cannot be read may be anything but good.
int Rank(Level eLevel) {
  constexpr std::array<int, 4> Ranks = {0, 1, 3, 2};
  return Ranks[static_cast<std::size_t>(eLevel)];
}

/// Where a kind of finding is shown.
struct Place {
  const char* Name;
  const char* Page;
  int Tab = 0;
};
constexpr Place Places[] = {
    {"state", "Main"},
    {"data-area", "DataArea", 2},
    {"log-area", "LogArea", 2},
    {"sessions", "Sessions"},
    {"bad-indexes", "Main"},
    {"bad-volumes", "DataArea"},
    {"history-lost", "History"},
    {"standby", "Main"},
    {"cache-hit-rate", "InfoCaches"},
    {"lock-wait", "Sessions"},
    {"long-transaction", "Sessions"},
    {"archive", "LogArea", 1},
    {"parameter-pending", "Parameters"},
    {"analyzer", "DBAnalyzer"},
};

/// "1 index is bad", "3 indexes are bad".
std::string Counted(std::int32_t lCount, const char* sOne, const char* sMany) {
  return std::to_string(lCount) + " " + (lCount == 1 ? sOne : sMany);
}

/// One examination.
class Examination {
 public:
  Examination(ZELLib3::Database& oDatabase, const Samples::Group* oBefore)
      : m_oDatabase(oDatabase),
        m_oBefore(oBefore),
        m_oState(Given(oDatabase.StateInfo())),
        m_oLimits(m_oState->BarThresholds()) {}

  Health Examine() {
    State();
    if (m_oState->InfoAvailable()) {
      DataArea();
      LogArea();
      Sessions();
      Counters();
      Try("cache-hit-rate", "The caches", [this] { HitRate(); });
      Try("standby", "The hot standby", [this] { Standby(); });
      Try("parameter-pending", "The parameters", [this] { PendingParameters(); });
      Try("lock-wait", "Waiting sessions", [this] { Troubles(); });
    }
    Try("analyzer", "The analyzer", [this] { Analyzer(); });
    std::ranges::stable_sort(m_oHealth.Findings, std::greater(),
                             [](const Health::Finding& o) { return Rank(o.Severity); });
    return std::move(m_oHealth);
  }

 private:
  void Add(Level eLevel, std::string_view sName, const std::string& sText) {
    const Place& oPlace = *std::ranges::find(Places, sName, [](const Place& o) { return std::string_view(o.Name); });
    m_oHealth.Findings.push_back({eLevel, oPlace.Name, Text::OneLine(sText), oPlace.Page, oPlace.Tab});
  }

  void Try(const char* sName, const std::string& sWhat, const std::function<void()>& oPart) {
    try {
      oPart();
    } catch (const ZELLib3::InstanceError& oError) {
      Add(Level::Unknown, sName, sWhat + " could not be read: " + oError.what());
    }
  }

  void State() {
    const Long lStatus = m_oState->Status();
    if (lStatus == ZELLib3::Status::Online) {
      if (!m_oState->InfoAvailable()) Add(Level::Unknown, "state", m_oState->StateText());
      return;
    }
    // Which is where a standby belongs.
    if (lStatus == ZELLib3::Status::AdminToOnline && m_oDatabase.HotStandbyRole() == kStandby) return;
    const bool bAdmin = lStatus == ZELLib3::Status::Admin || lStatus == ZELLib3::Status::AdminToOnline;
    Add(bAdmin ? Level::Warning : Level::Critical, "state",
        "The instance is not online: " + Text::Isolated(m_oState->StateText()));
  }

  /// A bar is as bad as the second and third of its thresholds say, or full.
  void Bar(const char* sBar, const char* sName, std::size_t iFirst, Long lPercent, bool bFull,
           const std::string& sText) {
    const int iWarning = m_oLimits[iFirst + 1];
    const int iCritical = m_oLimits[iFirst + 2];
    m_oHealth.Bars.push_back({sBar, lPercent, iWarning, iCritical});
    if (bFull || lPercent >= iCritical) {
      Add(Level::Critical, sName, sText + (bFull ? "" : " (limit " + std::to_string(iCritical) + " %)"));
    } else if (lPercent >= iWarning) {
      Add(Level::Warning, sName, sText + " (limit " + std::to_string(iWarning) + " %)");
    }
  }

  /// "Data area is 96 % full, 12 GB left".
  std::string AreaText(const char* sArea, Long lPercent, bool bFull, Long lTotal, Long lUsed, const char* sFigure) {
    if (bFull) return std::string(sArea) + " is full";
    const auto lLeft = std::max<std::int64_t>(0, std::int64_t{lTotal} - std::int64_t{lUsed});
    return std::string(sArea) + " is " + std::to_string(lPercent) + " % full, " +
           SizeText(lLeft * std::int64_t{m_oDatabase.PageSize()}) + " left" + Forecast(sFigure, lLeft);
  }

  /// "; full in 3 days at the present rate"; empty if it does not fill up soon.
  std::string Forecast(const char* sFigure, std::int64_t lLeft) const {
    const auto dRate = m_oBefore == nullptr ? std::nullopt : m_oBefore->Rate(sFigure, Hour);
    if (!dRate || *dRate <= 0) return "";
    const double dMinutes = static_cast<double>(lLeft) / *dRate / 60;
    if (dMinutes > 60.0 * 24 * 60) return "";
    const auto In = [](double dCount, const char* sOne) {
      const auto lCount = std::max<std::int64_t>(1, static_cast<std::int64_t>(dCount));
      return "; at the present rate in " + std::to_string(lCount) + " " + sOne + (lCount == 1 ? "" : "s");
    };
    if (dMinutes < 120) return In(dMinutes, "minute");
    return dMinutes < 48 * 60 ? In(dMinutes / 60, "hour") : In(dMinutes / 60 / 24, "day");
  }

  void DataArea() {
    const Long lPercent = m_oState->DataPercent();
    const bool bFull = m_oState->DataFull();
    Bar("data", "data-area", 0, lPercent, bFull,
        AreaText("Data area", lPercent, bFull, m_oState->DataTotal(), m_oState->DataUsed(), "DataUsed"));
  }

  void LogArea() {
    // A log that overwrites itself has no fill level that could be too high.
    const auto oSettings = Given(m_oDatabase.LogSettings());
    if (oSettings->AutoOverwrite() == ZELLib3::Switch::On || oSettings->WriteOff() == ZELLib3::Switch::On) return;
    const Long lPercent = m_oState->LogPercent();
    const bool bFull = m_oState->LogFull();
    Bar("log", "log-area", 3, lPercent, bFull,
        AreaText("Log area", lPercent, bFull, m_oState->LogTotal(), m_oState->LogUsed(), "LogUsed"));
  }

  void Sessions() {
    const Long lPercent = m_oState->SessionPercent();
    Bar("sessions", "sessions", 6, lPercent, false,
        std::to_string(m_oState->SessionsUsed()) + " of " + std::to_string(m_oState->SessionsMax()) +
            " sessions are in use");
  }

  void Counters() {
    if (const Long lIndexes = m_oState->BadIndexes(); lIndexes > 0) {
      Add(Level::Warning, "bad-indexes", Counted(lIndexes, "index is bad", "indexes are bad"));
    }
    if (const Long lVolumes = m_oState->BadVolumes(); lVolumes > 0) {
      Add(Level::Critical, "bad-volumes", Counted(lVolumes, "volume is bad", "volumes are bad"));
    }
    if (m_oState->HistoryLost()) Add(Level::Warning, "history-lost", "The backup history is lost");
  }

  void HitRate() {
    const Long lRate = m_oState->CacheHitRate();
    if (lRate >= kLowHitRate || lRate == 0) return;  // 0 = not known
    const auto oCaches = Given(m_oDatabase.Caches());
    if (!oCaches->Refresh() || oCaches->DataCacheAccesses(0) < kLoad) return;
    Add(Level::Warning, "cache-hit-rate",
        "The data cache's hit rate is " + std::to_string(lRate) + " % (limit " + std::to_string(kLowHitRate) + " %)");
  }

  void Standby() {
    if (!m_oDatabase.HotStandbyWarning()) return;
    std::string sText = "A hot-standby warning is pending";
    const char* sBetween = ": ";
    for (const auto& oNode : Given(m_oDatabase.HotStandby())->Nodes()) {
      sText += sBetween + Text::Isolated(oNode.Name) + " " + Text::Isolated(oNode.StateText);
      sBetween = ", ";
    }
    Add(Level::Warning, "standby", sText);
  }

  void PendingParameters() {
    const auto oParameters = Given(m_oDatabase.Parameters());
    if (!oParameters->Load() || !oParameters->Read()) throw ZELLib3::InstanceError(m_oDatabase.LastError());
    std::vector<std::string> names;
    for (std::int32_t i = 1; i <= oParameters->Count(); ++i) {
      const auto oParameter = Given(oParameters->Item(i));
      const std::string sNew = Text::Trim(oParameter->NewValue());
      if (!sNew.empty() && sNew != Text::Trim(oParameter->Value())) names.push_back(Text::Trim(oParameter->Name()));
    }
    if (names.empty()) return;
    std::string sText = Counted(static_cast<std::int32_t>(names.size()), "parameter waits", "parameters wait");
    sText += " for a restart";
    for (std::size_t i = 0; i < std::min(names.size(), kMostNames); ++i) {
      sText += (i == 0 ? ": " : ", ") + Text::Isolated(names[i]);
    }
    if (names.size() > kMostNames) sText += ", …";
    Add(Level::Warning, "parameter-pending", sText);
  }

  void Troubles() {
    constexpr std::array<const char*, 3> Names = {"lock-wait", "long-transaction", "archive"};
    for (const ZELLib3::Trouble& oTrouble : m_oDatabase.Troubles()) {
      Add(oTrouble.IsCritical ? Level::Critical : Level::Warning, Names[static_cast<std::size_t>(oTrouble.What)],
          oTrouble.Text);
    }
  }

  void Analyzer() {
    const auto oAnalyzer = m_oDatabase.Analyzer();
    if (oAnalyzer == nullptr || !oAnalyzer->HasError()) return;
    Add(Level::Warning, "analyzer", "The analyzer has failed: " + oAnalyzer->ErrorText());
  }

  ZELLib3::Database& m_oDatabase;
  const Samples::Group* m_oBefore;
  std::shared_ptr<ZELLib3::StateInfo> m_oState;
  ZELLib3::StateInfo::Thresholds m_oLimits;
  Health m_oHealth;
};

}  // namespace

Health Health::Of(ZELLib3::Database& oDatabase, const Samples::Group* oBefore) {
  return Examination(oDatabase, oBefore).Examine();
}

const char* Health::LevelName(Level eLevel) {
  constexpr std::array<const char*, 4> Names = {"OK", "WARNING", "CRITICAL", "UNKNOWN"};
  return Names[static_cast<std::size_t>(eLevel)];
}

Health::Level Health::Worst() const { return Findings.empty() ? Level::OK : Findings.front().Severity; }

}  // namespace ZELWbr3
