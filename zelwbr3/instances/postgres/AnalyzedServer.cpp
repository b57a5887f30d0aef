#include "zelwbr3/instances/postgres/AnalyzedServer.h"

#include "zelwbr3/instances/postgres/PostgresDatabase.h"
#include "zelwbr3/instances/postgres/analyzer/AnalyzerSetup.h"
#include "zelwbr3/instances/postgres/analyzer/ServerEvaluations.h"
#include "zelwbr3/instances/postgres/connection/Address.h"

namespace ZELWbr3::Postgres {

Instances::EvaluatedInstance AnalyzedServer(const std::string& sAddress, const Options& oOptions) {
  const Address oAddress(sAddress);
  const auto oEvaluations = std::make_shared<ServerEvaluations>();
  const auto Open = [=, oServer = std::shared_ptr<Server>()]() mutable {
    if (!oServer) oServer = std::make_shared<Server>(sAddress, oOptions);
    oEvaluations->Begin(oServer);
    const auto oDatabase = std::make_shared<PostgresDatabase>(oServer);
    oDatabase->Parameters()->Load();  // notices what has been changed; the state says why it cannot be read
    return oDatabase;
  };
  return {oAddress.Shown(), AnalyzerFolderOf(oAddress), Open, ServerEvaluations::Groups(oEvaluations)};
}

}  // namespace ZELWbr3::Postgres
