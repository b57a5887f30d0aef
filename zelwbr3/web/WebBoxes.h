#pragma once

#include "zelwbr3/platform/DialogBox.h"
#include "zelwbr3/remote/DialogMessageBox.h"

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3::Web {

class WebPlatform;

/// Message boxes and dialogs, drawn by the shell. One that is open while another
/// one opens waits behind it.
class WebBoxes : public Remote::DialogMessageBox, public DialogBox {
 public:
  explicit WebBoxes(WebPlatform& oPlatform) : m_oPlatform(oPlatform) {}

  using Remote::DialogMessageBox::Show;
  Dialog::Answer Show(Dialog& oDialog) override { return Ask(oDialog, {}); }

  // What the user does in the box with that number; one that is not open is
  // ignored.

  void Pressed(std::uint32_t iBox, std::uint32_t iButton, std::vector<std::string> values);
  void Help(std::uint32_t iBox);
  /// The keyboard comes to a field with this text in it.
  void Entered(std::uint32_t iBox, std::uint32_t iField, const std::string& sText);

  /// Draws the open boxes again.
  void SendAgain() const;

 private:
  struct Box {
    std::uint32_t Number;
    ZELWbr3::Dialog& Dialog;
    const std::function<void()>& Help;
    bool IsPressed = false;
    std::uint32_t Button = 0;
    std::vector<std::string> Values = {};
  };

  Dialog::Answer Ask(Dialog& oDialog, const std::function<void()>& oHelp) override;
  /// Takes the values over and says what is wrong with them, in a box of its own.
  bool IsAccepted(const Box& oBox);
  Box* Find(std::uint32_t iBox) const;
  void Send(const Box& oBox) const;

  WebPlatform& m_oPlatform;
  std::vector<Box*> m_open;  ///< the innermost last
  std::uint32_t m_iLast = 0;
};

}  // namespace ZELWbr3::Web
