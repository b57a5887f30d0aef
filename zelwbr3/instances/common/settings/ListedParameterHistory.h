#pragma once

#include "zelwbr3/ZELLib3/ParameterHistory.h"
#include "zelwbr3/instances/common/settings/ParameterList.h"

namespace ZELWbr3::Instances {

/// The changes of all parameters that were observed, newest first, as of Open.
class ListedParameterHistory : public ZELLib3::ParameterHistory {
 public:
  explicit ListedParameterHistory(std::shared_ptr<ParameterList> oList) : m_oList(std::move(oList)) {}

  /// False once when what is remembered cannot be read; then as without any.
  bool Open() override {
    m_iCurrent = 0;
    return m_oList->OpenChanges(m_oChanges);
  }
  bool HasEntry() const override { return m_iCurrent < m_oChanges.size(); }
  bool MoveNext() override {
    if (HasEntry()) ++m_iCurrent;
    return HasEntry();
  }

  ZELLib3::Date Date() const override { return Current().Seen; }
  std::string Parameter() const override { return Current().Name; }
  std::string Value() const override { return Current().Value; }
  std::string NewValue() const override { return Current().NewValue; }
  /// Where the present value comes from; who changed it, and why, nobody says.
  std::string Text() const override { return HasEntry() ? m_oList->SourceOf(Current().Name) : std::string(); }

 private:
  ObservationStore::Change Current() const { return HasEntry() ? m_oChanges[m_iCurrent] : ObservationStore::Change{}; }

  std::shared_ptr<ParameterList> m_oList;
  std::vector<ObservationStore::Change> m_oChanges;
  std::size_t m_iCurrent = 0;
};

}  // namespace ZELWbr3::Instances
