#include "host/PageList.h"

#include "host/ZelviewPictures.h"
#include "zelwbr3/desktop/Accessible.h"
#include "zelwbr3/desktop/ListFocus.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

#include <wx/settings.h>
#include <wx/sizer.h>

namespace ZELWbr3::Host {

namespace {

struct Icon {
  std::string_view Page;
  std::string_view Path;  ///< SVG, 16 units wide and high, lines
};

constexpr Icon Icons[] = {
    {"Main", "M2.5 13.5v-5M6.2 13.5v-9M9.8 13.5V7M13.5 13.5v-11"},
    {"DataArea", "M2.5 4a5.5 2.2 0 0 1 11 0v8a5.5 2.2 0 0 1-11 0zM2.5 4a5.5 2.2 0 0 0 11 0M2.5 8a5.5 2.2 0 0 0 11 0"},
    {"LogArea", "M4 1.5h6l2.5 2.5v10.5H4zM6.3 6.5h4M6.3 9h4M6.3 11.5h2.5"},
    {"Parameters", "M2 4.5h6M11 4.5h3M2 11.5h3M8 11.5h6M9.5 2.7v3.6M6.5 9.7v3.6"},
    {"InfoCaches",
     "M4.5 4.5h7v7h-7zM6.5 1.8v2M9.5 1.8v2M6.5 12.2v2M9.5 12.2v2M1.8 6.5h2M1.8 9.5h2M12.2 6.5h2M12.2 9.5h2"},
    {"InfoActivity", "M1.5 8.5h3l2-5.5 3.2 10 2-4.5h2.8"},
    {"Sessions", "M8 7.2a2.6 2.6 0 1 0 0-5.2 2.6 2.6 0 0 0 0 5.2zM2.8 14a5.2 4.6 0 0 1 10.4 0"},
    {"SysInfos", "M8 14.2A6.2 6.2 0 1 0 8 1.8a6.2 6.2 0 0 0 0 12.4zM8 7.2v4M8 4.8v.2"},
    {"SysDD", "M2 3h12v10H2zM2 6.3h12M2 9.6h12M6 6.3V13"},
    {"DBAnalyzer", "M7 11.8a4.8 4.8 0 1 0 0-9.6 4.8 4.8 0 0 0 0 9.6zM10.5 10.5l3.7 3.7"},
    {"History", "M3 3.2v3h3M3.2 6A5.6 5.6 0 1 1 2.6 9M8 5v3.3l2.3 1.5"},
};

/// The icons are lines in the colour of the list's texts.
wxBitmapBundle IconOf(const std::string& sPage) {
  const auto oIcon = std::ranges::find(Icons, std::string_view(sPage), &Icon::Page);
  if (oIcon == std::end(Icons)) return {};
  return ZelviewPictures::Icon(R"(<path fill="none" stroke=")" +
                               std::string(wxSystemSettings::GetAppearance().IsDark() ? "#b9c3cf" : "#4f6277") +
                               R"(" stroke-width="1.4" stroke-linecap="round" stroke-linejoin="round" d=")" +
                               std::string(oIcon->Path) + "\"/>");
}

/// The headings of the groups are quiet.
class Store : public wxDataViewListStore {
 public:
  explicit Store(std::function<bool(unsigned)> oIsHeading) : m_oIsHeading(std::move(oIsHeading)) {}
  bool GetAttrByRow(unsigned iRow, unsigned, wxDataViewItemAttr& oAttr) const override {
    if (!m_oIsHeading(iRow)) return false;
    oAttr.SetColour(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
    oAttr.SetBold(true);
    return true;
  }

 private:
  std::function<bool(unsigned)> m_oIsHeading;
};

/// Takes the keyboard where the arrow keys work.
class RowsCtrl : public wxDataViewListCtrl {
 public:
  using wxDataViewListCtrl::wxDataViewListCtrl;
  void SetFocus() override { Desktop::FocusRows(*this); }
};

constexpr int WidthOfIcons = 23;
constexpr int WidthOfTitles = 170;
constexpr int WidthOfCounts = 30;

}  // namespace

PageList::PageList(wxWindow* oParent) : wxPanel(oParent) {
  SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
  m_oList =
      new RowsCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE | wxDV_NO_HEADER | wxBORDER_NONE);
  auto* oStore = new Store([this](unsigned i) { return i < m_rows.size() && m_rows[i].Page.empty(); });
  m_oList->AssociateModel(oStore);
  oStore->DecRef();
  auto* oTitles = m_oList->AppendIconTextColumn("Page", wxDATAVIEW_CELL_INERT, FromDIP(WidthOfTitles));
  oTitles->GetRenderer()->DisableEllipsize();
  m_oList->AppendTextColumn("Count", wxDATAVIEW_CELL_INERT, FromDIP(WidthOfCounts), wxALIGN_RIGHT);
  Desktop::AccessibleName(*m_oList, "Pages");
  auto* oSizer = new wxBoxSizer(wxVERTICAL);
  oSizer->Add(m_oList, wxSizerFlags(1).Expand().Border(wxALL, FromDIP(6)));
  SetSizer(oSizer);

