#pragma once

#include "zelwbr3/instances/common/Descriptor.h"
#include "zelwbr3/instances/common/analyzer/AnalyzerRecord.h"

#include <optional>
#include <string>

namespace ZELWbr3::Instances {

/// The lock file of a running analyzer.
///
/// The process holds a lock of the operating system on it as long as it lives,
/// and the system itself tells who holds it: so a process that was killed is
/// never taken for a running one, nor another one that got its number. What
/// the file says about the run can be read by others, also afterwards.
///
/// Such a lock belongs to the process, ends when the process closes any
/// descriptor of the file and is not handed down by fork: the process that
/// holds it must not look at it with the functions for others.
class LockFile {
 public:
  /// Takes the lock; makes the file when there is none. Raises
  /// std::runtime_error, which names the process and the instance, when there
  /// is an analyzer already, or when a link or a pipe stands in the file's place,
  /// and std::system_error when the file cannot be made.
  LockFile(const std::string& sPath, const std::string& sInstance);

  /// Raises std::runtime_error when the file is no longer there, or another one
  /// is: then the analyzer cannot be found, and a second one may run.
  void CheckInPlace() const;

  /// Raises std::system_error. Once it has been called it needs no room on the
  /// disk any more.
  void Write(const AnalyzerRecord& oRecord);

  /// The process that holds the lock; no value when there is none, 0 or less
  /// when it runs on another machine or in another container.
  static std::optional<int> Holder(const std::string& sPath);
  /// What the file says; no value when there is no file, or no record in it.
  static std::optional<AnalyzerRecord> Read(const std::string& sPath);

 private:
  std::string m_sPath;
  Descriptor m_oFile;
};

}  // namespace ZELWbr3::Instances
