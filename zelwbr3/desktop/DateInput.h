#pragma once

#include "zelwbr3/base/Date.h"

#include <string>

#include <wx/combo.h>

namespace ZELWbr3::Desktop {

/// How dates and times are typed. What is no date or time in full is refused,
/// with a sentence that says so: nothing is guessed.
namespace DateText {

/// A day in the user's format with all digits of the year; in the ISO form where that format is not made of numbers
/// only.
std::string OfDay(const Date& dDate);
/// Reads a day in the form of OfDay or in the ISO form; a year of two digits is
/// one from 2000 to 2099. Changes dDate and answers "", or answers what is wrong.
std::string ReadDay(const std::string& sText, Date& dDate);

/// "23:59:59".
std::string OfTime(const Date& dDate);
std::string ReadTime(const std::string& sText, Date& dDate);

}  // namespace DateText

/// A field for a day, to be typed or chosen from a calendar that drops down. It
/// holds any text.
class DateInput : public wxComboCtrl {
 public:
  DateInput(wxWindow* oParent, const Date& dDay);
};

}  // namespace ZELWbr3::Desktop
