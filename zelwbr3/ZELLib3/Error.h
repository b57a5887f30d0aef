#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Date.h"
#include "zelwbr3/base/Export.h"

#include <stdexcept>
#include <string>

namespace ZELLib3 {

using ZELWbr3::Date;
using ZELWbr3::Integer;
using ZELWbr3::Long;

/// Why the last failed call of an instance failed.
struct Error {
  Long ErrorCode;
  std::string ErrorText;
};

/// Raised by a member that cannot be read. The pages report it like LastError
/// after a failed operation.
class ZELWBR3_EXPORT InstanceError : public std::runtime_error {
 public:
  explicit InstanceError(Error oError) : std::runtime_error(oError.ErrorText), m_oError(std::move(oError)) {}
  const Error& ErrorObject() const { return m_oError; }

 private:
  Error m_oError;
};

}  // namespace ZELLib3
