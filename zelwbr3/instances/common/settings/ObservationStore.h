#pragma once

#include "zelwbr3/ZELLib3/HistoryItem.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// What is remembered about instances, apart from them: the settings that were
/// observed, their changes, copies that the host has registered, and facts that
/// are needed when an instance cannot be asked.
///
/// An instance chooses its keys so that they stand for the same one for good.
/// Several processes may use a store at a time. Failures raise
/// ZELLib3::InstanceError that names it.
class ObservationStore {
 public:
  using Settings = std::map<std::string, std::string>;

  struct Change {
    ZELLib3::Date Seen;  ///< when it was noticed; the change itself is older
    std::string Name;
    std::string Value;
    std::string NewValue;
  };

  /// A copy of the instance's data that the host has made.
  struct Copy {
    std::string File;
    ZELLib3::Date Made;
    std::string Label;
    std::int64_t Bytes = -1;  ///< size at the time; -1 = unknown
  };

  virtual ~ObservationStore() = default;

  /// Compares with what was observed before and remembers the differences as
  /// changes seen at dSeen. Writes only when there are any.
  virtual void Observe(const std::string& sKey, const Settings& oSettings, const ZELLib3::Date& dSeen) = 0;
  /// Newest first.
  virtual std::vector<Change> Changes(const std::string& sKey) const = 0;

  virtual void Add(const std::string& sKey, const Copy& oCopy) = 0;
  /// Newest first.
  virtual std::vector<Copy> Copies(const std::string& sKey) const = 0;

  /// Remembers the values without a change of them: what has no history. Other
  /// names of the key stay. Writes only when there are differences.
  virtual void Remember(const std::string& sKey, const Settings& oFacts) = 0;
  /// As last remembered or observed.
  virtual Settings Facts(const std::string& sKey) const = 0;
};

}  // namespace ZELWbr3::Instances
