#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Date.h"
#include "zelwbr3/platform/UserLocale.h"

#include <string>
#include <string_view>

/// Numbers and dates as texts, and back.
///
/// Decimals are rounded half away from zero on the number's own decimal digits
/// (the shortest that read back as the number), so 1.005 with two decimals is
/// 1.01. A number that is not finite is the text "-".
namespace ZELWbr3::modFormat {

/// At least iDigits digits, zeros in front ("00000"); never grouped.
std::string Padded(Long lValue, int iDigits);
/// At least eight digits, zeros in front, grouped in threes by the user's
/// separator ("00,000,000").
std::string PaddedGrouped(Long lValue, const UserLocale& oLocale);
/// Digits in the user's groups, the empty text for zero ("#,#").
std::string Grouped(Long lValue, const UserLocale& oLocale);
/// One digit or more and exactly iDecimals decimals, not grouped ("0.00"). A
/// single-precision number counts with its own, fewer digits.
std::string Fixed(double dValue, int iDecimals, const UserLocale& oLocale);
std::string Fixed(float fValue, int iDecimals, const UserLocale& oLocale);
/// The user's number format: as Fixed, in the user's groups.
std::string Number(double dValue, int iDecimals, const UserLocale& oLocale);

/// Short date, one blank, long time; the empty text for no date.
std::string GeneralDate(const Date& dDate, const UserLocale& oLocale);

/// The leading number of a text, blanks ignored; 0 when there is none,
/// infinite when no double is that large.
double Val(std::string_view sText);
/// Rounded half to even; throws std::overflow_error beyond 32 bits.
Long ToLong(double dValue);

}  // namespace ZELWbr3::modFormat
