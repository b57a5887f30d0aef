#pragma once

#include "zelwbr3/ZELLib3/LogSettings.h"

#include <string>
#include <utility>

namespace ZELWbr3::SQLite {

/// How a journal mode writes the log. A rollback journal holds one transaction
/// and is given up at its end, so it overwrites itself; a journal that is kept
/// in memory, or none, writes no log; the write-ahead log has sizes to show.
class SQLiteLogSettings : public ZELLib3::LogSettings {
 public:
  /// sJournalMode is as SQLite names it; empty = unknown, neither is active.
  explicit SQLiteLogSettings(std::string sJournalMode) : m_sJournalMode(std::move(sJournalMode)) {}

  ZELLib3::Long AutoOverwrite() const override {
    return Code(m_sJournalMode == "delete" || m_sJournalMode == "truncate" || m_sJournalMode == "persist");
  }
  ZELLib3::Long WriteOff() const override { return Code(m_sJournalMode == "off" || m_sJournalMode == "memory"); }

 private:
  ZELLib3::Long Code(bool bActive) const { return m_sJournalMode.empty() ? 0 : bActive ? 2 : 1; }

  std::string m_sJournalMode;
};

}  // namespace ZELWbr3::SQLite
