#pragma once

#include "zelwbr3/instances/common/rows/RowReader.h"
#include "zelwbr3/instances/postgres/connection/Connection.h"

namespace ZELWbr3::Postgres {

using RowReader = Instances::RowReader<Connection>;
using ListReader = Instances::ListReader<Connection>;

}  // namespace ZELWbr3::Postgres
