#pragma once

#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/instances/recorded/objects/Call.h"
#include "zelwbr3/shell/Browser.h"

#include <fstream>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// Writes what happens to a control as one JSON object a line, in order of
/// happening. Nothing is written before a file is open.
class EventLog {
 public:
  /// Empties the file; without a name none is opened. Throws std::runtime_error
  /// that names the file when it cannot be written.
  void Open(const std::string& sFile);

  /// Connects to all that reports something by itself.
  void Watch(Browser& oBrowser, Headless::HeadlessPlatform& oPlatform);
  /// An operation was called on the instance.
  void Write(const Recorded::Call& oCall);
  /// A step has ended: the command list is written unless it is as it was
  /// before.
  void EndStep(const Headless::HeadlessCommandlist& oCommandlist);
  /// Throws as Open when something could not be written.
  void Close();

 private:
  void WriteLine(const std::string& sLine);

  std::string m_sFile;
  std::ofstream m_oFile;
  /// The command list as it was written last.
  std::vector<ZELCmd3::CommandItem> m_items;
  std::vector<Connection> m_connections;
};

}  // namespace ZELWbr3::Host
