#pragma once

#include "zelwbr3/ZELLib3/LogAreaSettings.h"

#include <string>
#include <utility>

namespace ZELWbr3::SQLite {

/// What a journal mode says about the log. There is one log, and neither it nor
/// a journal is kept for a backup: both are overwritten. Only the write-ahead
/// log holds changes; a journal holds what they have replaced.
class SQLiteLogAreaSettings : public ZELLib3::LogAreaSettings {
 public:
  /// sJournalMode is as SQLite names it; empty = unknown.
  explicit SQLiteLogAreaSettings(std::string sJournalMode) : m_sJournalMode(std::move(sJournalMode)) {}

  ZELLib3::Long LogMode() const override { return IsOnDisk() ? 1 : 0; }
  ZELLib3::Long Overwrite() const override { return IsOnDisk() ? 2 : 0; }
  ZELLib3::Long RedoLog() const override { return m_sJournalMode.empty() ? 0 : m_sJournalMode == "wal" ? 1 : 2; }

 private:
  bool IsOnDisk() const { return !m_sJournalMode.empty() && m_sJournalMode != "off" && m_sJournalMode != "memory"; }

  std::string m_sJournalMode;
};

}  // namespace ZELWbr3::SQLite
