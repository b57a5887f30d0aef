#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/platform/UserLocale.h"

#include <string>

/// The user's number settings.
namespace ZELWbr3::modLocal {

/// An item of a locale, cut at the first NUL.
std::string LocaleString(const UserLocale& oLocale, Long lLCID, Long lItem);
/// The leading number of an item; 0 without digits.
Long LocaleNumber(const UserLocale& oLocale, Long lLCID, Long lItem);

}  // namespace ZELWbr3::modLocal
