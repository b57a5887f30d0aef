#include "zelwbr3/framework/PageDefault.h"

#include "zelwbr3/framework/KeyCode.h"
#include "zelwbr3/framework/PageController.h"

namespace ZELWbr3 {

bool PageDefault::HandleOnClick(const std::string& sID) {
  if (!sID.empty()) Click.Raise(sID);
  return false;
}

bool PageDefault::HandleOnKeyDown(Long& lKeyCode, Element*) {
  if (lKeyCode != KeyCode::F5) return false;
  Browser().Refresh(WebBrowser());
  return true;
}

}  // namespace ZELWbr3
