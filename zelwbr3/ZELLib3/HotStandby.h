#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

#include <vector>

namespace ZELLib3 {

/// The hot-standby configuration.
class ZELWBR3_EXPORT HotStandby {
 public:
  struct Node {
    std::string Name;  ///< "UNKNOWN", in upper or lower case: the node is not known
    std::string StateText;
    Long Role;         ///< 1 standby, 2 master
    bool Own = false;  ///< this instance runs on the node
  };

  virtual ~HotStandby() = default;

  virtual bool Enabled() const { return false; }
  /// Name of the virtual server that clients connect to.
  virtual std::string OfficialNode() const { return {}; }
  virtual std::vector<Node> Nodes() const { return {}; }
};

}  // namespace ZELLib3
