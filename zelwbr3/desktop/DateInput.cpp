#include "zelwbr3/desktop/DateInput.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Text.h"

#include <wx/calctrl.h>
#include <wx/intl.h>
#include <cstdio>

namespace ZELWbr3::Desktop {

namespace {

constexpr char ISO[] = "%Y-%m-%d";

/// The user's format made of %d, %m, %Y and what stands between them.
std::string DayFormat() {
  std::string sFormat = wxLocale::GetInfo(wxLOCALE_SHORT_DATE_FMT).utf8_string();
  int iNumbers = 0;
  for (std::size_t i = 0; (i = sFormat.find('%', i)) != std::string::npos; ++i, ++iNumbers) {
    if (sFormat.compare(i, 2, "%-") == 0) sFormat.erase(i + 1, 1);
    char& c = sFormat[++i];  // the terminating NUL at worst
    if (c == 'e') c = 'd';
    if (c == 'y') c = 'Y';
    if (c != 'd' && c != 'm' && c != 'Y') return ISO;
  }
  return iNumbers == 3 ? sFormat : ISO;
}

std::string Format(const std::string& sFormat, const Date& dDate) {
  std::string sText;
  for (std::size_t i = 0; i < sFormat.size(); ++i) {
    if (sFormat[i] != '%') {
      sText += sFormat[i];
      continue;
    }
    const char c = sFormat[++i];
    char sNumber[16];
    std::snprintf(sNumber, sizeof sNumber, c == 'Y' ? "%04d" : "%02d",
                  c == 'Y'   ? dDate.Year
                  : c == 'm' ? dDate.Month
                             : dDate.Day);
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

bool Read(const std::string& sText, const std::string& sFormat, Date& dDate) {
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
    if (!DateText::ReadDay(sText.utf8_string(), dDay).empty()) return;
    SetDate(wxDateTime(static_cast<wxDateTime::wxDateTime_t>(dDay.Day), static_cast<wxDateTime::Month>(dDay.Month - 1),
                       dDay.Year));
  }
  void Choose(const wxDateTime& oDay) {
    SetDate(oDay);
    m_sText = wxString::FromUTF8(DateText::OfDay({oDay.GetYear(), oDay.GetMonth() + 1, oDay.GetDay()}));
    m_combo->SetText(m_sText);
  }

 private:
  wxString m_sText;
};

}  // namespace

std::string DateText::OfDay(const Date& dDate) { return Format(DayFormat(), dDate); }

std::string DateText::ReadDay(const std::string& sText, Date& dDate) {
  const std::string sDay = Text::Trim(sText);
  if (Read(sDay, DayFormat(), dDate)) return "";
  if (const auto dRead = Calendar::ParseISO(sDay + "T00:00:00")) {
    dDate.Year = dRead->Year;
    dDate.Month = dRead->Month;
    dDate.Day = dRead->Day;
    return "";
  }
  const Date dExample{2025, 12, 31};
  const std::string sUsual = OfDay(dExample);
  const std::string sISO = Format(ISO, dExample);
  return Complaint(sDay, "date", sUsual == sISO ? sISO : sUsual + " or " + sISO);
}

std::string DateText::OfTime(const Date& dDate) { return Calendar::ISOText(dDate).substr(11); }

std::string DateText::ReadTime(const std::string& sText, Date& dDate) {
  const std::string sTime = Text::Trim(sText);
  const auto dRead = Calendar::ParseISO("2000-01-01T" + sTime);
  if (!dRead) return Complaint(sTime, "time", "23:59:59");
  dDate.Hour = dRead->Hour;
  dDate.Minute = dRead->Minute;
  dDate.Second = dRead->Second;
  return "";
}

DateInput::DateInput(wxWindow* oParent, const Date& dDay)
    : wxComboCtrl(oParent, wxID_ANY, wxString::FromUTF8(DateText::OfDay(dDay)), wxDefaultPosition,
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
