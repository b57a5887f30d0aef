#pragma once

#include "zelwbr3/instances/common/analyzer/BackgroundAnalyzer.h"

#include <memory>
#include <string>

namespace ZELWbr3::Postgres {

class Address;
class Server;

/// Where the analyzer of a server and database keeps its files. Raises
/// std::runtime_error when the user has no home folder.
Instances::AnalyzerFolder AnalyzerFolderOf(const Address& oAddress);

/// How zelanalyzer is started for a server: without the password in its arguments,
/// which everybody may read; it stands in the variable PGPASSWORD.
Instances::BackgroundAnalyzer::Setup AnalyzerSetupOf(std::shared_ptr<Server> oServer);

}  // namespace ZELWbr3::Postgres
