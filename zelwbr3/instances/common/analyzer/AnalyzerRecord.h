#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ZELWbr3::Instances {

/// How the analyzer of an instance runs, or ran last: the content of its lock
/// file. Moments are time stamps.
struct AnalyzerRecord {
  std::string Instance;
  std::string ConfigFile;
  int Number = 0;  ///< evaluations until it ends; 0 = endless
  int Interval = 0;
  int Reconnect = 0;
  int ProcessID = 0;
  int SessionID = 0;  ///< the system's session, which is the process's own
  int Evaluations = 0;
  std::string Started;
  std::string Evaluated;  ///< the last time
  std::string Ended;      ///< empty until it has ended by itself
  std::string Error;      ///< why it ended, or what it cannot do at the moment

  /// Always as many bytes, so that writing over an older record needs no room
  /// on the disk. Long texts are cut.
  static constexpr std::size_t Bytes = 8192;
  std::string Encode() const;
  /// No value for what is not a record, or only a part of one.
  static std::optional<AnalyzerRecord> Decode(std::string_view sBytes);
};

}  // namespace ZELWbr3::Instances
