#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/common/daemon/EvaluatedInstance.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <memory>
#include <string>

namespace ZELWbr3::Host {

/// A program's argument is a server's address, in libpq's form.
inline bool IsServer(const std::string& sInstance) {
  return sInstance.starts_with("postgresql://") || sInstance.starts_with("postgres://");
}

/// Opens a server by its address, in libpq's form. Its history is remembered in the
/// user's state folder. Takes and throws what OpenInstance does, std::runtime_error
/// also in a program that was built without servers.
std::shared_ptr<ZELLib3::Database> OpenServer(const std::string& sAddress, Recorded::CallObserver oObserver,
                                              const std::string& sPassword);

/// The same server for an analyzer. Throws the same when the address is wrong.
Instances::EvaluatedInstance EvaluatedServer(const std::string& sAddress);

}  // namespace ZELWbr3::Host
