#pragma once

#include "zelwbr3/ZELLib3/Parameter.h"
#include "zelwbr3/instances/common/settings/ParameterList.h"

namespace ZELWbr3::Instances {

/// A parameter of the list. The changes of its value that were observed are
/// read when they are asked for, newest first.
class ListedParameter : public ZELLib3::Parameter {
 public:
  ListedParameter(std::shared_ptr<ParameterList> oList, ParameterList::Entry oEntry)
      : m_oList(std::move(oList)), m_oEntry(std::move(oEntry)) {}

  std::string Name() const override { return m_oEntry.Name; }
  std::string Value() const override { return m_oEntry.Value; }
  std::string Description() const override { return m_oEntry.Description; }
  std::string Explanation() const override { return m_oEntry.Explanation; }
  ZELLib3::Long Group() const override { return static_cast<int>(m_oEntry.InGroup); }
  std::string NewValue() const override { return m_oEntry.NewValue; }
  std::string NewValueOnline() const override { return m_oEntry.NewValueOnline; }
  ZELLib3::Long HistoryCount() const override { return Changes().size(); }
  ZELLib3::Date HistoryDate(ZELLib3::Long k) const override { return Change(k).Seen; }
  std::string HistoryValue(ZELLib3::Long k) const override { return Change(k).Value; }
  std::string HistoryNewValue(ZELLib3::Long k) const override { return Change(k).NewValue; }
  bool Exists() const override { return true; }

 private:
  const std::vector<ObservationStore::Change>& Changes() const;
  const ObservationStore::Change& Change(std::int32_t k) const;

  std::shared_ptr<ParameterList> m_oList;
  ParameterList::Entry m_oEntry;
  mutable std::optional<std::vector<ObservationStore::Change>> m_oChanges;
};

}  // namespace ZELWbr3::Instances
