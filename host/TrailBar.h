#pragma once

#include "host/PageTrail.h"

#include <functional>

#include <wx/button.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace ZELWbr3::Host {

/// The buttons for going back and forward, and where the user is.
class TrailBar : public wxBoxSizer {
 public:
  /// oRunner runs what a button was pressed for.
  TrailBar(wxWindow* oParent, PageTrail& oTrail, const std::function<void(std::function<void()>)>& oRunner);

  /// Shows where the trail is now.
  void Draw();
  /// Without the text.
  void Compact(bool bCompact) { m_oPath->Show(!bCompact); }

 private:
  PageTrail& m_oTrail;
  wxButton* m_oBack;
  wxButton* m_oForward;
  wxStaticText* m_oPath;
};

}  // namespace ZELWbr3::Host
