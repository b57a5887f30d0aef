#pragma once

#include "zelwbr3/ZELLib3/Parameter.h"
#include "zelwbr3/instances/common/settings/ObservationStore.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace ZELWbr3::Instances {

/// The parameters of an instance as last read, and what is remembered of their
/// changes. The objects that an instance hands out share it.
class ParameterList : public std::enable_shared_from_this<ParameterList> {
 public:
  enum class Group { General, Extended, Support, Info };
  struct Entry {
    std::string Name;
    std::string Value;
    std::string Description;
    std::string Explanation = {};
    Group InGroup = Group::General;
    std::string NewValue = {};        ///< as Parameter::NewValue
    std::string NewValueOnline = {};  ///< as Parameter::NewValueOnline
    /// The instance keeps the value, so that its changes are worth remembering.
    bool IsObserved = false;
    std::string Source = {};  ///< where the value comes from; empty = not known
  };

  /// Without a store nothing is remembered. What is read serves for dLifetime.
  ParameterList(std::shared_ptr<ObservationStore> oStore, std::chrono::milliseconds dLifetime)
      : m_oStore(std::move(oStore)), m_dLifetime(dLifetime) {}
  virtual ~ParameterList() = default;

  /// Reads the values and notices changes. False, and the instance's LastError
  /// says why, when the values cannot be read. It makes no difference whether the
  /// store can be used.
  bool Load();
  /// As last loaded; loaded now when that is longer ago than a reading serves.
  /// Null when it cannot be.
  std::shared_ptr<const std::vector<Entry>> Entries();
  /// Never null.
  std::shared_ptr<ZELLib3::Parameter> Item(const std::string& sName);

  /// All changes, newest first; empty when the store cannot be used.
  std::vector<ObservationStore::Change> Changes();
  /// Notices changes and reads them. False the first time that the store cannot
  /// be used, and the instance's LastError says why; after that there are none.
  bool OpenChanges(std::vector<ObservationStore::Change>& oChanges);
  /// Where the present value of a parameter comes from.
  std::string SourceOf(const std::string& sName);

 protected:
  /// No value, and the instance's LastError says why, when they cannot be read.
  virtual std::optional<std::vector<Entry>> ReadEntries() = 0;
  /// What the instance is remembered under.
  virtual std::string Key() = 0;
  virtual ZELLib3::Error LastError() = 0;
  virtual void LastError(const ZELLib3::Error& oError) = 0;

 private:
  bool ReadValues();
  void Observe();

  std::shared_ptr<ObservationStore> m_oStore;
  std::chrono::milliseconds m_dLifetime;
  std::shared_ptr<const std::vector<Entry>> m_oEntries;
  std::chrono::steady_clock::time_point m_dEntriesEnd;
  bool m_bReported = false;  ///< that the store cannot be used
};

}  // namespace ZELWbr3::Instances
