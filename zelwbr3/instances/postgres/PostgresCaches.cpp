#include "zelwbr3/instances/postgres/PostgresCaches.h"

namespace ZELWbr3::Postgres {

namespace {

constexpr char kAsked[] = "reading the caches";
constexpr double kBytesPerKB = 1024;
/// Pages that the extension may look at one by one.
constexpr std::int64_t kMostBuffers = 131072;
constexpr int kHasSummary = 160000;

}  // namespace

bool PostgresCaches::Refresh() {
  m_oValues.reset();
  if (!m_oServer->RefreshFigures()) return false;
  return m_oServer->Attempt([this](Connection&) { Read(); });
}

const PostgresCaches::Values& PostgresCaches::Read() const {
  if (m_oValues) return *m_oValues;
  Values oValues;
  if (m_oServer->ReadFigures()) {
    const double dPage = m_oServer->PageSize() / kBytesPerKB;
    const Result o = *m_oServer->Ask("caches", kAsked);
    const std::int64_t lBuffers = o.Number(0, "buffers");
    oValues.Size = static_cast<double>(lBuffers) * dPage;
    oValues.Hits = o.Real(0, "hit");
    oValues.Reads = o.Real(0, "read");
    if (m_oServer->Rights().Version >= kHasSummary || lBuffers <= kMostBuffers) {
      if (const auto oUsed = m_oServer->Ask("caches.used", kAsked)) {
        oValues.UsedSize = oUsed->Real(0, "buffers_used") * dPage;
      }
    }
    if (const auto oCatalog = m_oServer->Ask("caches.catalog", kAsked)) {
      oValues.Catalog = oCatalog->Real(0, "bytes") / kBytesPerKB;
    }
  }
  return m_oValues.emplace(oValues);
}

double PostgresCaches::CatalogCacheSize() const { return Read().Catalog; }

double PostgresCaches::DataCacheSize() const { return Read().Size; }

double PostgresCaches::DataCacheUsedSize() const { return Read().UsedSize; }

double PostgresCaches::DataCacheAccesses(ZELLib3::Long iIndex) const {
  const Values& oValues = Read();
  if (oValues.Hits < 0) return -1;
  switch (iIndex) {
    case 0:
      return oValues.Hits + oValues.Reads;
    case 1:
      return oValues.Hits;
    case 2:
      return oValues.Reads;
    default:
      return -1;
  }
}

}  // namespace ZELWbr3::Postgres
