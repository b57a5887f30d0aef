#pragma once

#include "zelwbr3/instances/sqlite/analyzer/AnalyzerConfig.h"
#include "zelwbr3/instances/sqlite/analyzer/ProtocolFolder.h"

#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::SQLite {

/// What an evaluation of a database file finds: its figures by groups, as the
/// instance-data interface gives them.
///
/// The file is opened for the evaluation and closed after it, so an analyzer
/// never stands in the way of somebody who needs the file for himself. What
/// SQLite counts for each connection, in the memory of the program that has it
/// (the cache, the statements), another program cannot know: it is left out. A
/// group has no line while its figures cannot be read.
struct Figures {
  /// "state" is always the first.
  std::vector<ProtocolLine> Lines;
  /// Why the file could not be opened or read, which the state then says too;
  /// empty when it could.
  std::string Error;

  static Figures Read(const std::string& sDatabase, const AnalyzerConfig& oConfig);
  /// The groups that a configuration may switch off.
  static std::vector<std::string_view> OptionalGroups();
};

}  // namespace ZELWbr3::SQLite
