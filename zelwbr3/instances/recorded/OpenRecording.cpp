#include "zelwbr3/instances/recorded/OpenRecording.h"

#include "zelwbr3/instances/recorded/Check.h"
#include "zelwbr3/instances/recorded/Database.h"
#include "zelwbr3/instances/recorded/Parse.h"

namespace ZELWbr3::Recorded {

std::shared_ptr<ZELLib3::Database> OpenRecording(const std::string& sFile, CallObserver fnObserver) {
  Json oRoot = ParseFile(sFile);
  CheckRecording(oRoot, sFile);
  return std::make_shared<Recorded::Database>(std::make_shared<State>(std::move(oRoot), std::move(fnObserver)));
}

}  // namespace ZELWbr3::Recorded
