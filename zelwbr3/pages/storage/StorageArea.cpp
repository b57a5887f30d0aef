#include "zelwbr3/pages/storage/StorageArea.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELWbr3 {

namespace {

using Area = StorageArea;
using Instance = Area::Instance;
using enum Area::Kind;

using namespace ZELLib3::Kernel;

Long Version(Instance& o) { return Given(o.Version())->Number(); }

bool Always(Instance&) { return true; }

bool Before74(Instance& o) { return Version(o) < V74; }

bool Before75(Instance& o) { return Version(o) < V75; }

bool Since75(Instance& o) { return !Before75(o); }

bool CountsArchiveLogs(Instance& o) { return Given(o.Version())->BuildVersion() <= V7403; }

bool CountsLogVolumes(Instance& o) { return !CountsArchiveLogs(o); }

/// Early 7.4 kernels do not provide these settings; older kernels do.
bool HidesLogModes(Instance& o) { return Version(o) > V74 && Version(o) < V7403; }

bool HidesRedoLog(Instance& o) { return Version(o) < V7402; }

std::shared_ptr<ZELLib3::Volumes> DataVolumes(Instance& o) { return Given(Given(o.DataArea())->Volumes()); }
std::shared_ptr<ZELLib3::Volumes> LogVolumes(Instance& o) { return Given(Given(o.LogArea())->Volumes()); }
std::shared_ptr<ZELLib3::LogAreaSettings> LogSettings(Instance& o) { return Given(Given(o.LogArea())->Settings()); }

// ---- data area ----

Long CurrentSize(Instance& o) { return DataVolumes(o)->CurrentSize(); }

Long UsedSize(Instance& o) { return DataVolumes(o)->UsedSize(); }

Long UsableSize(Instance& o) { return Given(o.DataArea())->Size(0); }

const Area::Figure DataSummary[] = {
    {"txtCurrentCount", Count, [](Instance& o) { return DataVolumes(o)->CurrentCount(); }},
    {"txtMaxCount", Count, [](Instance& o) { return DataVolumes(o)->MaxCount(); }},
    {"txtCurrentSize", Size, CurrentSize},
    {"txtReservedSize", Size, [](Instance& o) { return DataVolumes(o)->ReservedSize(); }, "rowReservedSize", Before74},
    {"txtTotalSize", Size, [](Instance& o) { return DataVolumes(o)->TotalSize(); }, "rowTotalSize", Before74},
};

const Area::Figure DataUsage[] = {
    {"txtCurrentSize", Whole, CurrentSize},
    {"txtPermUsable", Share, [](Instance& o) { return Given(o.DataArea())->Size(1); }, "rowPermUsable", Before74},
    {"txtReservedRedo", Share, [](Instance& o) { return Given(o.DataArea())->Size(5); }, "rowReservedRedo", Before74},
    {"txtUsed", Share, UsedSize},
    {"txtFree", Share, [](Instance& o) { return UsableSize(o) - UsedSize(o); }},
};

const Area::Parameter DataParameters[] = {
    {"MAXDATADEVSPACES", Before75},         {"MAXDATAVOLUMES", Since75},  {"MAXDATAPAGES", Before74, true},
    {"RESERVED_REDO_SIZE", Before74, true}, {"_MIRRORED_DATA", Before74},
};

// ---- log area ----

Long CurrentLogSize(Instance& o) { return LogVolumes(o)->CurrentLogSize(); }

const Area::Figure LogSummary[] = {
    {"txtCurrentCount", Count, [](Instance& o) { return LogVolumes(o)->CurrentLogCount(); }},
    {"txtMaxCount", Count, [](Instance& o) { return LogVolumes(o)->MaxLogCount(); }},
    {"txtCurrentSize", Size, CurrentLogSize},
};

const Area::Figure LogUsage[] = {
    {"txtCurrentSize", Whole, CurrentLogSize},
    {"txtSegmentSize", Share, [](Instance& o) { return Given(o.LogArea())->Size(1); }},
    {"txtFree", Share, [](Instance& o) { return Given(o.LogArea())->Size(2); }},
    {"txtUsed", Share, [](Instance& o) { return Given(o.LogArea())->Size(3); }},
    {"txtUnsaved", Share, [](Instance& o) { return Given(o.LogArea())->Size(4); }},
    {"txtSinceBackup", Share, [](Instance& o) { return Given(o.LogArea())->Size(5); }},
};

const Area::Setting LogModes[] = {
    {HidesLogModes,
     "tabLogModeWrongVersion",
     [](Instance& o) { return LogSettings(o)->LogMode(); },
     {"tabLogModeUnknown", "tabLogModeSingle", "tabLogModeMirrored"}},
    {HidesLogModes,
     "tabLogOverwriteWrongVersion",
     [](Instance& o) { return LogSettings(o)->Overwrite(); },
     {"tabLogOverwriteUnknown", "tabLogOverwriteNormal", "tabLogOverwriteOverwrite"}},
    {HidesRedoLog,
     "tabRedoLogWrongVersion",
     [](Instance& o) { return LogSettings(o)->RedoLog(); },
     {"tabRedoLogUnknown", "tabRedoLogActivated", "tabRedoLogDeactivated"}},
};

const Area::Parameter LogParameters[] = {
    {"MAXARCHIVELOGS", CountsArchiveLogs, true},
    {"MAXLOGVOLUMES", CountsLogVolumes, true},
    {"LOG_SEGMENT_SIZE", Always},
};

const Area::Counter LogCounters[] = {
    {"txtLogPagesWritten", 0},
    {"txtGroupCommits", 1},
    {"txtWaitForLogWriter", 2},
    {"txtIOQueueOverflow", 3},
};

}  // namespace

const StorageArea DataStorageArea = {
    .Name = "DataArea",
    .PageType = zelWebBrowserPageDataArea,
    .VolumeKind = 3,
    .Refresh = [](Instance& o) { return Given(o.DataArea())->Refresh(); },
    .Volumes = DataVolumes,
    .ReferenceSize = UsableSize,
    .Summary = DataSummary,
    .Usage = DataUsage,
    .Settings = {},
    .ParameterTable = "tabSettings",
    .Parameters = DataParameters,
    .Counters = {},
};

const StorageArea LogStorageArea = {
    .Name = "LogArea",
    .PageType = zelWebBrowserPageLogArea,
    .VolumeKind = 2,
    .Refresh = [](Instance& o) { return Given(o.LogArea())->Refresh(); },
    .Volumes = LogVolumes,
    .ReferenceSize = [](Instance& o) { return Given(o.LogArea())->Size(0); },
    .Summary = LogSummary,
    .Usage = LogUsage,
    .Settings = LogModes,
    .ParameterTable = "tabSettingsParams",
    .Parameters = LogParameters,
    .Counters = LogCounters,
};

}  // namespace ZELWbr3
