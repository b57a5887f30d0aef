#pragma once

#include "zelwbr3/instances/common/rows/RowReader.h"

namespace ZELWbr3::SQLite {

class Connection;

using RowReader = Instances::RowReader<Connection>;
using ListReader = Instances::ListReader<Connection>;

}  // namespace ZELWbr3::SQLite
