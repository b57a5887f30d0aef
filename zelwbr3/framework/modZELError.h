#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/platform/MessageBox.h"

#include <exception>
#include <functional>
#include <string>

/// The common error display.
namespace ZELWbr3::modZELError {

/// Shows an instance's error: its code, one blank, its text. Offers help if oHelp
/// is not empty.
void ShowError(MessageBox& oBox, const ZELLib3::Error& oError, const std::string& sTitle,
               const std::function<void()>& oHelp = {});
/// Shows an error of the page itself.
void ShowError(MessageBox& oBox, const std::exception& oError, const std::string& sTitle);

}  // namespace ZELWbr3::modZELError
