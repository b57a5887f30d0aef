#pragma once

#include "zelwbr3/base/Export.h"

#include <stdexcept>

namespace ZELWbr3 {

/// A wait that cannot end: the program is closing, the control was destroyed, the
/// browser's process died, or nothing is left that could end it. The control is
/// usable again afterwards unless it was destroyed.
class ZELWBR3_EXPORT WaitError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The wait has ended because the user closes the program's window. That is no
/// failure and needs no message.
class ZELWBR3_EXPORT ClosingError : public WaitError {
 public:
  using WaitError::WaitError;
};

}  // namespace ZELWbr3
