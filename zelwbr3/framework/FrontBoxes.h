#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/PageSite.h"
#include "zelwbr3/framework/clsHourglass.h"
#include "zelwbr3/platform/DialogBox.h"
#include "zelwbr3/platform/MessageBox.h"

#include <functional>
#include <memory>

namespace ZELWbr3 {

/// The platform's message box and dialogs for a page. Before one opens, the
/// page's changes are sent to the browser; while it is open, the wait cursor is
/// suspended. If the page was left in the meantime, the task ends with PageLeft
/// and gets no answer.
class ZELWBR3_EXPORT FrontBoxes : public MessageBox, public DialogBox {
 public:
  /// Runs something that pumps messages; throws PageLeft if the page was left.
  using Pumping = std::function<void(const std::function<void()>&)>;

  FrontBoxes(PageSite& oBrowser, std::shared_ptr<clsHourglass> oHourglass, Pumping oPumping)
      : m_oBrowser(oBrowser), m_oHourglass(std::move(oHourglass)), m_oPumping(std::move(oPumping)) {}

  MessageBox::Answer Show(const std::string& sText, const std::string& sTitle, Buttons eButtons, Icon eIcon) override;
  void ShowWithHelp(const std::string& sText, const std::string& sTitle, Icon eIcon,
                    const std::function<void()>& oHelp) override;
  Dialog::Answer Show(Dialog& oDialog) override;
  /// Runs what PageSite::MessageHelp has returned.
  void ShowHelp(const std::function<void()>& oHelp) { Open(oHelp); }

 private:
  void Open(const std::function<void()>& oShow);

  PageSite& m_oBrowser;
  std::shared_ptr<clsHourglass> m_oHourglass;
  Pumping m_oPumping;
};

}  // namespace ZELWbr3
