#pragma once

#include "zelwbr3/framework/clsSize.h"

namespace ZELWbr3::modCurrency {

/// The value as a currency amount: four decimals, rounded half to even, up to
/// about 922 trillion. 0 for what does not convert: a text that is not a number
/// in the user's locale, a number out of range, nothing at all.
double ToCurrency(const clsSize::Variant& vValue, const UserLocale& oLocale);

}  // namespace ZELWbr3::modCurrency
