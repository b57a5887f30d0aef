#pragma once

#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/instances/recorded/objects/Call.h"
#include "zelwbr3/shell/Browser.h"

#include <fstream>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// Writes what happens to a control as JSON, one object per line, in the order
/// in which it happens. Nothing is written before a file is open.
class EventLog {
 public:
  /// Creates or empties the file; does nothing if the name is empty. Throws
  /// std::runtime_error, which names the file, if it cannot be written.
  void Open(const std::string& sFile);

  /// Connects to the events of the control and its platform.
  void Watch(Browser& oBrowser, Headless::HeadlessPlatform& oPlatform);
  /// An operation was called on the instance.
  void Write(const Recorded::Call& oCall);
  /// A step has ended: writes the command list if it has changed.
  void EndStep(const Headless::HeadlessCommandlist& oCommandlist);
  /// Throws like Open if something could not be written.
  void Close();

 private:
  void WriteLine(const std::string& sLine);

  std::string m_sFile;
  std::ofstream m_oFile;
  /// The command list as last written.
  std::vector<ZELCmd3::CommandItem> m_items;
  std::vector<ScopedConnection> m_connections;
};

}  // namespace ZELWbr3::Host
