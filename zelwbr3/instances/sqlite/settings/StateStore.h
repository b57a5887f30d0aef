#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/instances/common/settings/ObservationStore.h"
#include "zelwbr3/instances/sqlite/file/FileId.h"
#include "zelwbr3/instances/sqlite/file/Handle.h"

#include <string>
#include <vector>

namespace ZELWbr3::SQLite {

/// The store as one small database in the user's state folder, opened for each
/// call and closed again. Failures raise ZELLib3::InstanceError that names it.
class ZELWBR3_EXPORT StateStore : public Instances::ObservationStore {
 public:
  /// Nothing is opened or made yet. sFolder may be missing; empty = the user's
  /// state folder.
  explicit StateStore(std::string sFolder) : m_sFolder(std::move(sFolder)) {}

  /// Which file it is, also after it has been renamed or has grown: by inode
  /// and time of birth. A file system that keeps no such time makes it device,
  /// inode and path.
  static std::string KeyOf(const std::string& sPath);

  void Observe(const std::string& sKey, const Settings& oSettings, const ZELLib3::Date& dSeen) override;
  std::vector<Change> Changes(const std::string& sKey) const override;
  void Add(const std::string& sKey, const Copy& oCopy) override;
  std::vector<Copy> Copies(const std::string& sKey) const override;
  void Remember(const std::string& sKey, const Settings& oFacts) override;
  Settings Facts(const std::string& sKey) const override;

 private:
  std::string Path() const;
  Handle OpenToWrite() const;
  /// Null when nothing has been remembered yet.
  Handle OpenToRead() const;

  std::string m_sFolder;
};

}  // namespace ZELWbr3::SQLite
