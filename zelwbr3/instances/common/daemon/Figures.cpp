#include "zelwbr3/instances/common/daemon/Figures.h"

#include <cstdint>

namespace ZELWbr3::Instances {

namespace {

using ZELLib3::Long;

/// The instance at the moment of the evaluation.
struct Instance {
  ZELLib3::Database& Database;
  const ZELLib3::StateInfo& State;
};

struct Column {
  const char* Name;
  std::string (*Value)(const Instance&);
};

struct Group {
  const char* Name;
  std::vector<Column> Columns;
};

std::string Text(Long lValue) { return std::to_string(static_cast<std::int32_t>(lValue)); }

template <auto Member>
std::string Of(const Instance& o) {
  return Text((o.State.*Member)());
}

/// Sizes are pages, percentages 0 to 100.
const std::vector<Group>& Groups() {
  using S = ZELLib3::StateInfo;
  static const std::vector<Group> groups = {
      {"data",
       {{"Total", Of<&S::DataTotal>},
        {"Used", Of<&S::DataUsed>},
        {"Percent", Of<&S::DataPercent>},
        {"PageSize", [](const Instance& o) { return Text(o.Database.PageSize()); }}}},
      {"log", {{"Total", Of<&S::LogTotal>}, {"Used", Of<&S::LogUsed>}, {"Percent", Of<&S::LogPercent>}}},
      {"sessions", {{"Used", Of<&S::SessionsUsed>}, {"Max", Of<&S::SessionsMax>}}},
  };
  return groups;
}

ProtocolLine StateLine(const std::string& sStatus, const std::string& sText, const std::string& sError = {}) {
  return {"state", {"Status", "State", "Error"}, {sStatus, sText, sError}};
}

ProtocolLine LineOf(const Group& oGroup, const Instance& oInstance) {
  ProtocolLine oLine{oGroup.Name, {}, {}};
  for (const Column& oColumn : oGroup.Columns) {
    oLine.Columns.emplace_back(oColumn.Name);
    oLine.Fields.push_back(oColumn.Value(oInstance));
  }
  return oLine;
}

/// The state first. Answers it without the figures of an instance that has
/// none at the moment.
std::vector<ProtocolLine> LinesOf(ZELLib3::Database& oDatabase, const AnalyzerConfig& oConfig) {
  const auto oState = oDatabase.StateInfo();
  std::vector<ProtocolLine> lines = {StateLine(Text(oState->Status()), oState->StateText())};
  if (!oState->InfoAvailable()) return lines;
  const Instance oInstance{oDatabase, *oState};
  for (const Group& oGroup : Groups()) {
    if (oConfig.Writes(oGroup.Name)) lines.push_back(LineOf(oGroup, oInstance));
  }
  return lines;
}

}  // namespace

std::vector<std::string_view> Figures::OptionalGroups() {
  std::vector<std::string_view> names;
  for (const Group& oGroup : Groups()) names.emplace_back(oGroup.Name);
  return names;
}

Figures Figures::Read(const OpenInstance& oOpen, const AnalyzerConfig& oConfig) {
  Figures oFigures;
  try {
    const auto oDatabase = oOpen();
    oFigures.Lines = LinesOf(*oDatabase, oConfig);
    if (!oDatabase->Connected()) oFigures.Error = oDatabase->LastError().ErrorText;
  } catch (const std::exception& oError) {
    oFigures.Error = oError.what();
  }
  if (!oFigures.Error.empty()) oFigures.Lines = {StateLine("0", "Not connected", oFigures.Error)};
  return oFigures;
}

}  // namespace ZELWbr3::Instances
