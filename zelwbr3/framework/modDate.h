#pragma once

#include "zelwbr3/base/Date.h"

#include <string>

/// What is said of dates.
namespace ZELWbr3::modDate {

/// Why a date cannot be used: it does not exist. Empty when it does.
std::string Complaint(const Date& dDate);

}  // namespace ZELWbr3::modDate
