#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Date.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/UserLocale.h"

#include <string>
#include <string_view>

/// Converts numbers and dates to texts and back.
///
/// Decimals are rounded half away from zero on the number's own decimal digits
/// (the shortest that read back as the number), so 1.005 with two decimals is
/// 1.01. A number that is not finite gives "-".
namespace ZELWbr3::modFormat {

/// At least iDigits digits with leading zeros ("00000"); never grouped.
ZELWBR3_EXPORT std::string Padded(Long lValue, int iDigits);
/// At least eight digits with leading zeros, grouped in threes by the user's
/// separator ("00,000,000").
ZELWBR3_EXPORT std::string PaddedGrouped(Long lValue, const UserLocale& oLocale);
/// Digits in the user's groups; empty for zero ("#,#").
ZELWBR3_EXPORT std::string Grouped(Long lValue, const UserLocale& oLocale);
/// One digit or more and exactly iDecimals decimals, not grouped ("0.00"). A
/// single-precision number is rounded on its own, fewer digits.
ZELWBR3_EXPORT std::string Fixed(double dValue, int iDecimals, const UserLocale& oLocale);
ZELWBR3_EXPORT std::string Fixed(float fValue, int iDecimals, const UserLocale& oLocale);
/// The user's number format: like Fixed, in the user's groups.
ZELWBR3_EXPORT std::string Number(double dValue, int iDecimals, const UserLocale& oLocale);

/// Short date, one blank, long time; empty for no date.
ZELWBR3_EXPORT std::string GeneralDate(const Date& dDate, const UserLocale& oLocale);

/// The leading number of a text, ignoring blanks; 0 if there is none, infinite if
/// it is too large for a double.
ZELWBR3_EXPORT double Val(std::string_view sText);
/// Rounded half to even; throws std::overflow_error beyond 32 bits.
ZELWBR3_EXPORT Long ToLong(double dValue);

}  // namespace ZELWbr3::modFormat
