#pragma once

#include "zelwbr3/ZELLib3/Caches.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"
#include "zelwbr3/instances/sqlite/settings/PragmaList.h"

namespace ZELWbr3::SQLite {

/// The caches of this connection: its page cache is the data cache and the
/// whole of the I/O buffer cache, the memory of the schema is the catalog
/// cache. There is no other, and no memory for a converter.
class SQLiteCaches : public ZELLib3::Caches {
 public:
  SQLiteCaches(std::shared_ptr<InstanceFile> oFile, std::shared_ptr<PragmaList> oParameters)
      : m_oFile(std::move(oFile)), m_oParameters(std::move(oParameters)) {}

  double IOBufferCacheSize() const override { return DataCacheSize(); }
  double CatalogCacheSize() const override;
  /// The limit; what is used grows up to it.
  double DataCacheSize() const override;
  double ConverterSize() const override { return 0; }
  double DataCacheUsedSize() const override;
  double DataCacheAccesses(ZELLib3::Long iIndex) const override;

  std::shared_ptr<ZELLib3::Parameter> IOBufferCacheParam() const override { return DataCacheParam(); }
  std::shared_ptr<ZELLib3::Parameter> DataCacheParam() const override;

  bool Refresh() override;

 private:
  const Usage* Figures() const;

  std::shared_ptr<InstanceFile> m_oFile;
  std::shared_ptr<PragmaList> m_oParameters;
  mutable std::shared_ptr<const Reading> m_oReading;
};

}  // namespace ZELWbr3::SQLite
