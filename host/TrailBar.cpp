#include "host/TrailBar.h"

#include "host/ZelviewPictures.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/desktop/Accessible.h"

#include <initializer_list>
#include <string>

namespace ZELWbr3::Host {

TrailBar::TrailBar(wxWindow* oParent, PageTrail& oTrail, const std::function<void(std::function<void()>)>& oRunner)
    : wxBoxSizer(wxHORIZONTAL), m_oTrail(oTrail) {
  const auto AddButton = [&](const char* sName, const std::string& sPath, const std::function<void()>& oWork) {
    auto* oButton =
        new wxButton(oParent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxBU_EXACTFIT | wxBORDER_NONE);
    oButton->SetBitmap(ZelviewPictures::Icon(
        R"(<path fill="none" stroke="#7c8794" stroke-width="1.8" stroke-linecap="round" stroke-linejoin="round" d=")" +
        sPath + "\"/>"));
    oButton->SetToolTip(sName);
    oButton->DisableFocusFromKeyboard();  // its keys work everywhere
    Desktop::AccessibleName(*oButton, sName);
    oButton->Bind(wxEVT_BUTTON, [oRunner, oWork](wxCommandEvent&) { oRunner(oWork); });
    return oButton;
  };
  m_oBack = AddButton("Back (Alt+Left)", "M10 3 5 8l5 5", [this] { m_oTrail.Back(); });
  m_oForward = AddButton("Forward (Alt+Right)", "M6 3l5 5-5 5", [this] { m_oTrail.Forward(); });
  m_oPath = new wxStaticText(oParent, wxID_ANY, "", wxDefaultPosition, wxSize(oParent->FromDIP(190), -1),
                             wxST_ELLIPSIZE_MIDDLE | wxST_NO_AUTORESIZE);
  for (wxWindow* o : std::initializer_list<wxWindow*>{m_oBack, m_oForward, m_oPath}) {
    Add(o, wxSizerFlags().CenterVertical().Border(wxLEFT, oParent->FromDIP(4)));
  }
}

void TrailBar::Draw() {
  m_oBack->Enable(m_oTrail.CanGoBack());
  m_oForward->Enable(m_oTrail.CanGoForward());
  const wxString sPath = wxString::FromUTF8(Text::Clean(Text::OneLine(m_oTrail.Path())));
  m_oPath->SetLabelText(sPath);
  m_oPath->SetToolTip(sPath);
}

}  // namespace ZELWbr3::Host
