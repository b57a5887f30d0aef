#pragma once

#include "framework/ZELLib3/Error.h"
#include "platform/MessageBox.h"

#include <exception>
#include <string>

/// The common error display.
namespace ZELWbr3::modZELError {

/// Shows an instance's error: its code, one blank, its text.
void ShowError(MessageBox& oBox, const ZELLib3::Error& oError, const std::string& sTitle);
/// Shows what a page itself failed at.
void ShowError(MessageBox& oBox, const std::exception& oError, const std::string& sTitle);

}  // namespace ZELWbr3::modZELError
