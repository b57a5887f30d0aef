#include "zelwbr3/instances/recorded/writing/Table.h"

namespace ZELWbr3::Recorded {

namespace Z = ZELLib3;
using Form = Interface::Form;

// Plain entries.

template <>
const Interface& InterfaceOf<Z::Error>() {
  using I = Z::Error;
  static const Interface oInterface =
      Table<I>("LastError").Field("ErrorCode", &I::ErrorCode).Field("ErrorText", &I::ErrorText);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::HotStandby::Node>() {
  using I = Z::HotStandby::Node;
  static const Interface oInterface = Table<I>("Node")
                                          .Field("Name", &I::Name)
                                          .Field("StateText", &I::StateText)
                                          .Field("Role", &I::Role)
                                          .Field("Own", &I::Own);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Analyzer::ProtocolSet>() {
  using I = Z::Analyzer::ProtocolSet;
  static const Interface oInterface = Table<I>("ProtocolSet").Field("Date", &I::Date).Field("Texts", &I::Texts);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::HistoryItem::Field>() {
  using I = Z::HistoryItem::Field;
  static const Interface oInterface = Table<I>("Field").Field("Name", &I::Name).Field("Value", &I::Value);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::HistoryItem>() {
  using I = Z::HistoryItem;
  static const Interface oInterface = Table<I>("HistoryItem")
                                          .Field("Label", &I::Label)
                                          .Field("Action", &I::Action)
                                          .Field("Kind", &I::Kind)
                                          .Field("Date", &I::Date)
                                          .Field("ReturnCode", &I::ReturnCode)
                                          .Field("ErrorText", &I::ErrorText)
                                          .Field("Fields", &I::Fields);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Column>() {
  using I = Column;
  static const Interface oInterface = Table<I>("Column").Field("Name", &I::Name).Field("Title", &I::Title);
  return oInterface;
}

template <>
const Interface& InterfaceOf<ParameterChange>() {
  using I = ParameterChange;
  static const Interface oInterface =
      Table<I>("ParameterChange").Field("Date", &I::Date).Field("Value", &I::Value).Field("NewValue", &I::NewValue);
  return oInterface;
}

template <>
const Interface& InterfaceOf<ListedChange>() {
  using I = ListedChange;
  static const Interface oInterface = Table<I>("ListedChange")
                                          .Field("Date", &I::Date)
                                          .Field("Parameter", &I::Parameter)
                                          .Field("Value", &I::Value)
                                          .Field("NewValue", &I::NewValue)
                                          .Field("Text", &I::Text);
  return oInterface;
}

// The objects of an instance, and last the file.

template <>
const Interface& InterfaceOf<Z::StateInfo>() {
  using I = Z::StateInfo;
  static const Interface oInterface = Table<I>("StateInfo")
                                          .Value("Status", &I::Status)
                                          .Value("StateText", &I::StateText)
                                          .Value("InfoAvailable", &I::InfoAvailable)
                                          .Value("DataUsed", &I::DataUsed)
                                          .Value("DataPerm", &I::DataPerm)
                                          .Value("DataTemp", &I::DataTemp)
                                          .Value("DataPercent", &I::DataPercent)
                                          .Value("LogUsed", &I::LogUsed)
                                          .Value("LogPercent", &I::LogPercent)
                                          .Value("SessionsUsed", &I::SessionsUsed)
                                          .Value("SessionPercent", &I::SessionPercent)
                                          .Value("CacheHitRate", &I::CacheHitRate)
                                          .Value("DataTotal", &I::DataTotal)
                                          .Value("LogTotal", &I::LogTotal)
                                          .Value("SessionsMax", &I::SessionsMax)
                                          .Value("DataFull", &I::DataFull)
                                          .Value("CmdMon", &I::CmdMon)
                                          .Value("AutoLog", &I::AutoLog)
                                          .Value("BadIndexes", &I::BadIndexes)
                                          .Value("BadVolumes", &I::BadVolumes)
                                          .Value("StartOn", &I::StartOn)
                                          .Value("CacheUsed", &I::CacheUsed)
                                          .Value("CacheTotal", &I::CacheTotal)
                                          .Value("OMSMemAna", &I::OMSMemAna)
                                          .Value("ResMon", &I::ResMon)
                                          .Value("LogFull", &I::LogFull)
                                          .Value("AutoExtend", &I::AutoExtend)
                                          .Value("AnyAreaFull", &I::AnyAreaFull)
                                          .Value("HistoryLost", &I::HistoryLost)
                                          .Value("BarThresholds", &I::BarThresholds)
                                          .Value("DBTrace", &I::DBTrace)
                                          .Value("AutoUpdateStatistics", &I::AutoUpdateStatistics);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Version>() {
  using I = Z::Version;
  static const Interface oInterface = Table<I>("Version")
                                          .Value("Text", &I::Text)
                                          .Value("Major", &I::Major)
                                          .Value("Minor", &I::Minor)
                                          .Value("Number", &I::Number)
                                          .Value("Release", &I::Release)
                                          .Value("BuildVersion", &I::BuildVersion);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::LogSettings>() {
  using I = Z::LogSettings;
  static const Interface oInterface =
      Table<I>("LogSettings").Value("AutoOverwrite", &I::AutoOverwrite).Value("WriteOff", &I::WriteOff);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::HotStandby>() {
  using I = Z::HotStandby;
  static const Interface oInterface = Table<I>("HotStandby")
                                          .Value("Enabled", &I::Enabled)
                                          .Value("OfficialNode", &I::OfficialNode)
                                          .Value("Nodes", &I::Nodes);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Snapshot>() {
  using I = Z::Snapshot;
  static const Interface oInterface = Table<I>("Snapshot")
                                          .Value("Exists", &I::Exists)
                                          .Value("ID", &I::ID)
                                          .Value("Created", &I::Created)
                                          .Value("Size", &I::Size);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Parameter>() {
  using I = Z::Parameter;
  static const Interface oInterface = Table<I>("Parameter")
                                          .Value("Name", &I::Name)
                                          .Value("Value", &I::Value)
                                          .Value("Description", &I::Description)
                                          .Value("Explanation", &I::Explanation)
                                          .Value("Group", &I::Group)
                                          .Value("NewValue", &I::NewValue)
                                          .Value("NewValueOnline", &I::NewValueOnline)
                                          .Value("Exists", &I::Exists)
                                          .Count("HistoryCount", TypeOf<Long>())
                                          .Key("History", TypeOf<std::vector<ParameterChange>>(), WriteParameterChanges)
                                          .Methods({"HistoryDate", "HistoryValue", "HistoryNewValue"});
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Parameters>() {
  using I = Z::Parameters;
  static const Interface oInterface =
      Table<I>("Parameters", Form::List).Fetch("Load", &I::Load).Fetch("Read", &I::Read).Collection<Z::Parameter>();
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::ParameterHistory>() {
  using I = Z::ParameterHistory;
  static const Interface oInterface = Table<I>("ParameterHistory", Form::Array)
                                          .Key("Items", TypeOf<std::vector<ListedChange>>(), WriteListedChanges)
                                          .Methods({"HasEntry", "Date", "Parameter", "Value", "NewValue", "Text"})
                                          .Operations({"Open", "MoveNext"});
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Volume>() {
  using I = Z::Volume;
  static const Interface oInterface = Table<I>("Volume")
                                          .Value("Name", &I::Name)
                                          .Value("Kind", &I::Kind)
                                          .Value("Info1", &I::Info1)
                                          .Value("Info2", &I::Info2)
                                          .Value("Size", &I::Size)
                                          .Value("UsedSize", &I::UsedSize)
                                          .Value("FreeSize", &I::FreeSize)
                                          .Value("Configured", &I::Configured)
                                          .Value("IOCount1", &I::IOCount1)
                                          .Value("IOCount2", &I::IOCount2)
                                          .Value("IOCount3", &I::IOCount3)
                                          .Value("IOCount4", &I::IOCount4);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Volumes>() {
  using I = Z::Volumes;
  static const Interface oInterface = Table<I>("Volumes", Form::ObjectOrArray)
                                          .Value("MaxCount", &I::MaxCount)
                                          .Value("CurrentCount", &I::CurrentCount)
                                          .Value("CurrentSize", &I::CurrentSize)
                                          .Value("UsedSize", &I::UsedSize)
                                          .Value("TotalSize", &I::TotalSize)
                                          .Value("ReservedSize", &I::ReservedSize)
                                          .Value("MaxLogCount", &I::MaxLogCount)
                                          .Value("CurrentLogCount", &I::CurrentLogCount)
                                          .Value("CurrentLogSize", &I::CurrentLogSize)
                                          .Collection<Z::Volume>();
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::DataArea>() {
  using I = Z::DataArea;
  static const Interface oInterface =
      Table<I>("DataArea").Fetch("Refresh", &I::Refresh).Indexed("Size", &I::Size, 6).Value("Volumes", &I::Volumes);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::LogAreaSettings>() {
  using I = Z::LogAreaSettings;
  static const Interface oInterface = Table<I>("LogAreaSettings")
                                          .Value("LogMode", &I::LogMode)
                                          .Value("Overwrite", &I::Overwrite)
                                          .Value("RedoLog", &I::RedoLog);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::LogArea>() {
  using I = Z::LogArea;
  static const Interface oInterface = Table<I>("LogArea")
                                          .Fetch("Refresh", &I::Refresh)
                                          .Indexed("Size", &I::Size, 6)
                                          .Value("Settings", &I::Settings)
                                          .Value("Volumes", &I::Volumes);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Caches>() {
  using I = Z::Caches;
  static const Interface oInterface = Table<I>("Caches")
                                          .Fetch("Refresh", &I::Refresh)
                                          .Value("IOBufferCacheSize", &I::IOBufferCacheSize)
                                          .Value("RollbackCacheSize", &I::RollbackCacheSize)
                                          .Value("SequenceCacheSize", &I::SequenceCacheSize)
                                          .Value("CatalogCacheSize", &I::CatalogCacheSize)
                                          .Value("AWEMemorySize", &I::AWEMemorySize)
                                          .Value("AWEEnabled", &I::AWEEnabled)
                                          .Value("DataCacheSize", &I::DataCacheSize)
                                          .Value("ConverterSize", &I::ConverterSize)
                                          .Value("IOBufferCacheParam", &I::IOBufferCacheParam)
                                          .Value("RollbackCacheParam", &I::RollbackCacheParam)
                                          .Value("CatalogCacheParam", &I::CatalogCacheParam)
                                          .Value("AWEMemoryParam", &I::AWEMemoryParam)
                                          .Value("AWEParam", &I::AWEParam)
                                          .Value("DataCacheParam", &I::DataCacheParam)
                                          .Value("AWEMappedSize", &I::AWEMappedSize)
                                          .Value("AWEUnmappedSize", &I::AWEUnmappedSize)
                                          .Indexed("DataCacheAccesses", &I::DataCacheAccesses, 3)
                                          .Indexed("SQLDataAccesses", &I::SQLDataAccesses, 3)
                                          .Indexed("HistoryUndoAccesses", &I::HistoryUndoAccesses, 3)
                                          .Indexed("CatalogCacheAccesses", &I::CatalogCacheAccesses, 3)
                                          .Indexed("SequenceCacheAccesses", &I::SequenceCacheAccesses, 3)
                                          .Indexed("OMSDataAccesses", &I::OMSDataAccesses, 3)
                                          .Indexed("OMSHistoryAccesses", &I::OMSHistoryAccesses, 3)
                                          .Indexed("RollbackCacheAccesses", &I::RollbackCacheAccesses, 3)
                                          .Indexed("ConverterCacheAccesses", &I::ConverterCacheAccesses, 3)
                                          .Value("DataCacheUsedSize", &I::DataCacheUsedSize)
                                          .Value("SQLDataSize", &I::SQLDataSize)
                                          .Value("OMSDataSize", &I::OMSDataSize)
                                          .Value("HistoryUndoSize", &I::HistoryUndoSize)
                                          .Value("OMSHistorySize", &I::OMSHistorySize);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Activity>() {
  using I = Z::Activity;
  static const Interface oInterface = Table<I>("Activity")
                                          .Fetch("Refresh", &I::Refresh)
                                          .Indexed("SQLCounter", &I::SQLCounter, 25)
                                          .Indexed("IOCounter", &I::IOCounter, 4)
                                          .Indexed("LockCounter", &I::LockCounter, 9)
                                          .Indexed("LogCounter", &I::LogCounter, 4);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::SysInfo>() {
  using I = Z::SysInfo;
  static const Interface oInterface = Table<I>("SysInfo")
                                          .Value("Index", &I::Index)
                                          .Value("Name", &I::Name)
                                          .Value("Description", &I::Description)
                                          .Value("IsRecord", &I::IsRecord)
                                          .RowSource();
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::SysInfos>() {
  using I = Z::SysInfos;
  static const Interface oInterface =
      Table<I>("SysInfos", Form::List).Fetch("Refresh", &I::Refresh).Collection<Z::SysInfo>();
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::SQLTable>() {
  using I = Z::SQLTable;
  static const Interface oInterface =
      Table<I>("SQLTable")
          .Key("Owner", TypeOf<std::string>(), [](I& o, Writer& oWriter) { oWriter.Put("Owner", o.Owner()); })
          .Key("Name", TypeOf<std::string>(), [](I& o, Writer& oWriter) { oWriter.Put("Name", o.Name()); })
          .RowSource();
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::SQLTables>() {
  using I = Z::SQLTables;
  static const Interface oInterface = Table<I>("SQLTables", Form::Array)
                                          .Key("Items", TypeOf<std::vector<Z::SQLTable>>(), WriteTables)
                                          .Methods({"NewTable"});
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Session>() {
  using I = Z::Session;
  static const Interface oInterface = Table<I>("Session")
                                          .Value("Index", &I::Index)
                                          .Value("Name", &I::Name)
                                          .Value("Field1", &I::Field1)
                                          .Value("Field2", &I::Field2)
                                          .Value("Field3", &I::Field3)
                                          .Value("Field4", &I::Field4)
                                          .Value("Field5", &I::Field5);
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Sessions>() {
  using I = Z::Sessions;
  static const Interface oInterface =
      Table<I>("Sessions", Form::List).Fetch("Refresh", &I::Refresh).Collection<Z::Session>();
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Analyzer>() {
  using I = Z::Analyzer;
  static const Interface oInterface = Table<I>("Analyzer")
                                          .Value("State", &I::State)
                                          .Value("StartTime", &I::StartTime)
                                          .Value("Info", &I::Info)
                                          .Value("ConfigFile", &I::ConfigFile)
                                          .Value("ProtocolDir", &I::ProtocolDir)
                                          .Value("Interval", &I::Interval)
                                          .Value("Reconnect", &I::Reconnect)
                                          .Value("ProcessID", &I::ProcessID)
                                          .Value("SessionID", &I::SessionID)
                                          .Value("HasError", &I::HasError)
                                          .Value("ErrorText", &I::ErrorText)
                                          .Value("ProtocolSets", &I::ProtocolSets)
                                          .Operations({"Start", "Stop", "DeleteProtocols"});
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::History>() {
  using I = Z::History;
  static const Interface oInterface = Table<I>("History")
                                          .Key("BlockSize", BlockSizeType())
                                          .Key("Items", TypeOf<std::vector<Z::HistoryItem>>(), WriteHistory)
                                          .Methods({"IsEmpty", "RowCount", "NextItem", "EndOfBlock", "HasMore"})
                                          .Operations({"Open", "ReadMore"});
  return oInterface;
}

template <>
const Interface& InterfaceOf<Z::Database>() {
  using I = Z::Database;
  static const Interface oInterface =
      Table<I>("")
          .Value("InstanceName", &I::InstanceName)
          .Value("InstanceNumber", &I::InstanceNumber)
          .Value("OSName", &I::OSName)
          .Value("OSVersion", &I::OSVersion)
          .Value("InstanceType", &I::InstanceType)
          .Value("PlatformType", &I::PlatformType)
          .Value("Connected", &I::Connected)
          .Value("PageSize", &I::PageSize)
          .Value("RunDirectory", &I::RunDirectory)
          .Value("HotStandbyRole", &I::HotStandbyRole)
          .Value("HotStandbyWarning", &I::HotStandbyWarning)
          .Value("Version", &I::Version)
          .Value("StateInfo", &I::StateInfo)
          .Value("LogSettings", &I::LogSettings)
          .Value("HotStandby", &I::HotStandby)
          .Value("Snapshot", &I::Snapshot)
          .Value("Parameters", &I::Parameters)
          .Value("ParameterHistory", &I::ParameterHistory)
          .Value("DataArea", &I::DataArea)
          .Value("LogArea", &I::LogArea)
          .Value("Caches", &I::Caches)
          .Value("Activity", &I::Activity)
          .Value("SysInfos", &I::SysInfos)
          .Value("SQLTables", &I::SQLTables)
          .Value("Sessions", &I::Sessions)
          .Value("Analyzer", &I::Analyzer)
          .Value("History", &I::History)
          .Methods({"LastError"})
          .Operations({"Shutdown", "ShutdownQuick", "Admin", "Online", "RestartUntil", "AutoLogOff"});
  return oInterface;
}

template <>
const Interface& InterfaceOf<File>() {
  using I = File;
  static const Interface oInterface = Table<I>("")
                                          .Key("LastError", TypeOf<std::optional<Z::Error>>())
                                          .Key("fails", TypeOf<std::vector<std::string>>())
                                          .Key("raises", TypeOf<std::vector<std::string>>())
                                          .Key("Database", TypeOf<Z::Database>());
  return oInterface;
}

const Member* Interface::Find(std::string_view sName) const {
  for (const Member& oMember : oMembers) {
    if (oMember.sName == sName) return &oMember;
  }
  return nullptr;
}

}  // namespace ZELWbr3::Recorded
