#pragma once

#include "zelwbr3/ZELLib3/Activity.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <array>
#include <memory>
#include <optional>

namespace ZELWbr3::SQLite {

/// What this connection has done since it was opened. Others keep their own
/// counters, which cannot be read from here. Counted are statements by their kind,
/// rows delivered, statements that scanned a table, sorts, and pages through
/// the page cache; and the processes that hold a lock on the file now.
class SQLiteActivity : public ZELLib3::Activity {
 public:
  explicit SQLiteActivity(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  double SQLCounter(ZELLib3::Long iIndex) const override { return At(Counters().SQL, iIndex); }
  double IOCounter(ZELLib3::Long iIndex) const override { return At(Counters().IO, iIndex); }
  double LockCounter(ZELLib3::Long iIndex) const override { return At(Counters().Lock, iIndex); }
  double LogCounter(ZELLib3::Long iIndex) const override { return At(Counters().Log, iIndex); }
  bool Refresh() override;

 private:
  struct Values {
    std::array<double, 25> SQL;
    std::array<double, 4> IO;
    std::array<double, 9> Lock;
    std::array<double, 4> Log;
  };

  template <std::size_t N>
  static double At(const std::array<double, N>& oCounters, std::int32_t iIndex) {
    return iIndex >= 0 && static_cast<std::size_t>(iIndex) < N ? oCounters[static_cast<std::size_t>(iIndex)] : -1;
  }
  const Values& Counters() const;
  Values Read() const;

  std::shared_ptr<InstanceFile> m_oFile;
  mutable std::optional<Values> m_oValues;
};

}  // namespace ZELWbr3::SQLite
