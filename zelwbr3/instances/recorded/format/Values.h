#pragma once

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/recorded/format/Schema.h"

#include <algorithm>

namespace ZELWbr3::Recorded {

/// The C++ value of a value that has been checked.
template <class T>
T FromJson(const Json& oJson) {
  if constexpr (std::is_same_v<T, Long> || std::is_same_v<T, Integer>) {
    return oJson.get<std::int64_t>();
  } else if constexpr (std::is_same_v<T, ZELWbr3::Date>) {
    return Calendar::ParseISO(oJson.get_ref<const std::string&>()).value();
  } else if constexpr (std::is_same_v<T, ZELLib3::StateInfo::Thresholds>) {
    T oList{};
    std::transform(oJson.begin(), oJson.end(), oList.begin(), FromJson<Long>);
    return oList;
  } else if constexpr (IsList<T>) {
    T oList;
    oList.reserve(oJson.size());
    for (const Json& oEntry : oJson) oList.push_back(FromJson<typename T::value_type>(oEntry));
    return oList;
  } else if constexpr (IsOptional<T>) {
    if (oJson.is_null()) return std::nullopt;
    return FromJson<typename T::value_type>(oJson);
  } else if constexpr (std::is_class_v<T> && !std::is_same_v<T, std::string>) {
    T oEntry{};
    for (const Member& oMember : InterfaceOf<T>().oMembers) {
      if (const auto it = oJson.find(oMember.sName); it != oJson.end()) oMember.fnAssign(&oEntry, *it);
    }
    return oEntry;
  } else {
    return oJson.get<T>();
  }
}

}  // namespace ZELWbr3::Recorded
