#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Export.h"

#include <string>

namespace ZELWbr3 {

/// A text box of a dialog. Positions count characters from 0.
class ZELWBR3_EXPORT TextBox {
 public:
  virtual ~TextBox() = default;
  virtual std::string Text() const = 0;
  virtual void SelStart(Long lStart) = 0;
  virtual void SelLength(Long lLength) = 0;
};

}  // namespace ZELWbr3
