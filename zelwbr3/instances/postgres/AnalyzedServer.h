#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/instances/common/daemon/EvaluatedInstance.h"
#include "zelwbr3/instances/postgres/server/Options.h"

#include <string>

namespace ZELWbr3::Postgres {

/// What zelanalyzer evaluates: a server, through one connection that is kept. Each
/// evaluation also notices changes of parameters.
/// sAddress is in libpq's words. Raises as PostgresDatabase for one that libpq does
/// not understand.
ZELWBR3_EXPORT Instances::EvaluatedInstance AnalyzedServer(const std::string& sAddress, const Options& oOptions);

}  // namespace ZELWbr3::Postgres
