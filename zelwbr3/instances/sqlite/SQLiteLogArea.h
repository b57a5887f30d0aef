#pragma once

#include "zelwbr3/ZELLib3/LogArea.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <memory>

namespace ZELWbr3::SQLite {

/// The write-ahead log as a log area with one volume. A file with a rollback
/// journal has no log: the journal holds old contents, for one transaction.
class SQLiteLogArea : public ZELLib3::LogArea {
 public:
  explicit SQLiteLogArea(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  std::shared_ptr<ZELLib3::Volumes> Volumes() const override;
  std::shared_ptr<ZELLib3::LogAreaSettings> Settings() const override;
  /// Frames: 0 what the log has room for, at least what a writer lets come
  /// together before it runs a checkpoint; 1 that number; 2 free; 3 used; 4 not
  /// yet copied into the database file. 5 is 0, since a log is never backed up.
  ZELLib3::Long Size(ZELLib3::Long iIndex) const override;
  bool Refresh() override { return m_oFile->Refresh(); }

 private:
  std::shared_ptr<InstanceFile> m_oFile;
};

}  // namespace ZELWbr3::SQLite
