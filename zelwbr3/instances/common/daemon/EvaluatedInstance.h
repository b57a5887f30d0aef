#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/common/analyzer/AnalyzerFolder.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// The instance at the moment of an evaluation.
struct Evaluation {
  ZELLib3::Database& Database;
  const ZELLib3::StateInfo& State;
};

/// Figures that an evaluation writes into a protocol file of their own, and that
/// a configuration may leave out.
struct FigureGroup {
  using Lines = std::vector<std::vector<std::string>>;

  std::string Name;  ///< of the file, without ".csv"
  std::vector<std::string> Columns;
  /// The fields of each line; there may be none. May keep what it has read for
  /// the next evaluation. Raises why the instance cannot be read.
  std::function<Lines(const Evaluation& oEvaluation)> Read;
};

/// What an analyzer evaluates.
struct EvaluatedInstance {
  std::string Name;  ///< as texts name it
  AnalyzerFolder Folder;
  /// Opens it for one evaluation. May answer the same object again, when that
  /// does not stand in anybody's way. Raises why it cannot be opened.
  std::function<std::shared_ptr<ZELLib3::Database>()> Open;
  std::vector<FigureGroup> Groups;

  std::vector<std::string> GroupNames() const {
    std::vector<std::string> names;
    for (const FigureGroup& oGroup : Groups) names.push_back(oGroup.Name);
    return names;
  }
};

}  // namespace ZELWbr3::Instances
