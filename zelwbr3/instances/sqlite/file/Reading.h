#pragma once

#include "zelwbr3/instances/sqlite/file/OpenFiles.h"
#include "zelwbr3/instances/sqlite/file/Usage.h"

#include <optional>

namespace ZELWbr3::SQLite {

/// What a look at the database file finds.
class Reading {
 public:
  enum class Condition {
    Offline,
    Admin,
    Online,         ///< figures can be read
    Locked,         ///< online, but another connection locks all others out
    NeedsRecovery,  ///< an interrupted transaction has to be rolled back first
    NotConnected,   ///< the file has vanished or cannot be opened
  };

  explicit Reading(Condition eFound) : m_eFound(eFound) {}
  explicit Reading(const Usage& oUsage) : m_eFound(Condition::Online), m_oFigures(oUsage) {}

  Condition Found() const { return m_eFound; }
  /// Null unless Online was found.
  const Usage* Figures() const { return m_oFigures ? &*m_oFigures : nullptr; }
  /// Processes that hold the file open, 0 without figures. Counted on first
  /// use: that takes as long as there are processes.
  int Sessions() const {
    if (!m_oSessions) m_oSessions = m_oFigures ? OpenFiles::Processes(m_oFigures->File) : 0;
    return *m_oSessions;
  }

 private:
  Condition m_eFound;
  std::optional<Usage> m_oFigures;
  mutable std::optional<int> m_oSessions;
};

}  // namespace ZELWbr3::SQLite
