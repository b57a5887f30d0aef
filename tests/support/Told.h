#pragma once

#include "tests/support/Screen.h"
#include "tests/support/TempFolder.h"
#include "tests/support/TestLocale.h"
#include "zelwbr3/headless/HeadlessCommandlist.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// A control with a command list that shows one instance, and everything that
/// happens to it told in lines: what the host hears, what the user is asked
/// (with what was answered), what the instance is called.
class Told : public Screen {
 public:
  /// A made-up instance: the members of a recording's "Database", and further
  /// members of the recording itself, each as JSON without the outer braces.
  explicit Told(const std::string& sDatabase, const std::string& sRecording = "")
      : Told([&](const Recorded::CallObserver& oObserver) {
          const TempFolder oFolder;
          return Recorded::OpenRecording(
              oFolder.Write("instance.json", "{\"LastError\": {\"ErrorCode\": -24988, \"ErrorText\": \"SQL error\"}, " +
                                                 sRecording + (sRecording.empty() ? "" : ", ") + "\"Database\": {" +
                                                 sDatabase + "}}"),
              oObserver);
        }) {}
  explicit Told(std::shared_ptr<ZELLib3::Database> oDatabase)
      : Told([&](const Recorded::CallObserver&) { return oDatabase; }) {}
  Told(const Told&) = delete;
  Told& operator=(const Told&) = delete;

  // What a host and its user do.

  template <typename PageClass>
  void Show(const std::shared_ptr<PageClass>& oPage) {
    oPage->Commandlist(Commandlist);
    oPage->Show(Database);
    Settle();
  }
  void Answer(const std::string& sAnswer) { Platform.MessageBox().Add(sAnswer); }
  void Item(int iKey) {
    Commandlist->ClickItem(iKey);
    Settle();
  }
  void Click(const std::string& sID) {
    Platform.FrontFrame().Click(sID);
    Settle();
  }
  void Key(int iCode) {
    Platform.FrontFrame().Key(iCode);
    Settle();
  }

  /// The lines since this was asked last, each with a line end.
  std::string Lines() { return std::exchange(m_sLines, ""); }
  void Line(const std::string& sLine) { m_sLines += sLine + "\n"; }

  /// The items of the command list shown; one in brackets is disabled.
  std::string Items() {
    std::string sItems;
    for (const auto& oItem : Commandlist->Items()) {
      const std::string sText = oItem.Separator ? "|" : oItem.Enabled ? oItem.Text : "(" + oItem.Text + ")";
      sItems += (sItems.empty() ? "" : " ") + sText;
    }
    return sItems;
  }

  Headless::HeadlessPlatform Platform{std::make_unique<TestLocale>()};
  std::shared_ptr<Headless::HeadlessCommandlist> Commandlist = std::make_shared<Headless::HeadlessCommandlist>();
  ZELWbr3::Browser Browser{Platform};
  std::shared_ptr<ZELLib3::Database> Database;
  /// Called when the instance is called, before it is.
  std::function<void(const std::string& sCall)> OnCall;
  /// Called with a box or dialog on the screen, by its title or name.
  std::function<void(const std::string& sBox)> OnAsked;

 private:
  using Opener = std::function<std::shared_ptr<ZELLib3::Database>(const Recorded::CallObserver&)>;

  explicit Told(const Opener& oOpen) {
    Browser.HTMLPath(std::string(ZELWBR3_SOURCE_DIR) + "/html");
    Database = oOpen([this](const Recorded::Call& oCall) {
      if (oCall.Changes) Tell(oCall);
    });
    const auto Keep = [this](Connection oConnection) { m_connections.push_back(std::move(oConnection)); };
    Keep(Browser.ActionBegin.Connect([this] { Line("begin"); }));
    Keep(Browser.ActionComplete.Connect([this](bool bRefresh) { Line(bRefresh ? "complete, refresh" : "complete"); }));
    Keep(Browser.PageComplete.Connect([this](const std::shared_ptr<Page>& oPage) { Line("page " + oPage->Name()); }));
    Keep(Platform.MessageBox().Shown.Connect([this](const Headless::ScriptedAnswers::Box& oBox) {
      Line("box " + oBox.Title + " [" + Headless::Word(oBox.Picture) + " " + Headless::Word(oBox.Offered) +
           "]: " + oBox.Text + " -> " + Headless::Word(oBox.Given));
      if (OnAsked) OnAsked(oBox.Title);
    }));
    Keep(Platform.DialogBox().DialogShown.Connect([this](const Headless::ScriptedAnswers::AnsweredDialog& oDialog) {
      Line("dialog " + oDialog.Shown.Name + " -> " + Headless::Word(oDialog.Given));
      if (OnAsked) OnAsked(oDialog.Shown.Name);
    }));
    Keep(Platform.MessageBox().Unsuitable.Connect([this](const std::string& sText) { Line("wrong: " + sText); }));
    Keep(Platform.Traced.Connect([this](const std::string& sText) { Line("trace: " + sText); }));
  }

  void Tell(const Recorded::Call& oCall) {
    std::string sArguments;
    for (const auto& oArgument : oCall.Arguments) {
      struct Worded {
        std::string operator()(const std::string& s) const { return "\"" + s + "\""; }
        std::string operator()(std::int32_t l) const { return std::to_string(l); }
        std::string operator()(bool b) const { return b ? "true" : "false"; }
      };
      sArguments += (sArguments.empty() ? "" : ", ") + std::visit(Worded(), oArgument);
    }
    Line("call " + oCall.Name + "(" + sArguments + ")");
    if (OnCall) OnCall(oCall.Name);
  }

  void Settle() { Platform.MessagePump().Poll(); }
  const ZELWbr3::Browser& Showing() const override { return Browser; }

  std::string m_sLines;
  std::vector<Connection> m_connections;
};

}  // namespace ZELWbr3::Testing
