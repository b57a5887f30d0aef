#pragma once

#include "zelwbr3/ZELLib3/Caches.h"
#include "zelwbr3/instances/postgres/ServerParameters.h"

#include <memory>
#include <optional>

namespace ZELWbr3::Postgres {

/// The caches of a server: shared_buffers is the data cache and the whole of the
/// I/O buffer cache. The catalog cache is that of this connection, from 15 on and
/// with the right; each session has its own. There is no other, and no memory for
/// a converter.
class PostgresCaches : public ZELLib3::Caches {
 public:
  PostgresCaches(std::shared_ptr<Server> oServer, std::shared_ptr<ServerParameters> oParameters)
      : m_oServer(std::move(oServer)), m_oParameters(std::move(oParameters)) {}

  double IOBufferCacheSize() const override { return DataCacheSize(); }
  double CatalogCacheSize() const override;
  double DataCacheSize() const override;
  double ConverterSize() const override { return 0; }
  /// Needs the extension pg_buffercache; before 16 not for more than 1 GB, since
  /// it looks at each page.
  double DataCacheUsedSize() const override;
  /// Of all databases, since their counters were reset.
  double DataCacheAccesses(ZELLib3::Long iIndex) const override;

  std::shared_ptr<ZELLib3::Parameter> IOBufferCacheParam() const override { return DataCacheParam(); }
  std::shared_ptr<ZELLib3::Parameter> DataCacheParam() const override { return m_oParameters->Item("shared_buffers"); }

  bool Refresh() override;

 private:
  struct Values {
    double Size = -1;      ///< KB
    double UsedSize = -1;  ///< KB
    double Catalog = 0;    ///< KB
    double Hits = -1;
    double Reads = -1;
  };
  const Values& Read() const;

  std::shared_ptr<Server> m_oServer;
  std::shared_ptr<ServerParameters> m_oParameters;
  mutable std::optional<Values> m_oValues;
};

}  // namespace ZELWbr3::Postgres
