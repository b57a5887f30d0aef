#pragma once

#include "zelwbr3/ZELLib3/Activity.h"

#include <array>
#include <cstddef>
#include <optional>

namespace ZELWbr3::Instances {

/// Activity whose counters are all read at once, at the first use or by Refresh.
class CountedActivity : public ZELLib3::Activity {
 public:
  double SQLCounter(ZELLib3::Long iIndex) const override { return At(Counters().SQL, iIndex); }
  double IOCounter(ZELLib3::Long iIndex) const override { return At(Counters().IO, iIndex); }
  double LockCounter(ZELLib3::Long iIndex) const override { return At(Counters().Lock, iIndex); }
  double LogCounter(ZELLib3::Long iIndex) const override { return At(Counters().Log, iIndex); }

 protected:
  /// -1 = not available.
  struct Values {
    std::array<double, 25> SQL;
    std::array<double, 4> IO;
    std::array<double, 9> Lock;
    std::array<double, 4> Log;

    Values() {
      SQL.fill(-1);
      IO.fill(-1);
      Lock.fill(-1);
      Log.fill(-1);
    }
  };

  /// Raises ZELLib3::InstanceError when they cannot be read.
  virtual Values Read() const = 0;
  const Values& Counters() const { return m_oValues ? *m_oValues : m_oValues.emplace(Read()); }
  /// The next use reads them anew.
  void Forget() { m_oValues.reset(); }

 private:
  template <std::size_t N>
  static double At(const std::array<double, N>& oCounters, std::int32_t iIndex) {
    return iIndex >= 0 && static_cast<std::size_t>(iIndex) < N ? oCounters[static_cast<std::size_t>(iIndex)] : -1;
  }

  mutable std::optional<Values> m_oValues;
};

}  // namespace ZELWbr3::Instances
