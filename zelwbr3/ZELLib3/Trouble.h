#pragma once

#include <string>

namespace ZELLib3 {

/// Something that an instance notices about itself beyond its figures and that
/// somebody should look at.
struct Trouble {
  enum class Kind {
    LockWait,         ///< sessions wait for each other
    LongTransaction,  ///< one has been open for long
    Archive,          ///< the log is not saved, or something keeps too much of it
  };

  Kind What;
  std::string Text;  ///< a sentence without its period
  bool IsCritical;   ///< it has to be mended now
};

}  // namespace ZELLib3
