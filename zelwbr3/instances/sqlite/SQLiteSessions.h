#pragma once

#include "zelwbr3/instances/common/SessionList.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

namespace ZELWbr3::SQLite {

/// The processes that hold the file open, as of the last Refresh, in the order of
/// their numbers. Whether the instance is online makes no difference. Each has its
/// number in the list, then process number, program, user, since when it runs, and
/// what it has locked.
class SQLiteSessions : public Instances::SessionList {
 public:
  explicit SQLiteSessions(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  /// Fails when the file is not there.
  bool Refresh() override;

 private:
  std::vector<Instances::ListedSession::Entry> Read() const override;

  std::shared_ptr<InstanceFile> m_oFile;
};

}  // namespace ZELWbr3::SQLite
