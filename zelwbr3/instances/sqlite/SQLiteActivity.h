#pragma once

#include "zelwbr3/instances/common/CountedActivity.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <memory>

namespace ZELWbr3::SQLite {

/// What this connection has done since it was opened. Others keep their own
/// counters, which cannot be read from here. Counted are statements by their kind,
/// rows delivered, statements that scanned a table, sorts, and pages through
/// the page cache; and the processes that hold a lock on the file now.
class SQLiteActivity : public Instances::CountedActivity {
 public:
  explicit SQLiteActivity(std::shared_ptr<InstanceFile> oFile) : m_oFile(std::move(oFile)) {}

  bool Refresh() override;

 private:
  Values Read() const override;

  std::shared_ptr<InstanceFile> m_oFile;
};

}  // namespace ZELWbr3::SQLite
