#pragma once

#include "zelwbr3/instances/common/Descriptor.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::Instances {

/// One CSV file of a protocol set, opened to add the lines of an evaluation.
class ProtocolFile {
 public:
  static constexpr std::string_view Ending = ".csv";

  /// Makes the file when it is missing. Takes away the beginning of a line that
  /// a crash of the system has left at its end. sFolder is for error texts;
  /// oLines must outlive the object.
  ProtocolFile(const Descriptor& oFolder, const std::string& sFolder, const ProtocolLines& oLines);

  /// The number of the last evaluation, 0 when there is none.
  int LastNumber() const;
  /// All lines or none; raises std::system_error.
  void Append(int lNumber, const std::string& sTimeStamp);
  /// Takes the added lines away again.
  void Undo();

  /// The first and the last evaluation in the file "state" of a set.
  struct Extent {
    std::string First;  ///< time stamp
    std::string Last;
    int Number = 0;  ///< of the last one
  };
  /// No value when the file is missing or not one of an analyzer.
  static std::optional<Extent> ReadExtent(const std::string& sPath);

 private:
  void Repair();

  const ProtocolLines& m_oLines;
  std::string m_sPath;
  std::string m_sHeader;
  Descriptor m_oFile;
  off_t m_lSize = 0;  ///< before lines are added
};

}  // namespace ZELWbr3::Instances
