#pragma once

#include "zelwbr3/platform/TextBox.h"

namespace ZELWbr3::modSelectText {

/// Selects the whole text of a box.
void SelectText(TextBox& oTextBox);

}  // namespace ZELWbr3::modSelectText
