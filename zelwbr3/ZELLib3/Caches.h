#pragma once

#include "zelwbr3/ZELLib3/Parameter.h"
#include "zelwbr3/base/Export.h"

#include <memory>

namespace ZELLib3 {

/// The instance's caches. Sizes are KB; a negative size means that the cache
/// does not exist. Accesses are counters by index: 0 accesses, 1 successful,
/// 2 unsuccessful; -1 = not available.
class ZELWBR3_EXPORT Caches {
 public:
  virtual ~Caches() = default;

  virtual double IOBufferCacheSize() const { return -1; }
  virtual double RollbackCacheSize() const { return -1; }
  virtual double SequenceCacheSize() const { return -1; }
  virtual double CatalogCacheSize() const { return -1; }
  virtual double AWEMemorySize() const { return -1; }
  virtual bool AWEEnabled() const { return false; }
  virtual double DataCacheSize() const { return -1; }
  virtual double ConverterSize() const { return -1; }

  /// The parameters that set the caches; never null.
  virtual std::shared_ptr<Parameter> IOBufferCacheParam() const { return std::make_shared<Parameter>(); }
  virtual std::shared_ptr<Parameter> RollbackCacheParam() const { return std::make_shared<Parameter>(); }
  virtual std::shared_ptr<Parameter> CatalogCacheParam() const { return std::make_shared<Parameter>(); }
  virtual std::shared_ptr<Parameter> AWEMemoryParam() const { return std::make_shared<Parameter>(); }
  virtual std::shared_ptr<Parameter> AWEParam() const { return std::make_shared<Parameter>(); }
  virtual std::shared_ptr<Parameter> DataCacheParam() const { return std::make_shared<Parameter>(); }

  virtual double AWEMappedSize() const { return -1; }
  virtual double AWEUnmappedSize() const { return -1; }

  virtual double DataCacheAccesses(Long) const { return -1; }
  virtual double SQLDataAccesses(Long) const { return -1; }
  virtual double HistoryUndoAccesses(Long) const { return -1; }
  virtual double CatalogCacheAccesses(Long) const { return -1; }
  virtual double SequenceCacheAccesses(Long) const { return -1; }
  virtual double OMSDataAccesses(Long) const { return -1; }
  virtual double OMSHistoryAccesses(Long) const { return -1; }
  virtual double RollbackCacheAccesses(Long) const { return -1; }
  virtual double ConverterCacheAccesses(Long) const { return -1; }

  /// Shares of the data cache.
  virtual double DataCacheUsedSize() const { return -1; }
  virtual double SQLDataSize() const { return -1; }
  virtual double OMSDataSize() const { return -1; }
  virtual double HistoryUndoSize() const { return -1; }
  virtual double OMSHistorySize() const { return -1; }

  virtual bool Refresh() { return true; }
};

}  // namespace ZELLib3
