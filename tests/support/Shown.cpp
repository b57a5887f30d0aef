#include "tests/support/Shown.h"
#include "zelwbr3/pages/main/PageMain.h"

namespace ZELWbr3::Testing {

namespace {

std::unique_ptr<TestLocale> MakeLocale(TestLocale*& oLocale) {
  auto oMade = std::make_unique<TestLocale>();
  oLocale = oMade.get();
  return oMade;
}

}  // namespace

Shown::Shown() : Platform(MakeLocale(Locale)), Control(std::make_unique<Browser>(Platform)) {
  Control->HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  Control->PageMain()->Commandlist(Commandlist);
  const auto Keep = [this](Connection oConnection) { Connections.push_back(std::move(oConnection)); };
  Keep(Control->PageComplete.Connect(
      [this](const std::shared_ptr<Page>& oPage) { Log.push_back("PageComplete " + oPage->Name()); }));
  Keep(Control->ActionBegin.Connect([this] { Log.push_back("ActionBegin"); }));
  Keep(Control->ActionComplete.Connect(
      [this](bool bRefresh) { Log.push_back(std::string("ActionComplete ") + (bRefresh ? "true" : "false")); }));
  Keep(Control->Command.Connect([this](Long lCommand) { Log.push_back("Command " + std::to_string(lCommand)); }));
  Keep(Platform.MessageBox().Shown.Connect([this](const Headless::ScriptedAnswers::Box& oBox) {
    if (oBox.Title == "Error") {
      EXPECT_EQ(oBox.Offered, MessageBox::Buttons::OK);
      EXPECT_EQ(oBox.Picture, MessageBox::Icon::Exclamation);
      m_errors.push_back(oBox.Text);
    } else {
      Log.push_back("MessageBox " + oBox.Title + ": " + oBox.Text);
    }
  }));
  Keep(Platform.Traced.Connect([this](const std::string& sText) { Log.push_back("Trace " + sText); }));
}

void Shown::TearDown() { EXPECT_EQ(m_errors, m_expected) << "error displays: those shown, those announced"; }

void Shown::PageFile(const std::string& sName, const std::string& sHTML) {
  if (m_oFolder == nullptr) m_oFolder = std::make_unique<TempFolder>();
  m_oFolder->Write(sName + ".htm", "<!DOCTYPE html>" + sHTML);
  Control->HTMLPath(m_oFolder->Path());
}

void Shown::ShowMain() { Control->PageMain()->Show(Instance); }

void Shown::Click(const std::string& sID) {
  Platform.FrontFrame().Click(sID);
  Settle();
}

bool Shown::Key(int iKeyCode) {
  const bool bSwallowed = Platform.FrontFrame().Key(iKeyCode);
  Settle();
  return bSwallowed;
}

std::string Shown::Commands() const {
  std::string sCommands;
  for (const auto& oItem : Commandlist->Items()) {
    const std::string sItem = std::to_string(oItem.Key) + " " + (oItem.Separator ? "-" : oItem.Text);
    sCommands += (sCommands.empty() ? "" : ", ") + (oItem.Enabled ? sItem : "(" + sItem + ")");
  }
  return sCommands;
}

}  // namespace ZELWbr3::Testing
