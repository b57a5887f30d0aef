#include "host/Questions.h"

#include "host/OpenInstance.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/platform/DialogBox.h"

#include <utility>

namespace ZELWbr3::Host {

namespace {

using Kind = Dialog::Field::Kind;

std::optional<std::string> Ask(DialogBox& oBox, const char* sName, const char* sCaption, std::string sText,
                               Dialog::Field oField) {
  Dialog oDialog{.Name = sName,
                 .Caption = sCaption,
                 .Picture = MessageBox::Icon::Question,
                 .Text = std::move(sText),
                 .Fields = {std::move(oField)},
                 .Buttons = {{Dialog::Answer::OK, "cmdOK", "OK"}, {Dialog::Answer::Cancel, "cmdCancel", "&Cancel"}}};
  if (oBox.Show(oDialog) != Dialog::Answer::OK) return std::nullopt;
  return oDialog.Fields.front().Text;
}

/// A line as it is meant when it is no password.
std::optional<std::string> Trimmed(std::optional<std::string> sLine) {
  if (sLine) sLine = Text::Trim(*sLine);
  return sLine;
}

}  // namespace

std::optional<std::string> AskPassword(DialogBox& oBox, const std::string& sInstance, const std::string& sRefused) {
  return Ask(oBox, "frmPassword", "Password",
             sRefused.empty() ? "The server asks for a password:\n" + ShownInstance(sInstance) : sRefused,
             {.What = Kind::Password, .Name = "txtPassword", .Caption = "&Password:"});
}

std::optional<std::string> AskServer(DialogBox& oBox) {
  return Trimmed(
      Ask(oBox, "frmServer", "Open Server",
          "Show a PostgreSQL server. What the address leaves out comes from the environment, the service file and the "
          "password file, as with psql.",
          {.What = Kind::TextBox, .Name = "txtAddress", .Caption = "&Address:", .Text = "postgresql://"}));
}

std::optional<std::string> AskTopic(DialogBox& oBox) {
  return Trimmed(Ask(oBox, "frmMessageNumber", "Message", "Show the help on a message.",
                     {.What = Kind::TextBox, .Name = "txtTopic", .Caption = "&Number or topic:"}));
}

}  // namespace ZELWbr3::Host