  for (const HostPages::Entry& oEntry : HostPages::All()) {
    if (oEntry.Group == nullptr) continue;
    const bool bFirst = m_rows.empty();
    if (!bFirst && m_rows.back().Title != oEntry.Group && *oEntry.Group != '\0') {
      const auto bThere = std::ranges::find(m_rows, std::string(oEntry.Group), &Row::Title) != m_rows.end();
      if (!bThere) m_rows.push_back({"", oEntry.Group});
    }
    m_rows.push_back({oEntry.Name, oEntry.Title});
  }
  Fill();
  Narrow(false);

  Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& oEvent) {
    SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_LISTBOX));
    for (std::size_t i = 0; i < m_rows.size(); ++i) Write(i);
    oEvent.Skip();
  });
  m_oList->Bind(wxEVT_CHAR_HOOK, [this](wxKeyEvent& oEvent) {
    const int iKey = oEvent.GetKeyCode();
    const bool bEnter = iKey == WXK_RETURN || iKey == WXK_NUMPAD_ENTER;
    const auto oMoves = {WXK_UP, WXK_DOWN, WXK_HOME, WXK_END, WXK_PAGEUP, WXK_PAGEDOWN};
    m_bBrowsing = std::ranges::find(oMoves, iKey) != oMoves.end() || (iKey > WXK_SPACE && iKey < WXK_DELETE);
    if (bEnter && OnEnter) return OnEnter();
    oEvent.Skip();
  });
  m_oList->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { OnSelected(); });
  m_oList->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent&) {
    if (OnEnter) OnEnter();
  });
}

void PageList::Fill() {
  for (std::size_t i = 0; i < m_rows.size(); ++i) {
    wxVector<wxVariant> oValues;
    oValues.push_back(wxVariant(wxDataViewIconText()));
    oValues.push_back(wxVariant(wxString()));
    m_oList->AppendItem(oValues);
    Write(i);
  }
}

void PageList::Write(std::size_t iRow) {
  const Row& oRow = m_rows[iRow];
  // A narrow list is cut off behind the icons: titles are there, but not seen.
  const std::string sTitle = !m_bNarrow ? oRow.Title : oRow.Page.empty() ? "" : "\u2003\u2003\u2003" + oRow.Title;
  wxVariant oText;
  oText << wxDataViewIconText(wxString::FromUTF8(sTitle), IconOf(oRow.Page));
  m_oList->SetValue(oText, static_cast<unsigned>(iRow), 0);
  m_oList->SetTextValue(oRow.Count == 0 ? wxString() : wxString::Format("%d", oRow.Count), static_cast<unsigned>(iRow),
                        1);
}

void PageList::OnSelected() {
  const int iRow = m_oList->GetSelectedRow();
  if (iRow < 0 || iRow == m_iSelected) return;
  const int iLast = static_cast<int>(m_rows.size()) - 1;
  if (m_rows[static_cast<std::size_t>(iRow)].Page.empty()) {
    // A heading is passed by the arrow keys, and no place to go to for the mouse.
    const int iNext = iRow < m_iSelected ? iRow - 1 : iRow + 1;
    const int iWanted = m_bBrowsing ? std::clamp(iNext, 0, iLast) : m_iSelected;
    if (iWanted < 0) return m_oList->UnselectAll();
    m_oList->SelectRow(static_cast<unsigned>(iWanted));
    // The toolkit is about to put its cursor onto the heading.
    CallAfter([this, iWanted] { Desktop::SelectRow(*m_oList, iWanted); });
    if (m_bBrowsing) OnSelected();
    return;
  }
  m_iSelected = iRow;
  const bool bBrowsing = std::exchange(m_bBrowsing, false);
  if (OnChoose) OnChoose(m_rows[static_cast<std::size_t>(iRow)].Page, bBrowsing);
}

void PageList::Select(const std::string& sPage) {
  const auto it =
      std::ranges::find_if(m_rows, [&](const Row& o) { return !o.Page.empty() && sPage.starts_with(o.Page); });
  if (it == m_rows.end()) return;
  m_iSelected = static_cast<int>(it - m_rows.begin());
  Desktop::SelectRow(*m_oList, m_iSelected);
}

void PageList::Count(const std::string& sPage, int iCount) {
  const auto it = std::ranges::find(m_rows, sPage, &Row::Page);
  if (it == m_rows.end() || it->Count == iCount) return;
  it->Count = iCount;
  Write(static_cast<std::size_t>(it - m_rows.begin()));
}

void PageList::Narrow(bool bNarrow) {
  if (bNarrow == m_bNarrow && GetMinWidth() > 0) return;
  m_bNarrow = bNarrow;
  m_oList->GetColumn(0)->SetWidth(FromDIP(bNarrow ? WidthOfIcons : WidthOfTitles));
  m_oList->GetColumn(1)->SetHidden(bNarrow);
  SetMinSize(wxSize(FromDIP(bNarrow ? WidthOfIcons + 20 : WidthOfTitles + WidthOfCounts + 14), -1));
  for (std::size_t i = 0; i < m_rows.size(); ++i) Write(i);
  if (GetParent()->GetSizer() != nullptr) GetParent()->Layout();
}

bool PageList::HasFocus() const {
  const wxWindow* oFocus = wxWindow::FindFocus();
  return oFocus == m_oList || (oFocus != nullptr && oFocus->GetParent() == m_oList);
}

}  // namespace ZELWbr3::Host
