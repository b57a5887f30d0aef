#include "zelwbr3/platform/Platform.h"

#include "zelwbr3/platform/HelpFile.h"
#include "zelwbr3/platform/MessagePump.h"
#include "zelwbr3/platform/MessageWindow.h"

#include <iostream>
#include <stdexcept>

namespace ZELWbr3 {

Platform::~Platform() = default;

DialogBox& Platform::DialogBox() { throw std::logic_error("This program cannot show dialogs"); }

std::unique_ptr<MessageWindow> Platform::MakeMessageWindow(MessageWindowEvents&) {
  throw std::logic_error("This program cannot show help");
}

HelpFile& Platform::HelpFile() {
  static ZELWbr3::HelpFile oNone;
  return oNone;
}

void Platform::Post(std::function<void()>) { throw std::logic_error("This program takes no work from other threads"); }

void Platform::TraceFailure(const std::string& sWhere, const std::exception& oThrown) {
  const std::string sText = sWhere + ": " + oThrown.what();
  const bool bRead = Trace(sText);
  if (!bRead && dynamic_cast<const WaitError*>(&oThrown) == nullptr) std::cerr << sText << std::endl;
}

}  // namespace ZELWbr3
