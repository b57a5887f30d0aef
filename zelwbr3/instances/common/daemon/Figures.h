#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"
#include "zelwbr3/instances/common/daemon/AnalyzerConfig.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::Instances {

/// Opens the instance that is evaluated. Raises why it cannot be opened.
using OpenInstance = std::function<std::shared_ptr<ZELLib3::Database>()>;

/// What an evaluation of an instance finds: its figures by groups, as the
/// instance-data interface gives them.
///
/// The instance is opened for the evaluation and closed after it, so an analyzer
/// does not block others who need it exclusively. Figures that count for a
/// single connection (the cache, the statements) are left out: they would be
/// those of this program. A group has no line while its figures cannot be read.
struct Figures {
  /// "state" is always the first.
  std::vector<ProtocolLine> Lines;
  /// Why the instance could not be opened or read, which the state then says
  /// too; empty when it could.
  std::string Error;

  static Figures Read(const OpenInstance& oOpen, const AnalyzerConfig& oConfig);
  /// The groups that a configuration may switch off.
  static std::vector<std::string_view> OptionalGroups();
};

}  // namespace ZELWbr3::Instances
