#include "zelwbr3/web/WebBoxes.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/base/Finally.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/dom/Markup.h"
#include "zelwbr3/web/WebPlatform.h"

#include <algorithm>
#include <array>

namespace ZELWbr3::Web {

namespace {

using Answer = Dialog::Answer;
using Kind = Dialog::Field::Kind;

/// Codes of the keys that write or delete a character, as far as fields ask.
constexpr int Backspace = 8;
constexpr int FirstCharacter = 32;
constexpr int LastCharacter = 255;

/// A text as pairs of what it is (text, b, br, img) and what it says.
std::vector<std::pair<std::string, std::string>> Runs(const Dialog& oDialog) {
  if (!oDialog.TextIsHTML) return {{"text", oDialog.Text}};
  Document oDocument;
  DocumentBuilder oBuilder(oDocument);
  const Element& oAll = oBuilder.Begin("body");
  BuildMarkup(oBuilder, oDialog.Text);
  oBuilder.End();
  std::vector<std::pair<std::string, std::string>> runs{{"text", oAll.text()}};
  for (const Element* o = oAll.firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    runs.emplace_back(o->tagName(), o->tagName() == "img" ? o->getAttribute("alt") : o->text());
    runs.emplace_back("text", o->tail());
  }
  return runs;
}

std::string ValueOf(const Dialog::Field& oField) {
  switch (oField.What) {
    case Kind::CheckBox:
      return oField.Checked ? "1" : "0";
    case Kind::Date:
      return Calendar::ISOText(oField.When).substr(0, 10);
    case Kind::Time:
      return Calendar::ISOText(oField.When).substr(11);
    default:
      return oField.Text;
  }
}

/// An empty date or time leaves the field as it was. False for one that does not
/// exist.
bool TakeValue(Dialog::Field& oField, const std::string& sValue) {
  if (oField.What == Kind::CheckBox) {
    oField.Checked = sValue == "1";
    return true;
  }
  if (oField.What == Kind::TextBox || oField.What == Kind::Password) {
    oField.Text = Text::Clean(sValue);
    return true;
  }
  if (sValue.empty()) return true;
  const std::string sOwn = Calendar::ISOText(oField.When);
  // Browsers leave seconds of 0 out.
  const auto oDate =
      Calendar::ParseISO(oField.What == Kind::Date ? sValue + sOwn.substr(10)
                                                   : sOwn.substr(0, 11) + sValue + (sValue.size() == 5 ? ":00" : ""));
  if (oDate) oField.When = *oDate;
  return oDate.has_value();
}

/// The characters that a field takes; every one if it does not say.
std::string CharactersTaken(const Dialog::Field& oField) {
  std::string sTaken;
  if (!oField.TakesKey) return sTaken;
  if (oField.TakesKey(Backspace)) sTaken += static_cast<char>(Backspace);
  for (int i = FirstCharacter; i <= LastCharacter; ++i) {
    if (oField.TakesKey(i)) Text::AppendCodePoint(sTaken, static_cast<char32_t>(i));
  }
  return sTaken;
}

/// A text box as the core knows it: what is done to its selection is sent.
class ShownTextBox : public TextBox {
 public:
  explicit ShownTextBox(const std::string& sText) : m_sText(sText) {}

  std::string Text() const override { return m_sText; }
  void SelStart(Long lStart) override { Start = lStart; }
  void SelLength(Long lLength) override { Length = lLength; }

  Long Start;
  Long Length;

