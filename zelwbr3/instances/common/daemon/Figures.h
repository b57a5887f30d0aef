#pragma once

#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"
#include "zelwbr3/instances/common/daemon/AnalyzerConfig.h"
#include "zelwbr3/instances/common/daemon/EvaluatedInstance.h"

#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// What an evaluation of an instance finds: its state, and its figures by groups.
/// A group has no line while its figures cannot be read.
struct Figures {
  /// "state" is always the first.
  std::vector<ProtocolLines> Lines;
  /// Why the instance could not be opened or read, which the state then says
  /// too; empty when it could.
  std::string Error;

  static Figures Read(const EvaluatedInstance& oInstance, const AnalyzerConfig& oConfig);
};

/// What the instance-data interface tells of every kind of instance: "data",
/// "log" and "sessions". Figures that count for a single connection (the cache,
/// the statements) are left out: they would be those of the analyzer.
std::vector<FigureGroup> CommonGroups();

}  // namespace ZELWbr3::Instances
