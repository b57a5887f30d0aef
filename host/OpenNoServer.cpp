#include "host/OpenServer.h"

#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

constexpr char kNone[] = "This program was built without support for PostgreSQL servers";

}  // namespace

std::shared_ptr<ZELLib3::Database> OpenServer(const std::string&, Recorded::CallObserver, const std::string&) {
  throw std::runtime_error(kNone);
}

Instances::EvaluatedInstance EvaluatedServer(const std::string&) { throw std::runtime_error(kNone); }

}  // namespace ZELWbr3::Host
