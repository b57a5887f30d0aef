#pragma once

#include "zelwbr3/ZELLib3/Analyzer.h"

#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// What one evaluation adds to one protocol file.
struct ProtocolLines {
  std::string File;  ///< without ".csv"
  std::vector<std::string> Columns;
  std::vector<std::vector<std::string>> Lines;  ///< the fields of each; the file is made for the first one
};

/// The protocol sets of an analyzer: a folder YYYYMMDD a day, with a CSV file
/// for each group of figures (RFC 4180, lines ended by "\n").
///
/// The first line of a file names its columns. The first two columns are
/// "Number", which counts the day's evaluations, and "Time": lines of several
/// files with the same number belong together, and an evaluation may have any
/// number of them in a file. The file "state" has one for every evaluation and
/// makes the folder a protocol set.
class ProtocolFolder {
 public:
  /// The folder need not exist; sPath is absolute.
  explicit ProtocolFolder(std::string sPath) : m_sPath(std::move(sPath)) {}

  /// Adds an evaluation to the set of its day. It is written as a whole: when a
  /// line cannot be, none of them stays. The first ones are those of "state".
  /// Raises std::system_error, or std::runtime_error for a file that was not
  /// written by Append.
  void Append(const std::string& sTimeStamp, const std::vector<ProtocolLines>& parts) const;

  /// Newest first. The texts tell the number of evaluations, the time of the
  /// last one, and how much there is; the date is that of the first one. Other
  /// files and folders are not listed. Raises std::filesystem::filesystem_error.
  std::vector<ZELLib3::Analyzer::ProtocolSet> Sets() const;

  /// The figures of the sets from a day on, "YYYYMMDD"; see ReadProtocols.
  std::vector<ZELLib3::Analyzer::Protocol> Read(const std::string& sFrom) const;

  /// Deletes the set of a day, "YYYYMMDD", if there is one. An analyzer that is
  /// just writing into it begins the set anew with its next evaluation. A
  /// folder that holds anything else is left as it is: raises
  /// std::runtime_error that names what is in the way.
  void Delete(const std::string& sDay) const;
  /// The sets up to and including a day. One that cannot be deleted does not
  /// keep the others; the first error is raised at the end.
  void DeleteUntil(const std::string& sDay) const;

 private:
  /// The days that have a folder, newest first.
  std::vector<std::string> Days() const;

  std::string m_sPath;
};

}  // namespace ZELWbr3::Instances
