#include "zelwbr3/framework/modDate.h"

#include "zelwbr3/base/Calendar.h"

namespace ZELWbr3::modDate {

std::string Complaint(const Date& dDate) {
  // A locale may format a date that does not exist as another one, so use ISO.
  return Calendar::Exists(dDate) ? "" : "There is no " + Calendar::ISOText(dDate, ' ') + ".";
}

}  // namespace ZELWbr3::modDate
