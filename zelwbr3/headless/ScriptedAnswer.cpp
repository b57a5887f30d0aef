#include "zelwbr3/headless/ScriptedAnswer.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>

namespace ZELWbr3::Headless {

namespace {

using Field = Dialog::Field;
using Entry = ScriptedAnswer::Entry;

constexpr std::array<std::string_view, 5> Words = {"ok", "cancel", "yes", "no", "quick"};

/// The names that an answer can give a value for, and the kind of field.
struct Input {
  std::string_view Name;
  Field::Kind Into;
};

constexpr Input Inputs[] = {
    {"date", Field::Kind::Date},          {"time", Field::Kind::Time},        {"config", Field::Kind::TextBox},
    {"number", Field::Kind::TextBox},     {"interval", Field::Kind::TextBox}, {"delete", Field::Kind::CheckBox},
    {"reconnect", Field::Kind::CheckBox},
};

const Input* Named(std::string_view sName) {
  const auto it = std::ranges::find(Inputs, sName, &Input::Name);
  return it == std::end(Inputs) ? nullptr : it;
}

/// The input whose "name=" a text starts with; null if there is none.
const Input* InputAt(std::string_view sText) {
  const auto iEquals = sText.find('=');
  return iEquals == std::string_view::npos ? nullptr : Named(sText.substr(0, iEquals));
}

/// Reads three numbers of fixed lengths with a separator between them.
bool ReadThree(std::string_view sText, std::string_view sPattern, std::array<int, 3>& numbers) {
  if (sText.size() != sPattern.size()) return false;
  std::size_t iNumber = 0;
  numbers.fill(0);
  for (std::size_t i = 0; i < sText.size(); ++i) {
    if (sPattern[i] == '0') {
      if (sText[i] < '0' || sText[i] > '9') return false;
      numbers[iNumber] = 10 * numbers[iNumber] + (sText[i] - '0');
    } else {
      if (sText[i] != sPattern[i]) return false;
      ++iNumber;
    }
  }
  return true;
}

bool ReadDay(std::string_view sText, Date& dDate) {
  std::array<int, 3> n{};
  if (!ReadThree(sText, "0000-00-00", n)) return false;
  dDate = {n[0], n[1], n[2], dDate.Hour, dDate.Minute, dDate.Second};
  return true;
}

bool ReadTime(std::string_view sText, Date& dDate) {
  std::array<int, 3> n{};
  if (!ReadThree(sText, "00:00:00", n)) return false;
  dDate = {dDate.Year, dDate.Month, dDate.Day, n[0], n[1], n[2]};
  return true;
}

[[noreturn]] void Fail(const std::string& sWhat) { throw std::invalid_argument(sWhat); }

void Check(const Entry& oEntry) {
  Date dIgnored;
  const auto Expect = [&](bool bHolds, const char* sForm) {
    if (!bHolds) Fail("has " + oEntry.Name + "=" + oEntry.Value + ", but " + oEntry.Name + "= takes " + sForm);
  };
  switch (Named(oEntry.Name)->Into) {
    case Field::Kind::Date:
      Expect(ReadDay(oEntry.Value, dIgnored), "YYYY-MM-DD");
      break;
    case Field::Kind::Time:
      Expect(ReadTime(oEntry.Value, dIgnored), "HH:MM:SS");
      break;
    case Field::Kind::CheckBox:
      Expect(oEntry.Value == "yes" || oEntry.Value == "no", "yes or no");
      break;
    case Field::Kind::TextBox:
    case Field::Kind::Password:
      break;
  }
}

/// Types a text into a box, replacing what it holds: the focus selects it all.
void Type(Field& oField, const std::string& sText) {
  constexpr Long Backspace = 8;
  std::vector<std::string> characters;
  for (std::size_t i = 0; i < sText.size();) {
    const std::size_t iStart = i++;
    while (i < sText.size() && (sText[i] & 0xC0) == 0x80) ++i;
    // Filters only tell ASCII characters apart; a lead byte is none of them.
    const auto cLead = static_cast<unsigned char>(sText[iStart]);
    if (oField.TakesKey && !oField.TakesKey(Long(cLead))) continue;
    if (cLead == Backspace) {
      if (!characters.empty()) characters.pop_back();
    } else {
      characters.push_back(sText.substr(iStart, i - iStart));
    }
  }
  oField.Text.clear();
  for (const std::string& sCharacter : characters) oField.Text += sCharacter;
}

/// A control's name ends with its input's name: txtNumber, inpUntilDate.
bool IsFieldOf(const Field& oField, std::string_view sName) {
  const auto Same = [](char a, char b) { return a == b || a - 'A' + 'a' == b; };
  return oField.Name.size() >= sName.size() &&
         std::ranges::equal(std::string_view(oField.Name).substr(oField.Name.size() - sName.size()), sName, Same);
}

}  // namespace

ScriptedAnswer ScriptedAnswer::Parse(const std::string& sText) {
  const auto iBlank = sText.find(' ');
  ScriptedAnswer oAnswer{sText, sText.substr(0, iBlank), {}};
  if (std::ranges::find(Words, oAnswer.Word) == Words.end()) Fail("is not one of ok, cancel, yes, no, quick");
  if (iBlank == std::string::npos) return oAnswer;
  if (oAnswer.Word != "ok") Fail("has values, which only ok takes");

  for (std::string_view sRest = std::string_view(sText).substr(iBlank + 1); !sRest.empty();) {
    const Input* const oInput = InputAt(sRest);
    if (oInput == nullptr) {
      Fail("has \"" + std::string(sRest) +
           "\", which starts with none of date=, time=, config=, number=, interval=, delete=, reconnect=");
    }
    sRest.remove_prefix(oInput->Name.size() + 1);
    std::size_t iEnd = sRest.find(' ');
    while (iEnd != std::string_view::npos && InputAt(sRest.substr(iEnd + 1)) == nullptr) {
      iEnd = sRest.find(' ', iEnd + 1);
    }
    const Entry oEntry{std::string(oInput->Name), std::string(sRest.substr(0, iEnd))};
    sRest.remove_prefix(iEnd == std::string_view::npos ? sRest.size() : iEnd + 1);
    if (std::ranges::find(oAnswer.Entries, oEntry.Name, &Entry::Name) != oAnswer.Entries.end()) {
      Fail("has " + oEntry.Name + "= twice");
    }
    Check(oEntry);
    oAnswer.Entries.push_back(oEntry);
  }
  return oAnswer;
}

std::string ScriptedAnswer::Enter(Dialog& oDialog) const {
  for (const Entry& oEntry : Entries) {
    const auto oField = std::ranges::find_if(oDialog.Fields, [&](const Field& o) { return IsFieldOf(o, oEntry.Name); });
    if (oField == oDialog.Fields.end()) return oEntry.Name + "=";
    switch (oField->What) {
      case Field::Kind::Date:
        ReadDay(oEntry.Value, oField->When);
        break;
      case Field::Kind::Time:
        ReadTime(oEntry.Value, oField->When);
        break;
      case Field::Kind::CheckBox:
        oField->Checked = oEntry.Value == "yes";
        break;
      case Field::Kind::TextBox:
      case Field::Kind::Password:
        Type(*oField, oEntry.Value);
        break;
    }
  }
  return {};
}

}  // namespace ZELWbr3::Headless
