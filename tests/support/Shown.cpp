#include "tests/support/Shown.h"

#include "tests/support/Picture.h"
#include "zelwbr3/dom/Style.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace ZELWbr3::Testing {

namespace {

std::string Worded(const Recorded::Call::Argument& oArgument) {
  if (const auto* s = std::get_if<std::string>(&oArgument)) return "\"" + *s + "\"";
  if (const auto* b = std::get_if<bool>(&oArgument)) return *b ? "true" : "false";
  return std::to_string(std::get<std::int32_t>(oArgument));
}

std::string OneLine(const std::string& sText) { return std::regex_replace(sText, std::regex("\n"), "\\n"); }

}  // namespace

Shown::Shown(const std::string& sRecording, const Changes& changes)
    : Database(std::make_shared<ChangedRecording>(sRecording, changes, [this](const Recorded::Call& o) { Tell(o); })),
      Browser(std::make_unique<ZELWbr3::Browser>(Platform)) {
  Browser->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  const auto Keep = [this](Connection oConnection) { Connections.push_back(std::move(oConnection)); };
  Keep(Browser->ActionBegin.Connect([this] { Line("begin"); }));
  Keep(Browser->ActionComplete.Connect([this](bool bRefresh) { Line(bRefresh ? "complete, refresh" : "complete"); }));
  Keep(Browser->PageComplete.Connect([this](const std::shared_ptr<Page>& oPage) { Line("page " + oPage->Name()); }));
  Keep(Browser->Command.Connect([this](Long lCommand) { Line("command " + std::to_string(lCommand)); }));
  Keep(Platform.MessageBox().Shown.Connect([this](const Headless::ScriptedAnswers::Box& oBox) {
    using Headless::Word;
    Line("box " + oBox.Title + " [" + Word(oBox.Picture) + " " + Word(oBox.Offered) + "]: " + OneLine(oBox.Text) +
         " -> " + Word(oBox.Given));
    if (OnAsked) OnAsked(oBox.Title);
  }));
  Keep(Platform.DialogBox().DialogShown.Connect([this](const Headless::ScriptedAnswers::AnsweredDialog& oDialog) {
    std::string sButtons;
    for (const auto& oButton : oDialog.Shown.Buttons) sButtons += "[" + oButton.Caption + "]";
    Line("dialog " + oDialog.Shown.Name + " " + sButtons + " " + oDialog.Shown.Caption + ": " +
         OneLine(Headless::FullText(oDialog.Shown)) + " -> " + Headless::Word(oDialog.Given));
    if (OnAsked) OnAsked(oDialog.Shown.Name);
  }));
  Keep(Platform.MessageBox().Unsuitable.Connect([this](const std::string& sText) { Line("wrong: " + sText); }));
  Keep(Platform.Traced.Connect([this](const std::string& sText) { Line("trace: " + sText); }));
}

Shown::~Shown() { Quiet(); }

void Shown::Quiet() {
  std::istringstream oLines(Lines());
  for (std::string sLine; std::getline(oLines, sLine);) {
    for (const char* sTrouble : {"box Error", "trace: ", "wrong: "}) EXPECT_FALSE(sLine.starts_with(sTrouble)) << sLine;
  }
}

void Shown::Tell(const Recorded::Call& oCall) {
  m_calls.push_back(oCall.Name);
  if (oCall.Changes) {
    std::string sArguments;
    for (const auto& oArgument : oCall.Arguments) sArguments += (sArguments.empty() ? "" : ", ") + Worded(oArgument);
    Line("call " + oCall.Name + "(" + sArguments + ")");
  }
  if (OnCall) OnCall(oCall.Name);
}

int Shown::Uses(const std::string& sOperation) const {
  return static_cast<int>(std::ranges::count(m_calls, sOperation));
}

void Shown::Show(const std::string& sPage) {
  Host::HostPages(*Browser, Database, Commandlist).Show(sPage);
  Settle();
}

void Shown::PageFile(const std::string& sName, const std::string& sHTML) {
  m_oFolder.Write(sName + ".htm", (sHTML.starts_with("<!DOCTYPE") ? "" : "<!DOCTYPE html>") + sHTML);
  Browser->HTMLPath(m_oFolder.Path());
}

void Shown::Click(const std::string& sID) {
  Platform.FrontFrame().Click(sID);
  Settle();
}

bool Shown::Key(int iCode) {
  const bool bTaken = Platform.FrontFrame().Key(iCode);
  Settle();
  return bTaken;
}

void Shown::Item(int iKey) {
  Commandlist->ClickItem(iKey);
  Settle();
}

void Shown::Do(const std::string& sStep) {
  const std::map<std::string, std::function<void(const std::string&)>> steps = {
      {"show", [this](const std::string& s) { Show(s); }},
      {"click", [this](const std::string& s) { Click(s); }},
      {"focus", [this](const std::string& s) { Focus(s); }},
      {"key", [this](const std::string& s) { Key(std::stoi(s)); }},
      {"item", [this](const std::string& s) { Item(std::stoi(s)); }},
      {"answer", [this](const std::string& s) { Answer(s); }},
      {"with", [this](const std::string& s) { Database->Change({s}); }},
      {"unit", [this](const std::string& s) { Browser->PreferredUnit(std::stoi(s)); }},
  };
  const auto iBlank = sStep.find(' ');
  const auto it = steps.find(sStep.substr(0, iBlank));
  if (it == steps.end() || iBlank == std::string::npos) throw std::invalid_argument("No step: " + sStep);
  it->second(sStep.substr(iBlank + 1));
}

std::string Shown::Picture() const { return Testing::Picture(*Browser->VisibleDocument()); }

std::string Shown::Items() const {
  std::string sItems;
  for (const auto& oItem : Commandlist->Items()) {
    const std::string sText = oItem.Separator ? "|" : oItem.Enabled ? oItem.Text : "(" + oItem.Text + ")";
    sItems += (sItems.empty() ? "" : " ") + sText;
  }
  return sItems;
}

Element& Shown::At(const std::string& sID) const {
  Element* oElement = Browser->VisibleDocument()->all().item(sID);
  if (oElement == nullptr) throw std::runtime_error("No element " + sID);
  return *oElement;
}

bool Shown::IsShown(const std::string& sID) const { return At(sID).style().display() != "none"; }

}  // namespace ZELWbr3::Testing
