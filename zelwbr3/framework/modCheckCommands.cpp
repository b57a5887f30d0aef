#include "zelwbr3/framework/modCheckCommands.h"

#include "zelwbr3/ZELLib3/Codes.h"
#include "zelwbr3/framework/Given.h"

namespace ZELWbr3::modCheckCommands {

namespace {

bool IsAtLeast(ZELLib3::Database& oDatabase, int lNumber) {
  return Given(oDatabase.Version())->Release() >= ZELLib3::Kernel::V76 &&
         Given(oDatabase.Version())->Number() >= lNumber;
}

}  // namespace

bool CheckAutoExtend(const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  return oDatabase != nullptr && IsAtLeast(*oDatabase, ZELLib3::Kernel::V76Automatic);
}

bool CheckAutoUpdateStatistics(const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  return oDatabase != nullptr && IsAtLeast(*oDatabase, ZELLib3::Kernel::V76Automatic);
}

bool CheckOnlineFeature(const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  return oDatabase != nullptr && Given(oDatabase->StateInfo())->Status() == ZELLib3::Status::Online &&
         IsAtLeast(*oDatabase, ZELLib3::Kernel::V76OnlineParameters);
}

}  // namespace ZELWbr3::modCheckCommands
