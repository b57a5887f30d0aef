#include "host/EventLog.h"

#include "zelwbr3/framework/Page.h"

#include <nlohmann/json.hpp>

#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

using JSON = nlohmann::ordered_json;

/// One line; invalid UTF-8 becomes U+FFFD.
std::string Line(const JSON& oEvent) { return oEvent.dump(-1, ' ', false, JSON::error_handler_t::replace); }

JSON Item(const ZELCmd3::CommandItem& oItem) {
  const auto lKey = std::int32_t{oItem.Key};
  if (oItem.Separator) return {{"key", lKey}, {"separator", true}};
  return {{"key", lKey}, {"text", oItem.Text}, {"picture", std::int32_t{oItem.Picture}}, {"enabled", oItem.Enabled}};
}

}  // namespace

void EventLog::Open(const std::string& sFile) {
  m_sFile = sFile;
  if (!sFile.empty()) m_oFile.open(sFile, std::ios::trunc);
  if (!m_oFile) throw std::runtime_error("The events file \"" + sFile + "\" cannot be written");
}

void EventLog::Watch(Browser& oBrowser, Headless::HeadlessPlatform& oPlatform) {
  const auto Keep = [this](ScopedConnection oConnection) { m_connections.push_back(std::move(oConnection)); };
  Keep(oBrowser.PageComplete.Connect([this](const std::shared_ptr<Page>& oPage) {
    WriteLine(Line({{"event", "PageComplete"}, {"page", oPage->Name()}}));
  }));
  Keep(oBrowser.ActionBegin.Connect([this] { WriteLine(Line({{"event", "ActionBegin"}})); }));
  Keep(oBrowser.ActionComplete.Connect([this](bool bRefresh) {
    WriteLine(Line({{"event", "ActionComplete"}, {"refresh", bRefresh}}));
  }));
  Keep(oBrowser.Command.Connect([this](Long lCommand) {
    WriteLine(Line({{"event", "Command"}, {"number", std::int32_t{lCommand}}}));
  }));
  Keep(oPlatform.MessageBox().Shown.Connect([this](const Headless::ScriptedAnswers::Box& oBox) {
    WriteLine(Line({{"event", "MessageBox"},
                    {"title", oBox.Title},
                    {"text", oBox.Text},
                    {"buttons", Headless::Word(oBox.Offered)},
                    {"icon", Headless::Word(oBox.Picture)},
                    {"answer", Headless::Word(oBox.Given)}}));
  }));
  Keep(oPlatform.DialogBox().DialogShown.Connect([this](const Headless::ScriptedAnswers::AnsweredDialog& oDialog) {
    WriteLine(Line({{"event", "Dialog"},
                    {"name", oDialog.Shown.Name},
                    {"text", Headless::FullText(oDialog.Shown)},
                    {"answer", Headless::Word(oDialog.Given)}}));
  }));
  Keep(oPlatform.MessageWindowShown.Connect([this](const Headless::HeadlessWebBrowser& oBrowser) {
    const auto oDocument = oBrowser.Document();
    const Element* const oTopic = oDocument == nullptr ? nullptr : oDocument->all().item("Message1.Txt");
    WriteLine(Line({{"event", "Dialog"},
                    {"name", "frmMessage"},
                    {"text", oTopic == nullptr ? std::string() : oTopic->getAttribute("src")},
                    {"answer", "cancel"}}));
  }));
  Keep(oPlatform.Traced.Connect([this](const std::string& sText) {
    WriteLine(Line({{"event", "Trace"}, {"text", sText}}));
  }));
}

void EventLog::Write(const Recorded::Call& oCall) {
  if (!oCall.Changes) return;
  JSON oArguments = JSON::array();
  for (const auto& oArgument : oCall.Arguments) {
    std::visit([&](const auto& oValue) { oArguments.push_back(oValue); }, oArgument);
  }
  WriteLine(Line({{"event", "Instance"}, {"call", oCall.Name}, {"arguments", oArguments}}));
}

void EventLog::EndStep(const Headless::HeadlessCommandlist& oCommandlist) {
  // Items that are disabled only during the step have not changed by its end.
  auto items = oCommandlist.Items();
  if (items == m_items) return;
  m_items = std::move(items);
  JSON oItems = JSON::array();
  for (const auto& oItem : m_items) oItems.push_back(Item(oItem));
  WriteLine(Line({{"event", "Commandlist"}, {"items", oItems}}));
}

void EventLog::Close() {
  if (!m_oFile.is_open()) return;
  m_oFile.close();
  if (!m_oFile) throw std::runtime_error("The events file \"" + m_sFile + "\" could not be written completely");
}

void EventLog::WriteLine(const std::string& sLine) {
  if (m_oFile.is_open()) m_oFile << sLine << '\n';
}

}  // namespace ZELWbr3::Host
