#include "zelwbr3/testing/ShownControl.h"

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/Style.h"
#include "zelwbr3/testing/Picture.h"

#include <gtest/gtest.h>

#include <regex>
#include <sstream>
#include <stdexcept>

namespace ZELWbr3::Testing {

namespace {

std::string OneLine(const std::string& sText) { return std::regex_replace(sText, std::regex("\n"), "\\n"); }

}  // namespace

ShownControl::ShownControl(const std::vector<std::string>& pageFolders)
    : Browser(std::make_unique<ZELWbr3::Browser>(Platform)) {
  Browser->HTMLPaths(pageFolders);
  Browser->Commandlist(Commandlist);
  const auto Keep = [this](ScopedConnection oConnection) { m_connections.push_back(std::move(oConnection)); };
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

ShownControl::~ShownControl() { Quiet(); }

void ShownControl::Quiet() {
  std::istringstream oLines(Lines());
  for (std::string sLine; std::getline(oLines, sLine);) {
    for (const char* sTrouble : {"box Error", "trace: ", "wrong: "}) EXPECT_FALSE(sLine.starts_with(sTrouble)) << sLine;
  }
}

void ShownControl::Show(const std::shared_ptr<Page>& oPage) {
  Browser->Show(oPage, oPage->WebBrowser());
  Settle();
}

void ShownControl::PageFile(const std::string& sName, const std::string& sHTML) {
  m_oFolder.Write(sName + ".htm", (sHTML.starts_with("<!DOCTYPE") ? "" : "<!DOCTYPE html>") + sHTML);
  Browser->HTMLPath(m_oFolder.Path());
}

void ShownControl::Click(const std::string& sID) {
  Platform.FrontFrame().Click(sID);
  Settle();
}

bool ShownControl::Key(int iCode) {
  const bool bTaken = Platform.FrontFrame().Key(iCode);
  Settle();
  return bTaken;
}

void ShownControl::Item(int iKey) {
  Commandlist->ClickItem(iKey);
  Settle();
}

std::string ShownControl::Picture() const { return Testing::Picture(*Browser->VisibleDocument()); }

std::string ShownControl::Items() const {
  std::string sItems;
  for (const auto& oItem : Commandlist->Items()) {
    const std::string sText = oItem.Separator ? "|" : oItem.Enabled ? oItem.Text : "(" + oItem.Text + ")";
    sItems += (sItems.empty() ? "" : " ") + sText;
  }
  return sItems;
}

Element& ShownControl::At(const std::string& sID) const {
  Element* oElement = Browser->VisibleDocument()->all().item(sID);
  if (oElement == nullptr) throw std::runtime_error("No element " + sID);
  return *oElement;
}

std::string ShownControl::Text(const std::string& sID) const { return At(sID).innerText(); }

bool ShownControl::IsShown(const std::string& sID) const { return At(sID).style().display() != "none"; }

}  // namespace ZELWbr3::Testing
