#pragma once

#include "zelwbr3/base/Date.h"

#include <string>

/// Messages about dates.
namespace ZELWbr3::modDate {

/// Why a date cannot be used: it does not exist. Empty if it does.
std::string Complaint(const Date& dDate);

}  // namespace ZELWbr3::modDate