 private:
  const std::string& m_sText;
};

std::uint32_t NotNegative(Long l) { return static_cast<std::uint32_t>(std::max<std::int32_t>(l, 0)); }

}  // namespace

Dialog::Answer WebBoxes::Ask(Dialog& oDialog, const std::function<void()>& oHelp) {
  Box oBox{++m_iLast, oDialog, oHelp};
  m_open.push_back(&oBox);
  Finally(
      [&] {
        Send(oBox);
        do {
          oBox.IsPressed = false;
          while (!oBox.IsPressed) m_oPlatform.MessagePump().Turn();
        } while (!IsAccepted(oBox));
      },
      [&] {
        std::erase(m_open, &oBox);
        m_oPlatform.Send("close", oBox.Number);
      });
  return oDialog.Buttons[oBox.Button].Gives;
}

bool WebBoxes::IsAccepted(const Box& oBox) {
  ZELWbr3::Dialog& oDialog = oBox.Dialog;
  std::string sComplaint;
  for (std::size_t i = 0; i < oDialog.Fields.size(); ++i) {
    if (!TakeValue(oDialog.Fields[i], oBox.Values[i])) sComplaint = "\"" + oBox.Values[i] + "\" does not exist.";
  }
  if (oDialog.Buttons[oBox.Button].Gives == Dialog::Answer::Cancel) return true;
  if (sComplaint.empty() && oDialog.Complaint) sComplaint = oDialog.Complaint();
  if (sComplaint.empty()) return true;
  Show(sComplaint, oDialog.Caption, Buttons::OK, Icon::Exclamation);
  return false;
}

WebBoxes::Box* WebBoxes::Find(std::uint32_t iBox) const {
  const auto it = std::ranges::find(m_open, iBox, &Box::Number);
  return it == m_open.end() ? nullptr : *it;
}

void WebBoxes::Pressed(std::uint32_t iBox, std::uint32_t iButton, std::vector<std::string> values) {
  Box* oBox = Find(iBox);
  if (oBox == nullptr) return;
  if (iButton >= oBox->Dialog.Buttons.size() || values.size() != oBox->Dialog.Fields.size()) {
    throw std::invalid_argument("A box has no such button or fields");
  }
  oBox->IsPressed = true;
  oBox->Button = iButton;
  oBox->Values = std::move(values);
}

void WebBoxes::Help(std::uint32_t iBox) {
  const Box* oBox = Find(iBox);
  if (oBox != nullptr && oBox->Help) oBox->Help();
}

void WebBoxes::Entered(std::uint32_t iBox, std::uint32_t iField, const std::string& sText) {
  const Box* oBox = Find(iBox);
  if (oBox == nullptr || iField >= oBox->Dialog.Fields.size() || !oBox->Dialog.Fields[iField].Entered) return;
  ShownTextBox oShown(sText);
  oBox->Dialog.Fields[iField].Entered(oShown);
  m_oPlatform.Send("select", iBox, iField, NotNegative(oShown.Start), NotNegative(oShown.Length));
}

void WebBoxes::SendAgain() const {
  for (const Box* oBox : m_open) Send(*oBox);
}

void WebBoxes::Send(const Box& oBox) const {
  const ZELWbr3::Dialog& o = oBox.Dialog;
  FlatListWriter oList;
  const auto Add = [&](const auto&... items) { (oList.Add(items), ...); };
  const auto Shown = [](const std::string& s) { return Text::Clean(s); };
  const auto Count = [](const auto& list) { return static_cast<std::uint32_t>(list.size()); };
  Add("box", oBox.Number, Shown(o.Name), Shown(o.Caption));
  Add(o.Picture == Icon::Question ? "question" : "exclamation", Shown(o.Frame), oBox.Help ? 1U : 0U);
  const auto runs = Runs(o);
  Add(Count(runs));
  for (const auto& [sKind, sText] : runs) Add(sKind, Shown(sText));
  Add(Count(o.Fields));
  for (const Dialog::Field& oField : o.Fields) {
    constexpr std::array<const char*, 5> Kinds = {"text", "password", "checkbox", "date", "time"};
    Add(Kinds.at(static_cast<std::size_t>(oField.What)), Shown(oField.Name), Shown(oField.Caption), Shown(oField.Note));
    Add(Shown(ValueOf(oField)), oField.TakesKey ? 1U : 0U, CharactersTaken(oField), oField.Entered ? 1U : 0U);
  }
  Add(Count(o.Buttons));
  for (const Dialog::Button& oButton : o.Buttons) {
    Add(Shown(oButton.Name), Shown(oButton.Caption), oButton.Gives == Dialog::Answer::Cancel ? 1U : 0U);
  }
  Add(static_cast<std::uint32_t>(o.DefaultButton));
  m_oPlatform.SendList(oList);
}

}  // namespace ZELWbr3::Web
