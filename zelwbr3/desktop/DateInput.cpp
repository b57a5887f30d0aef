#include "zelwbr3/desktop/DateInput.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Text.h"

#include <wx/calctrl.h>
#include <cstdio>

namespace ZELWbr3::Desktop {

namespace {

constexpr char ISO[] = "%Y-%m-%d";

std::string Format(const std::string& sFormat, const Date& dDate) {
  std::string sText;
  for (std::size_t i = 0; i < sFormat.size(); ++i) {
    if (sFormat[i] != '%') {
      sText += sFormat[i];
      continue;
    }
    const char c = sFormat[++i];
    const int iNumber = c == 'Y' ? dDate.Year : c == 'm' ? dDate.Month : dDate.Day;
    char sNumber[16];
    std::snprintf(sNumber, sizeof sNumber, c == 'Y' ? "%04d" : "%02d", iNumber);
    sText += sNumber;
  }
  return sText;
}

/// Reads up to iMost digits and answers how many there were.
std::size_t ReadNumber(const std::string& sText, std::size_t& iPlace, std::size_t iMost, int& iNumber) {
  const std::size_t iBegin = iPlace;
  for (iNumber = 0; iPlace < sText.size() && iPlace - iBegin < iMost; ++iPlace) {
    if (sText[iPlace] < '0' || sText[iPlace] > '9') break;
    iNumber = 10 * iNumber + (sText[iPlace] - '0');
  }
  return iPlace - iBegin;
}

bool ReadDay(const std::string& sText, const std::string& sFormat, Date& dDate) {
  Date dRead = dDate;
  std::size_t iPlace = 0;
  for (std::size_t i = 0; i < sFormat.size(); ++i) {
    if (sFormat[i] != '%') {
      if (iPlace >= sText.size() || sText[iPlace++] != sFormat[i]) return false;
    } else if (sFormat[++i] == 'Y') {
      const auto iDigits = ReadNumber(sText, iPlace, 4, dRead.Year);
      if (iDigits == 2) dRead.Year += 2000;
      if (iDigits != 4 && iDigits != 2) return false;
    } else if (ReadNumber(sText, iPlace, 2, sFormat[i] == 'm' ? dRead.Month : dRead.Day) == 0) {
      return false;
    }
  }
  if (iPlace != sText.size() || !Calendar::Exists(dRead)) return false;
  dDate = dRead;
  return true;
}

std::string Complaint(const std::string& sText, const char* sWhat, const std::string& sExamples) {
  return (sText.empty() ? std::string("The ") + sWhat + " is missing."
                        : "\"" + sText + "\" is not a " + sWhat + " in full.") +
         " Enter it like " + sExamples + ".";
}

/// The calendar that drops down. It shows the field's day, or any when the field
/// holds none, and leaves the field alone until a day is chosen.
class CalendarPopup : public wxCalendarCtrl, public wxComboPopup {
 public:
  bool Create(wxWindow* oParent) override {
    if (!wxCalendarCtrl::Create(oParent, wxID_ANY)) return false;
    Bind(wxEVT_CALENDAR_SEL_CHANGED, [this](wxCalendarEvent&) { Choose(GetDate()); });
    Bind(wxEVT_CALENDAR_DOUBLECLICKED, [this](wxCalendarEvent&) { Dismiss(); });
    return true;
  }
  wxWindow* GetControl() override { return this; }
  wxSize GetAdjustedSize(int, int, int) override { return GetBestSize(); }
  wxString GetStringValue() const override { return m_sText; }
  void SetStringValue(const wxString& sText) override {
    m_sText = sText;
    Date dDay;
    if (!m_oFormat.Read(sText.utf8_string(), dDay).empty()) return;
    SetDate(wxDateTime(static_cast<wxDateTime::wxDateTime_t>(dDay.Day), static_cast<wxDateTime::Month>(dDay.Month - 1),
                       dDay.Year));
  }
  void Choose(const wxDateTime& oDay) {
    SetDate(oDay);
    m_sText = wxString::FromUTF8(m_oFormat.Write({oDay.GetYear(), oDay.GetMonth() + 1, oDay.GetDay()}));
    m_combo->SetText(m_sText);
  }

 private:
  const DayFormat m_oFormat;
  wxString m_sText;
};

}  // namespace

DayFormat::DayFormat(const UserLocale& oLocale) : m_sFormat(oLocale.ShortDate({2034, 11, 25})) {
  const auto Replace = [this](std::string_view sNumber, const char* sSign) {
    const auto i = m_sFormat.find(sNumber);
    if (i != std::string::npos) m_sFormat.replace(i, sNumber.size(), sSign);
    return i != std::string::npos;
  };
  const bool bNumbers = (Replace("2034", "%Y") || Replace("34", "%Y")) && Replace("11", "%m") && Replace("25", "%d");
  if (!bNumbers || m_sFormat.find_first_of("0123456789") != std::string::npos) m_sFormat = ISO;
}

std::string DayFormat::Write(const Date& dDate) const { return Format(m_sFormat, dDate); }

std::string DayFormat::Read(const std::string& sText, Date& dDate) const {
  const std::string sDay = Text::Trim(sText);
  if (ReadDay(sDay, m_sFormat, dDate)) return "";
  if (const auto dRead = Calendar::ParseISO(sDay + "T00:00:00")) {
    dDate.Year = dRead->Year;
    dDate.Month = dRead->Month;
    dDate.Day = dRead->Day;
    return "";
  }
  const Date dExample{2025, 12, 31};
  const std::string sISO = Format(ISO, dExample);
  return Complaint(sDay, "date", Write(dExample) == sISO ? sISO : Write(dExample) + " or " + sISO);
}

std::string TimeFormat::Write(const Date& dDate) { return Calendar::ISOText(dDate).substr(11); }

std::string TimeFormat::Read(const std::string& sText, Date& dDate) {
  const std::string sTime = Text::Trim(sText);
  const auto dRead = Calendar::ParseISO("2000-01-01T" + sTime);
  if (!dRead) return Complaint(sTime, "time", "23:59:59");
  dDate.Hour = dRead->Hour;
  dDate.Minute = dRead->Minute;
  dDate.Second = dRead->Second;
  return "";
}

DateInput::DateInput(wxWindow* oParent, const Date& dDay)
    : wxComboCtrl(oParent, wxID_ANY, wxString::FromUTF8(DayFormat().Write(dDay)), wxDefaultPosition,
                  oParent->FromDIP(wxSize(150, -1))) {
  auto* oCalendar = new CalendarPopup;
  SetPopupControl(oCalendar);
  // The keyboard stays in the field: its keys move in the calendar while that
  // is open, and Return and Escape close it before they close the dialog.
  Bind(wxEVT_CHAR_HOOK, [this, oCalendar](wxKeyEvent& oEvent) {
    const int iKey = oEvent.GetKeyCode();
    const int iDays = iKey == WXK_LEFT ? -1 : iKey == WXK_RIGHT ? 1 : iKey == WXK_UP ? -7 : iKey == WXK_DOWN ? 7 : 0;
    const bool bEnd = iKey == WXK_ESCAPE || iKey == WXK_RETURN || iKey == WXK_NUMPAD_ENTER;
    if (!IsPopupShown() || oEvent.HasModifiers() || (iDays == 0 && !bEnd)) return oEvent.Skip();
    if (bEnd) return HidePopup(true);
    oCalendar->Choose(oCalendar->GetDate() + wxDateSpan::Days(iDays));
  });
}

}  // namespace ZELWbr3::Desktop
