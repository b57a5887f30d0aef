#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/instances/recorded/objects/Call.h"

#include <memory>
#include <string>

namespace ZELWbr3::Host {

/// Opens a server by its address, in libpq's form. Its history is remembered in the user's state folder. Throws
/// std::runtime_error, which names the server and what is wrong, also in a program
/// that was built without servers. oObserver as for OpenInstance.
std::shared_ptr<ZELLib3::Database> OpenServer(const std::string& sAddress, Recorded::CallObserver oObserver);

}  // namespace ZELWbr3::Host
