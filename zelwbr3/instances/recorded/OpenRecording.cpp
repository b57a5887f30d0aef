#include "zelwbr3/instances/recorded/OpenRecording.h"

#include "zelwbr3/instances/recorded/format/Check.h"
#include "zelwbr3/instances/recorded/format/Parse.h"
#include "zelwbr3/instances/recorded/objects/Database.h"

namespace ZELWbr3::Recorded {

std::shared_ptr<ZELLib3::Database> OpenRecording(const std::string& sFile, CallObserver fnObserver) {
  Json oRoot = ParseFile(sFile);
  CheckRecording(oRoot, sFile);
  return std::make_shared<Recorded::Database>(std::make_shared<State>(std::move(oRoot), std::move(fnObserver)));
}

}  // namespace ZELWbr3::Recorded
