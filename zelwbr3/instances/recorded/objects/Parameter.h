#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class Parameter final : public Of<ZELLib3::Parameter> {
 public:
  using Of::Of;

  std::string Name() const override { return Get<std::string>("Name"); }
  std::string Value() const override { return Get<std::string>("Value"); }
  std::string Description() const override { return Get<std::string>("Description"); }
  std::string Explanation() const override { return Get<std::string>("Explanation"); }
  Long Group() const override { return Get<Long>("Group"); }
  std::string NewValue() const override { return Get<std::string>("NewValue"); }
  std::string NewValueOnline() const override { return Get<std::string>("NewValueOnline"); }
  bool Exists() const override { return Get<bool>("Exists"); }

  Long HistoryCount() const override { return Get<Long>("HistoryCount", List("History").size()); }
  ZELWbr3::Date HistoryDate(Long lEntry) const override { return Change("HistoryDate", lEntry).Date; }
  std::string HistoryValue(Long lEntry) const override { return Change("HistoryValue", lEntry).Value; }
  std::string HistoryNewValue(Long lEntry) const override { return Change("HistoryNewValue", lEntry).NewValue; }

 private:
  ParameterChange Change(const char* sName, Long lEntry) const {
    Check(sName);
    const Json& oChanges = List("History");
    const Json* const pCount = Find(*Here().pValue, "HistoryCount");
    if (lEntry < 1 || static_cast<std::size_t>(lEntry) > oChanges.size() ||
        (pCount != nullptr && lEntry > pCount->get<std::int64_t>())) {
      throw std::out_of_range("The parameter's history has no entry " + std::to_string(lEntry));
    }
    return FromJson<ParameterChange>(oChanges[lEntry - 1]);
  }
};

}  // namespace ZELWbr3::Recorded
