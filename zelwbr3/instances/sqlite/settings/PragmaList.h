#pragma once

#include "zelwbr3/instances/common/settings/ParameterList.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"

#include <memory>

namespace ZELWbr3::SQLite {

/// The settings: pragmas that have a value. None while the database is offline.
///
/// Only what the database file keeps is observed: a connection's own settings last
/// as long as the connection.
class PragmaList : public Instances::ParameterList {
 public:
  PragmaList(std::shared_ptr<InstanceFile> oFile, std::shared_ptr<Instances::ObservationStore> oStore)
      : ParameterList(std::move(oStore), oFile->Options().ReadingLifetime), m_oFile(std::move(oFile)) {}

 protected:
  std::optional<std::vector<Entry>> ReadEntries() override;
  std::string Key() override;
  ZELLib3::Error LastError() override { return m_oFile->LastError(); }
  void LastError(const ZELLib3::Error& oError) override { m_oFile->LastError(oError); }

 private:
  std::shared_ptr<InstanceFile> m_oFile;
};

}  // namespace ZELWbr3::SQLite
