#pragma once

#include "zelwbr3/base/Date.h"
#include "zelwbr3/framework/SystemLocale.h"

#include <string>

#include <wx/combo.h>

namespace ZELWbr3::Desktop {

/// How a day is written and read in a field: in the user's short form with all
/// digits of the year, or in the ISO form where the user's is not made of numbers
/// only. What is not a date in full is refused: nothing is guessed.
class DayFormat {
 public:
  explicit DayFormat(const UserLocale& oLocale = SystemLocale());

  std::string Write(const Date& dDate) const;
  /// Reads a day in the form of Write or in the ISO form; a year of two digits is
  /// one from 2000 to 2099. Changes the day of dDate and answers "", or answers
  /// what is wrong.
  std::string Read(const std::string& sText, Date& dDate) const;

 private:
  std::string m_sFormat;  ///< of %d, %m, %Y and what stands between them
};

/// The same for a time of day, "23:59:59" for every user.
namespace TimeFormat {
std::string Write(const Date& dDate);
std::string Read(const std::string& sText, Date& dDate);
}  // namespace TimeFormat

/// A field for a day, to be typed or chosen from a calendar that drops down. It
/// holds any text.
class DateInput : public wxComboCtrl {
 public:
  DateInput(wxWindow* oParent, const Date& dDay);
};

}  // namespace ZELWbr3::Desktop
