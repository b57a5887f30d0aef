#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"
#include "zelwbr3/instances/recorded/objects/Parameter.h"

namespace ZELWbr3::Recorded {

class Caches final : public Of<ZELLib3::Caches> {
 public:
  using Of::Of;

  double IOBufferCacheSize() const override { return Get<double>("IOBufferCacheSize"); }
  double RollbackCacheSize() const override { return Get<double>("RollbackCacheSize"); }
  double SequenceCacheSize() const override { return Get<double>("SequenceCacheSize"); }
  double CatalogCacheSize() const override { return Get<double>("CatalogCacheSize"); }
  double AWEMemorySize() const override { return Get<double>("AWEMemorySize"); }
  bool AWEEnabled() const override { return Get<bool>("AWEEnabled"); }
  double DataCacheSize() const override { return Get<double>("DataCacheSize"); }
  double ConverterSize() const override { return Get<double>("ConverterSize"); }
  std::shared_ptr<ZELLib3::Parameter> IOBufferCacheParam() const override {
    return Sub<Recorded::Parameter>("IOBufferCacheParam");
  }
  std::shared_ptr<ZELLib3::Parameter> RollbackCacheParam() const override {
    return Sub<Recorded::Parameter>("RollbackCacheParam");
  }
  std::shared_ptr<ZELLib3::Parameter> CatalogCacheParam() const override {
    return Sub<Recorded::Parameter>("CatalogCacheParam");
  }
  std::shared_ptr<ZELLib3::Parameter> AWEMemoryParam() const override {
    return Sub<Recorded::Parameter>("AWEMemoryParam");
  }
  std::shared_ptr<ZELLib3::Parameter> AWEParam() const override { return Sub<Recorded::Parameter>("AWEParam"); }
  std::shared_ptr<ZELLib3::Parameter> DataCacheParam() const override {
    return Sub<Recorded::Parameter>("DataCacheParam");
  }
  double AWEMappedSize() const override { return Get<double>("AWEMappedSize"); }
  double AWEUnmappedSize() const override { return Get<double>("AWEUnmappedSize"); }
  double DataCacheAccesses(Long lIndex) const override { return Counter("DataCacheAccesses", lIndex); }
  double SQLDataAccesses(Long lIndex) const override { return Counter("SQLDataAccesses", lIndex); }
  double HistoryUndoAccesses(Long lIndex) const override { return Counter("HistoryUndoAccesses", lIndex); }
  double CatalogCacheAccesses(Long lIndex) const override { return Counter("CatalogCacheAccesses", lIndex); }
  double SequenceCacheAccesses(Long lIndex) const override { return Counter("SequenceCacheAccesses", lIndex); }
  double OMSDataAccesses(Long lIndex) const override { return Counter("OMSDataAccesses", lIndex); }
  double OMSHistoryAccesses(Long lIndex) const override { return Counter("OMSHistoryAccesses", lIndex); }
  double RollbackCacheAccesses(Long lIndex) const override { return Counter("RollbackCacheAccesses", lIndex); }
  double ConverterCacheAccesses(Long lIndex) const override { return Counter("ConverterCacheAccesses", lIndex); }
  double DataCacheUsedSize() const override { return Get<double>("DataCacheUsedSize"); }
  double SQLDataSize() const override { return Get<double>("SQLDataSize"); }
  double OMSDataSize() const override { return Get<double>("OMSDataSize"); }
  double HistoryUndoSize() const override { return Get<double>("HistoryUndoSize"); }
  double OMSHistorySize() const override { return Get<double>("OMSHistorySize"); }
  bool Refresh() override { return Do("Refresh"); }
};

}  // namespace ZELWbr3::Recorded
