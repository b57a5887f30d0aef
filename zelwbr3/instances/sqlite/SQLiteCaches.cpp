#include "zelwbr3/instances/sqlite/SQLiteCaches.h"

namespace ZELWbr3::SQLite {

namespace {

constexpr double kBytesPerKB = 1024;

}  // namespace

bool SQLiteCaches::Refresh() {
  if (!m_oFile->RefreshFigures()) return false;
  m_oReading = m_oFile->Read();
  return true;
}

const Usage* SQLiteCaches::Figures() const {
  if (!m_oReading) m_oReading = m_oFile->Read();
  return m_oReading->Figures();
}

double SQLiteCaches::CatalogCacheSize() const {
  return Figures() ? static_cast<double>(Figures()->SchemaBytes) / kBytesPerKB : -1;
}

double SQLiteCaches::DataCacheSize() const {
  return Figures() ? static_cast<double>(Figures()->CachePages) * m_oFile->Unit() / kBytesPerKB : -1;
}

double SQLiteCaches::DataCacheUsedSize() const {
  return Figures() ? static_cast<double>(Figures()->CacheUsed) * m_oFile->Unit() / kBytesPerKB : -1;
}

double SQLiteCaches::DataCacheAccesses(ZELLib3::Long iIndex) const {
  const Usage* pUsage = Figures();
  if (!pUsage || iIndex < 0 || iIndex > 2) return -1;
  const std::int64_t lAccesses[] = {pUsage->CacheHits + pUsage->CacheMisses, pUsage->CacheHits, pUsage->CacheMisses};
  return static_cast<double>(lAccesses[iIndex]);
}

std::shared_ptr<ZELLib3::Parameter> SQLiteCaches::DataCacheParam() const { return m_oParameters->Item("cache_size"); }

}  // namespace ZELWbr3::SQLite
