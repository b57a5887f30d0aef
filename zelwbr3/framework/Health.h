#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/Samples.h"

#include <string>
#include <vector>

namespace ZELLib3 {
class Database;
}

namespace ZELWbr3 {

/// What somebody should look at in an instance, judged by the limits that the
/// instance itself has: the same in a window, a report and a check from cron.
struct ZELWBR3_EXPORT Health {
  enum class Level { OK, Warning, Critical, Unknown };
  /// As monitoring plugins write it: "WARNING".
  static const char* LevelName(Level eLevel);

  struct Finding {
    Level Severity = Level::Warning;
    std::string Name;  ///< which kind of finding, such as "data-area"
    std::string Text;  ///< a sentence without its period, with figure and limit
    std::string Page;  ///< the page that shows it, by the name of its page file
    int Tab = 0;       ///< the tab there, 0-based

    /// The topic of the programs' help file that explains it.
    std::string HelpID() const { return "finding-" + Name; }
  };
  /// A fill level and the percentages from which it is a warning and critical.
  struct Bar {
    std::string Name;
    int Percent = 0;
    int Warning = 0;
    int Critical = 0;
  };

  std::vector<Finding> Findings;  ///< worst first
  std::vector<Bar> Bars;          ///< none while there are no figures

  /// Examines an instance. Raises what its state raises; any other part that
  /// cannot be read is a finding of the level Unknown.
  /// With what was read before of its state, an area that fills up also says when it
  /// will be full.
  static Health Of(ZELLib3::Database& oDatabase, const Samples::Group* oBefore = nullptr);

  /// The worst one; a part that cannot be read is worse than a warning.
  Level Worst() const;
};

}  // namespace ZELWbr3
