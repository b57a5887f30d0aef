#include "zelwbr3/pages/main/MainDetails.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modCheckCommands.h"
#include "zelwbr3/framework/modFormat.h"

namespace ZELWbr3::MainDetails {

namespace {

/// As a part of a longer text.
std::string Part(const std::string& sText) { return Text::Isolated(modCells::Known(sText)); }

std::string OnOffText(bool bOn) { return bOn ? "On" : "Off"; }

std::string YesNoText(bool bYes) { return bYes ? "Yes" : "No"; }

std::string SwitchText(Long lSwitch) {
  switch (lSwitch) {
    case ZELLib3::Switch::Unknown:
      return "Unknown";
    case ZELLib3::Switch::Off:
      return "Off";
    case ZELLib3::Switch::On:
      return "On";
    default:
      return {};
  }
}

std::string AnalyzerText(const Facts& o) {
  const auto oAnalyzer = o.Database->Analyzer();
  return oAnalyzer == nullptr ? "Unknown" : OnOffText(oAnalyzer->State() == ZELLib3::AnalyzerState::Started);
}

// Conditions that several rows share.

bool Info(const Facts& o) { return o.State()->InfoAvailable(); }

bool HasObjectStore(const Facts& o) { return o.Database->InstanceType() == ZELLib3::InstanceType::ObjectStore; }

bool HasSnapshot(const Facts& o) { return o.Database->Snapshot()->Exists(); }

bool LogFullShown(const Facts& o) { return Info(o) && o.IsAtLeast(ZELLib3::Kernel::V73) && o.State()->LogFull(); }

bool BadVolumesShown(const Facts& o) {
  return Info(o) && o.State()->BadVolumes() >= 1 && !o.IsAtLeast(ZELLib3::Kernel::V74);
}

bool BadIndexesShown(const Facts& o) { return Info(o) && o.State()->BadIndexes() >= 1; }

bool HistoryLostShown(const Facts& o) {
  return Info(o) && o.State()->HistoryLost() && o.Database->LogSettings()->AutoOverwrite() != ZELLib3::Switch::On &&
         o.Database->LogSettings()->WriteOff() != ZELLib3::Switch::On;
}

bool DataFullShown(const Facts& o) { return o.State()->DataFull(); }

bool AnyWarningShown(const Facts& o) {
  return Info(o) &&
         (DataFullShown(o) || LogFullShown(o) || BadVolumesShown(o) || BadIndexesShown(o) || HistoryLostShown(o));
}

std::string Name(const Facts& o) {
  const Long lNumber = o.Database->InstanceNumber();
  return lNumber > 0 ? Part(o.Database->InstanceName()) + " (" + std::to_string(lNumber) + ")"
                     : o.Database->InstanceName();
}

const Detail Details[] = {
    {"General.Name.Val", Info, Name},
    {"General.Version.Val", Info, [](const Facts& o) { return o.Database->Version()->Text(); }},
    {"General.OS.Val", Info,
     [](const Facts& o) { return Part(o.Database->OSName()) + " (" + Part(o.Database->OSVersion()) + ")"; }},
    {"General.RunDir.Val", Info, [](const Facts& o) { return o.Database->RunDirectory(); }},
    {"General.StartOn.Row", Info},
    {"General.StartOn.Val", Info,
     [](const Facts& o) { return modFormat::GeneralDate(o.State()->StartOn(), o.Locale); }},

    {"GeneralRight.Tab", Info},
    {"General.AutoLog.Row", Info},
    {"General.AutoLog.Val", Info, [](const Facts& o) { return OnOffText(o.State()->AutoLog()); }},
    {"General.CmdMon.Row", Info},
    {"General.CmdMon.Val", Info, [](const Facts& o) { return OnOffText(o.State()->CmdMon()); }},
    {"General.ResMon.Row", Info},
    {"General.ResMon.Val", Info, [](const Facts& o) { return OnOffText(o.State()->ResMon()); }},
    {"General.OMSMemAna.Row", [](const Facts& o) { return Info(o) && HasObjectStore(o); }},
    {"General.OMSMemAna.Val", Info, [](const Facts& o) { return OnOffText(o.State()->OMSMemAna()); }},
    {"General.DBTrace.Row", Info},
    {"General.DBTrace.Val", Info, [](const Facts& o) { return OnOffText(o.State()->DBTrace()); }},
    {"General.DBAnalyzer.Row", [](const Facts& o) { return Info(o) && o.IsAtLeast(ZELLib3::Kernel::V74); }},
    {"General.DBAnalyzer.Val", Info, AnalyzerText},
    {"General.AutoExtend.Row", [](const Facts& o) { return modCheckCommands::CheckAutoExtend(o.Database); }},
    {"General.AutoExtend.Val", Info, [](const Facts& o) { return OnOffText(o.State()->AutoExtend()); }},
    {"General.AutoUpdateStatistics.Row",
     [](const Facts& o) { return modCheckCommands::CheckAutoUpdateStatistics(o.Database); }},
    {"General.AutoUpdateStatistics.Val", Info,
     [](const Facts& o) { return SwitchText(o.State()->AutoUpdateStatistics()); }},

    {"DataCache.Tab", Info},
    {"DataCache.Total.Val", Info, [](const Facts& o) { return o.Size(o.State()->CacheTotal()); }},
    {"DataCache.Used.Row", HasObjectStore},
    {"DataCache.Used.Val", Info, [](const Facts& o) { return o.Size(o.State()->CacheUsed()); }},
    {"DataCache.HitRate.Val", Info, [](const Facts& o) { return std::to_string(o.State()->CacheHitRate()) + " %"; }},

    {"Snapshot.Tab", HasSnapshot},
    {"Snapshot.ID.Val", [](const Facts& o) { return Info(o) && HasSnapshot(o); },
     [](const Facts& o) { return o.Database->Snapshot()->ID(); }},
    {"Snapshot.Created.Val", [](const Facts& o) { return Info(o) && HasSnapshot(o); },
     [](const Facts& o) { return modFormat::GeneralDate(o.Database->Snapshot()->Created(), o.Locale); }},
    {"Snapshot.Size.Val", Info, [](const Facts& o) { return o.Size(o.Database->Snapshot()->Size()); }},

    {"Warnings.Tab", AnyWarningShown},
    {"Warnings.DBFull.Row", DataFullShown},
    {"Warnings.DBFull.Val", Info, [](const Facts& o) { return YesNoText(o.State()->DataFull()); }},
    {"Warnings.LogFull.Row", LogFullShown},
    {"Warnings.LogFull.Val", LogFullShown, [](const Facts& o) { return YesNoText(o.State()->LogFull()); }},
    {"Warnings.BadVol.Row", BadVolumesShown},
    {"Warnings.BadVol.Val", Info, [](const Facts& o) { return std::to_string(o.State()->BadVolumes()); }},
    {"Warnings.BadIdx.Row", BadIndexesShown},
    {"Warnings.BadIdx.Val", Info, [](const Facts& o) { return std::to_string(o.State()->BadIndexes()); }},
    {"Warnings.HistLost.Row", HistoryLostShown},
    {"Warnings.HistLost.Val", Info, [](const Facts& o) { return YesNoText(o.State()->HistoryLost()); }},
};

}  // namespace

const std::span<const Detail> All = Details;

}  // namespace ZELWbr3::MainDetails
