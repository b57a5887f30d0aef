#include "zelwbr3/framework/modDate.h"

#include "zelwbr3/base/Calendar.h"

namespace ZELWbr3::modDate {

std::string Complaint(const Date& dDate) {
  // No user's locale can be trusted with a date that does not exist.
  return Calendar::Exists(dDate) ? "" : "There is no " + Calendar::ISOText(dDate, ' ') + ".";
}

}  // namespace ZELWbr3::modDate
