#pragma once

#include "zelwbr3/ZELLib3/DataArea.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <memory>

namespace ZELWbr3::SQLite {

/// The database file as a data area with one volume. Without figures (the file
/// is closed, reserved or locked) there is only the size that the file system
/// tells.
class SQLiteDataArea : public ZELLib3::DataArea {
 public:
  explicit SQLiteDataArea(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  std::shared_ptr<ZELLib3::Volumes> Volumes() const override;
  /// Usable and permanently usable is what the file has; nothing is reserved.
  ZELLib3::Long Size(ZELLib3::Long iIndex) const override;
  bool Refresh() override { return m_oFile->Refresh(); }

 private:
  std::shared_ptr<InstanceFile> m_oFile;
};

}  // namespace ZELWbr3::SQLite
