#include "host/OpenServer.h"

#include <stdexcept>

namespace ZELWbr3::Host {

std::shared_ptr<ZELLib3::Database> OpenServer(const std::string&, Recorded::CallObserver) {
  throw std::runtime_error("This program was built without support for PostgreSQL servers");
}

}  // namespace ZELWbr3::Host
