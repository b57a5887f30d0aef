#include "zelwbr3/instances/postgres/connection/ServerError.h"

namespace ZELWbr3::Postgres {

ZELLib3::Long CodeOf(std::string_view sSQLState) {
  if (sSQLState.size() != 5) return 0;
  std::int32_t lCode = 0;
  for (const char c : sSQLState) {
    const bool bDigit = c >= '0' && c <= '9';
    if (!bDigit && (c < 'A' || c > 'Z')) return 0;
    lCode = lCode * 36 + (bDigit ? c - '0' : c - 'A' + 10);
  }
  return lCode;
}

}  // namespace ZELWbr3::Postgres
