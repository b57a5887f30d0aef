#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <memory>

/// Whether an instance offers a feature; every call reads the version again.
/// Without an instance, nothing is offered.
namespace ZELWbr3::modCheckCommands {

/// Automatic extension of the data area: from 7.6, build 10.
bool CheckAutoExtend(const std::shared_ptr<ZELLib3::Database>& oDatabase);
/// Automatic update of statistics: from 7.6, build 10.
bool CheckAutoUpdateStatistics(const std::shared_ptr<ZELLib3::Database>& oDatabase);
/// Parameter changes while online: from 7.6, build 12, while the instance is
/// online.
bool CheckOnlineFeature(const std::shared_ptr<ZELLib3::Database>& oDatabase);

}  // namespace ZELWbr3::modCheckCommands
