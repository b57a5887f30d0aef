#include "zelwbr3/instances/postgres/connection/Result.h"

#include <charconv>
#include <new>
#include <stdexcept>
#include <system_error>

namespace ZELWbr3::Postgres {

std::string Result::Text(int iRow, int iColumn) const {
  return {PQgetvalue(m_oResult.get(), iRow, iColumn),
          static_cast<std::size_t>(PQgetlength(m_oResult.get(), iRow, iColumn))};
}

std::string Result::Bytes(int iRow, int iColumn) const {
  std::size_t lBytes = 0;
  const std::unique_ptr<unsigned char, void (*)(void*)> oBytes(
      PQunescapeBytea(reinterpret_cast<unsigned char*>(PQgetvalue(m_oResult.get(), iRow, iColumn)), &lBytes),
      PQfreemem);
  if (oBytes == nullptr) throw std::bad_alloc();
  return {reinterpret_cast<char*>(oBytes.get()), lBytes};
}

namespace {

/// Numbers as the server writes them, whatever the locale is.
template <typename Value>
Value Parse(const std::string& sText) {
  Value value = 0;
  if (sText.empty()) return value;
  const auto [pEnd, eError] = std::from_chars(sText.data(), sText.data() + sText.size(), value);
  if (eError != std::errc() || pEnd == sText.data()) throw std::out_of_range("\"" + sText + "\" is no number");
  return value;
}

}  // namespace

std::int64_t Result::Number(int iRow, int iColumn) const { return Parse<std::int64_t>(Text(iRow, iColumn)); }

double Result::Real(int iRow, const char* sColumn) const { return Parse<double>(Text(iRow, sColumn)); }

std::optional<std::int64_t> Result::Known(int iRow, const char* sColumn) const {
  if (IsNull(iRow, sColumn)) return std::nullopt;
  return Number(iRow, sColumn);
}

int Result::Column(const char* sColumn) const {
  const int iColumn = PQfnumber(m_oResult.get(), ('"' + std::string(sColumn) + '"').c_str());
  if (iColumn < 0) throw std::out_of_range("The result has no column \"" + std::string(sColumn) + "\"");
  return iColumn;
}

}  // namespace ZELWbr3::Postgres
