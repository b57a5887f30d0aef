#pragma once

#include "zelwbr3/instances/common/rows/RowSourceOf.h"
#include "zelwbr3/instances/sqlite/file/InstanceFile.h"
#include "zelwbr3/instances/sqlite/rows/RowReader.h"

namespace ZELWbr3::SQLite {

template <class I>
using RowSourceOf = Instances::RowSourceOf<I, InstanceFile, Connection>;

}  // namespace ZELWbr3::SQLite
