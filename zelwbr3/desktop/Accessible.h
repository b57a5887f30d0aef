#pragma once

#include "zelwbr3/base/Export.h"

#include <string>

class wxWindow;

namespace ZELWbr3::Desktop {

/// What screen readers call a window that has no text of its own.
ZELWBR3_EXPORT void AccessibleName(const wxWindow& oWindow, const std::string& sName);

/// Tells screen readers what a status bar says now: the toolkit only draws it.
ZELWBR3_EXPORT void AccessibleStatus(const wxWindow& oStatusBar, const std::string& sText);

/// What screen readers are told about a window and what is in it, as far as it
/// shows: a line "role: name" for each part. Pages are told by their own process.
/// For tests and support.
std::string AccessibleTree(const wxWindow& oWindow);

}  // namespace ZELWbr3::Desktop
