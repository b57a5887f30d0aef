#include "zelwbr3/instances/common/daemon/Figures.h"

#include <cstdint>

namespace ZELWbr3::Instances {

namespace {

using ZELLib3::Long;

struct Column {
  const char* Name;
  std::string (*Value)(const Evaluation&);
};

std::string Text(Long lValue) { return std::to_string(static_cast<std::int32_t>(lValue)); }

template <auto Member>
std::string Of(const Evaluation& o) {
  return Text((o.State.*Member)());
}

/// A group with one line.
FigureGroup GroupOf(const char* sName, const std::vector<Column>& columns) {
  FigureGroup oGroup{sName, {}, {}};
  for (const Column& oColumn : columns) oGroup.Columns.emplace_back(oColumn.Name);
  oGroup.Read = [columns](const Evaluation& oEvaluation) {
    std::vector<std::string> fields;
    for (const Column& oColumn : columns) fields.push_back(oColumn.Value(oEvaluation));
    return FigureGroup::Lines{fields};
  };
  return oGroup;
}

ProtocolLines StateLine(const std::string& sStatus, const std::string& sText, const std::string& sError = {}) {
  return {"state", {"Status", "State", "Error"}, {{sStatus, sText, sError}}};
}

/// The state first. Answers it without the figures of an instance that has
/// none at the moment.
std::vector<ProtocolLines> LinesOf(const EvaluatedInstance& oInstance, ZELLib3::Database& oDatabase,
                                   const AnalyzerConfig& oConfig) {
  const auto oState = oDatabase.StateInfo();
  std::vector<ProtocolLines> lines = {StateLine(Text(oState->Status()), oState->StateText())};
  if (!oState->InfoAvailable()) return lines;
  for (const FigureGroup& oGroup : oInstance.Groups) {
    if (oConfig.Writes(oGroup.Name)) lines.push_back({oGroup.Name, oGroup.Columns, oGroup.Read({oDatabase, *oState})});
  }
  return lines;
}

}  // namespace

Figures Figures::Read(const EvaluatedInstance& oInstance, const AnalyzerConfig& oConfig) {
  Figures oFigures;
  try {
    const auto oDatabase = oInstance.Open();
    oFigures.Lines = LinesOf(oInstance, *oDatabase, oConfig);
    if (!oDatabase->Connected()) oFigures.Error = oDatabase->LastError().ErrorText;
  } catch (const std::exception& oError) {
    oFigures.Error = oError.what();
  }
  if (!oFigures.Error.empty()) oFigures.Lines = {StateLine("0", "Not connected", oFigures.Error)};
  return oFigures;
}

/// Sizes are pages, percentages 0 to 100.
std::vector<FigureGroup> CommonGroups() {
  using S = ZELLib3::StateInfo;
  return {GroupOf("data", {{"Total", Of<&S::DataTotal>},
                           {"Used", Of<&S::DataUsed>},
                           {"Percent", Of<&S::DataPercent>},
                           {"PageSize", [](const Evaluation& o) { return Text(o.Database.PageSize()); }}}),
          GroupOf("log", {{"Total", Of<&S::LogTotal>}, {"Used", Of<&S::LogUsed>}, {"Percent", Of<&S::LogPercent>}}),
          GroupOf("sessions", {{"Used", Of<&S::SessionsUsed>}, {"Max", Of<&S::SessionsMax>}})};
}

}  // namespace ZELWbr3::Instances
