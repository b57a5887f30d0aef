#include "zelwbr3/framework/modCheckCommands.h"

namespace ZELWbr3::modCheckCommands {

namespace {

bool IsAtLeast(ZELLib3::Database& oDatabase, int lNumber) {
  return oDatabase.Version()->Release() >= 0x07060000 && oDatabase.Version()->Number() >= lNumber;
}

}  // namespace

bool CheckAutoExtend(const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  return oDatabase != nullptr && IsAtLeast(*oDatabase, 0x0706000A);
}

bool CheckAutoUpdateStatistics(const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  return oDatabase != nullptr && IsAtLeast(*oDatabase, 0x0706000A);
}

bool CheckOnlineFeature(const std::shared_ptr<ZELLib3::Database>& oDatabase) {
  return oDatabase != nullptr && oDatabase->StateInfo()->Status() == 5 && IsAtLeast(*oDatabase, 0x0706000C);
}

}  // namespace ZELWbr3::modCheckCommands
