#include "zelwbr3/desktop/DesktopCommandlist.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/desktop/Accessible.h"
#include "zelwbr3/desktop/BrowserPanel.h"
#include "zelwbr3/desktop/DesktopPlatform.h"
#include "zelwbr3/desktop/DesktopPump.h"

#include <wx/button.h>
#include <wx/statline.h>
#include <wx/wrapsizer.h>

#include <algorithm>
#include <utility>

namespace ZELWbr3::Desktop {

using ZELCmd3::CommandItem;

namespace {

/// The same but for what can be changed in place.
bool LooksLike(const CommandItem& a, const CommandItem& b) {
  return a.Key == b.Key && a.Text == b.Text && a.Picture == b.Picture && a.Separator == b.Separator;
}

}  // namespace

DesktopCommandlist::DesktopCommandlist(wxWindow& oParent, DesktopPump& oPump, Pictures oPictures)
    : m_oBar(new wxPanel(&oParent)), m_oPump(oPump), m_oPictures(std::move(oPictures)) {
  m_oBar->SetSizer(new wxWrapSizer(wxHORIZONTAL, wxREMOVE_LEADING_SPACES));
  AccessibleName(*m_oBar, "Commands");
  wxButton oExample(m_oBar, wxID_ANY, "X");
  m_oBar->SetMinSize(wxSize(-1, oExample.GetBestSize().y + 2 * m_oBar->FromDIP(3)));
}

DesktopCommandlist::DesktopCommandlist(wxWindow& oParent, BrowserPanel& oPanel, Pictures oPictures)
    : DesktopCommandlist(oParent, oPanel.Platform().Pump(), std::move(oPictures)) {}

DesktopCommandlist::~DesktopCommandlist() {
  if (m_oBar != nullptr) m_oBar->Destroy();
}

void DesktopCommandlist::ItemsChanged() {
  if (m_bDrawing || m_oBar == nullptr) return;
  m_bDrawing = true;
  m_oBar->CallAfter([this] { Draw(); });
}

void DesktopCommandlist::Compact(bool bCompact) {
  if (std::exchange(m_bCompact, bCompact) != bCompact) DrawAnew();
}

void DesktopCommandlist::DrawAnew() {
  m_oShown.clear();
  ItemsChanged();
}

void DesktopCommandlist::Draw() {
  m_bDrawing = false;
  const auto oItems = Drawn();
  const bool bFocus = HasFocus();
  if (!std::ranges::equal(oItems, m_oShown, LooksLike)) {
    m_oBar->Freeze();
    m_oBar->DestroyChildren();
    m_oBar->GetSizer()->Clear();
    m_oButtons.clear();
    for (const CommandItem& oItem : oItems) {
      m_oButtons.push_back(MakeButton(oItem));
      m_oBar->GetSizer()->Add(m_oButtons.back(), wxSizerFlags().Expand().Border(wxALL, m_oBar->FromDIP(3)));
    }
    m_oBar->Thaw();
    if (wxWindow* oParent = m_oBar->GetParent()) oParent->Layout();
  }
  for (std::size_t i = 0; i < oItems.size(); ++i) m_oButtons[i]->Enable(oItems[i].Enabled);
  m_oShown = oItems;
  // The button with the keyboard is gone or disabled: it must not be lost.
  if (bFocus && !HasFocus()) m_oBar->SetFocus();
  if (bFocus && !HasFocus()) m_oBar->Navigate();
}

bool DesktopCommandlist::HasFocus() const {
  const auto it = std::ranges::find(m_oButtons, wxWindow::FindFocus());
  return it != m_oButtons.end() && (*it)->IsThisEnabled();
}

wxWindow* DesktopCommandlist::MakeButton(const CommandItem& oItem) {
  if (oItem.Separator) {
    return new wxStaticLine(m_oBar, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxLI_VERTICAL);
  }
  auto* oButton = new wxButton(m_oBar, wxID_ANY, wxString::FromUTF8(Text::Clean(oItem.Text)));
  const wxBitmapBundle oPicture = m_oPictures ? m_oPictures(oItem.Picture) : wxBitmapBundle();
  if (oPicture.IsOk()) oButton->SetBitmap(oPicture);
  if (oPicture.IsOk() && m_bCompact) {
    oButton->SetToolTip(oButton->GetLabelText());
    AccessibleName(*oButton, std::string(oButton->GetLabelText().utf8_str()));
    oButton->SetLabel("");
    oButton->SetWindowStyle(oButton->GetWindowStyle() | wxBU_EXACTFIT);
  }
  // Not within the button's own event: the click may change the list.
  oButton->Bind(wxEVT_BUTTON, [this, lKey = oItem.Key](wxCommandEvent&) {
    m_oBar->CallAfter([this, lKey] { m_oPump.Deliver([&] { Click(lKey); }); });
  });
  return oButton;
}

}  // namespace ZELWbr3::Desktop
