#pragma once

#include "zelwbr3/platform/Date.h"

#include <string>

/// The calendar and the clock.
namespace ZELWbr3::modDate {

/// The computer's local time.
Date Now();
/// There is such a day and such a time of day.
bool Exists(const Date& dDate);
/// Why a date cannot be used: it does not exist. Empty when it does.
std::string Complaint(const Date& dDate);

/// "YYYYMMDD"
std::string Compact(const Date& dDate);

}  // namespace ZELWbr3::modDate
