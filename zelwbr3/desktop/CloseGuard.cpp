#include "zelwbr3/desktop/CloseGuard.h"

#include "zelwbr3/desktop/DesktopPump.h"

#include <wx/event.h>
#include <wx/toplevel.h>

namespace ZELWbr3::Desktop {

CloseGuard::CloseGuard(wxWindow& oParent, DesktopPump& oPump) : m_oParent(&oParent), m_oPump(oPump) {
  wxEvtHandler::AddFilter(this);
}

CloseGuard::~CloseGuard() { wxEvtHandler::RemoveFilter(this); }

int CloseGuard::FilterEvent(wxEvent& oEvent) {
  if (oEvent.GetEventType() != wxEVT_CLOSE_WINDOW || !m_oPump.Waiting()) return Event_Skip;
  wxWindow* oWindow = wxGetTopLevelParent(m_oParent);
  if (oWindow == nullptr || oEvent.GetEventObject() != oWindow) return Event_Skip;

  m_oPump.EndWaits("The program is closing");
  auto& oClose = static_cast<wxCloseEvent&>(oEvent);
  if (!oClose.CanVeto()) return Event_Skip;
  oClose.Veto();
  m_oPump.AfterWaits([oWeak = wxWeakRef<wxWindow>(oWindow)] {
    if (oWeak != nullptr) oWeak->Close();
  });
  return Event_Processed;
}

}  // namespace ZELWbr3::Desktop
