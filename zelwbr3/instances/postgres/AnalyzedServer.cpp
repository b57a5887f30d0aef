#include "zelwbr3/instances/postgres/AnalyzedServer.h"

#include "zelwbr3/instances/common/daemon/Figures.h"
#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/postgres/analyzer/AnalyzerSetup.h"
#include "zelwbr3/instances/postgres/connection/Address.h"

namespace ZELWbr3::Postgres {

Instances::EvaluatedInstance AnalyzedServer(const std::string& sAddress, const Options& oOptions) {
  const Address oAddress(sAddress);
  const auto Open = [sAddress, oOptions, oKept = std::shared_ptr<ZELLib3::Database>()]() mutable {
    if (!oKept) oKept = OpenDatabase(sAddress, oOptions);
    return oKept;
  };
  return {oAddress.Shown(), AnalyzerFolderOf(oAddress), Open, Instances::CommonGroups()};
}

}  // namespace ZELWbr3::Postgres
