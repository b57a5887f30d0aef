#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Host {

/// Opens the instance that a program's argument names: "recorded:FILE",
/// "sqlite:FILE", or a file alone, whose first bytes tell what it is. Throws std::runtime_error, which names the file
/// and what is wrong with it, or std::invalid_argument for an argument of another form. oObserver is told of the
/// operations that are called and change the instance; a recording tells of the others, too.
std::shared_ptr<ZELLib3::Database> OpenInstance(const std::string& sInstance, Recorded::CallObserver oObserver = {});

/// The files that such an instance consists of, whether they exist or not.
/// Throws std::invalid_argument as OpenInstance.
std::vector<std::string> FilesOf(const std::string& sInstance);

/// The argument for the sample database, which is made when it is not there
/// yet.
std::string SampleInstance();

}  // namespace ZELWbr3::Host
