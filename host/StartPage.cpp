#include "host/StartPage.h"

#include "host/ProgramFiles.h"
#include "host/ZelviewPictures.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/desktop/Accessible.h"
#include "zelwbr3/desktop/ListFocus.h"

#include <algorithm>
#include <array>
#include <utility>

#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/wrapsizer.h>

namespace ZELWbr3::Host {

namespace {

/// Shapes besides colours, as on the pages.
constexpr const char* Waiting =
    R"(<circle cx="4" cy="8" r="1.4" fill="#808891"/><circle cx="8" cy="8" r="1.4" fill="#808891"/><circle cx="12" cy="8" r="1.4" fill="#808891"/>)";

struct State {
  const char* Text;
  const char* Shapes;  ///< SVG, 16 units wide and high
};
/// By level.
constexpr std::array<State, 4> States = {{
    {"Healthy",
     R"(<circle cx="8" cy="8" r="7" fill="#2e9e4f"/><path d="M4.5 8.3 L7 10.8 L11.6 5.6" fill="none" stroke="#fff"
      stroke-width="1.9" stroke-linecap="round" stroke-linejoin="round"/>)"},
    {"Attention", R"(<path d="M8 1 L15.5 14.5 H0.5 Z" fill="#c98500"/><path d="M8 6 V10 M8 12 V12.6" stroke="#fff"
      stroke-width="1.8" stroke-linecap="round"/>)"},
    {"Critical",
     R"(<path d="M5 1 H11 L15 5 V11 L11 15 H5 L1 11 V5 Z" fill="#d04437"/><path d="M8 4.5 V8.6 M8 11.2 V11.6"
      stroke="#fff" stroke-width="1.9" stroke-linecap="round"/>)"},
    {"Unknown",
     R"(<circle cx="8" cy="8" r="7" fill="#808891"/><path d="M6 6.2 A2 2 0 1 1 8.6 8.2 C8.1 8.5 8 8.8 8 9.4 M8 11.8 V12"
      fill="none" stroke="#fff" stroke-width="1.6" stroke-linecap="round"/>)"},
}};

wxString Shown(const std::string& sText) { return wxString::FromUTF8(Text::Clean(Text::OneLine(sText))); }

/// What an instance is called while its own name is not known: the last part of its
/// address.
std::string ShortName(const std::string& sInstance) {
  const auto iSlash = sInstance.find_last_of('/');
  return iSlash == sInstance.npos || iSlash + 1 == sInstance.size() ? sInstance : sInstance.substr(iSlash + 1);
}

/// Takes the keyboard where the arrow keys work.
class InstancesCtrl : public wxDataViewListCtrl {
 public:
  using wxDataViewListCtrl::wxDataViewListCtrl;
  void SetFocus() override { Desktop::FocusRows(*this); }
};

}  // namespace

StartPage::StartPage(wxWindow* oParent, Actions oActions)
    : wxPanel(oParent),
      m_oActions(std::move(oActions)),
      m_oChecks(ReportProgram(), [this](const auto& sInstance, const auto& oLight) { Seen(sInstance, oLight); }) {
  auto* oTitle = new wxStaticText(this, wxID_ANY, "Instances");
  oTitle->SetFont(oTitle->GetFont().Bold().Scaled(1.4F));
  m_oList = new InstancesCtrl(this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxDV_SINGLE);
  m_oList->AppendIconTextColumn("State", wxDATAVIEW_CELL_INERT, FromDIP(110));
  m_oList->AppendTextColumn("Instance", wxDATAVIEW_CELL_INERT, FromDIP(150));
  m_oList->AppendTextColumn("What Needs Attention", wxDATAVIEW_CELL_INERT, FromDIP(420));
  m_oList->AppendTextColumn("Opened As", wxDATAVIEW_CELL_INERT, FromDIP(330));
  Desktop::AccessibleName(*m_oList, "Instances opened lately");

  const auto AddButton = [this](wxSizer* oTo, const std::string& sText, const std::function<void()>& oWork) {
    auto* oButton = new wxButton(this, wxID_ANY, wxString::FromUTF8(sText));
    oButton->Bind(wxEVT_BUTTON, [oWork](wxCommandEvent&) { oWork(); });
    oTo->Add(oButton, wxSizerFlags().Border(wxRIGHT | wxTOP, FromDIP(6)));
    return oButton;
  };
  const auto WithSelected = [this](const std::function<void(const std::string&)>& oAction) {
    return [this, &oAction] {
      if (const auto sInstance = Selected()) oAction(*sInstance);
    };
  };
  auto* oOfOne = new wxWrapSizer;
  for (const auto& [sText, pAction] : {std::pair("&Open", &m_oActions.Open),
                                       {"Open in New &Window", &m_oActions.OpenWindow},
                                       {"Remove from List", &m_oActions.Remove}}) {
    m_buttons.push_back(AddButton(oOfOne, sText, WithSelected(*pAction)));
  }
  auto* oOthers = new wxWrapSizer;
  for (const auto& [sText, oWork] : m_oActions.Others) AddButton(oOthers, sText, oWork);

  auto* oSizer = new wxBoxSizer(wxVERTICAL);
  const auto oFlags = wxSizerFlags().Expand().Border(wxLEFT | wxRIGHT, FromDIP(20));
  oSizer->AddSpacer(FromDIP(18));
  oSizer->Add(oTitle, oFlags);
  oSizer->AddSpacer(FromDIP(10));
  oSizer->Add(m_oList, wxSizerFlags(oFlags).Proportion(1));
  oSizer->Add(oOfOne, oFlags);
  oSizer->AddSpacer(FromDIP(16));
  oSizer->Add(new wxStaticText(this, wxID_ANY, "Open another one:"), oFlags);
  oSizer->Add(oOthers, oFlags);
  oSizer->AddSpacer(FromDIP(20));
  SetSizer(oSizer);

  m_oList->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent&) {
    if (const auto sInstance = Selected()) m_oActions.Open(*sInstance);
  });
  m_oList->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { EnableButtons(); });
}

void StartPage::Begin(const std::vector<std::string>& instances) {
  const auto sSelected = Selected();
  m_instances = instances;
  m_oList->DeleteAllItems();
  for (std::size_t i = 0; i < m_instances.size(); ++i) {
    wxVector<wxVariant> oValues;
    oValues.push_back(wxVariant(wxDataViewIconText()));
    for (int iColumn = 1; iColumn < 4; ++iColumn) oValues.push_back(wxVariant(wxString()));
    m_oList->AppendItem(oValues);
    Write(i, wxString::FromUTF8("Checking…"), Waiting, {});
  }
  const auto it = std::ranges::find(m_instances, sSelected.value_or(""));
  if (!m_instances.empty()) {
    Desktop::SelectRow(*m_oList, it == m_instances.end() ? 0 : static_cast<int>(it - m_instances.begin()));
  }
  EnableButtons();
  m_oChecks.Start(m_instances);
}

void StartPage::End() { m_oChecks.Stop(); }

void StartPage::Write(std::size_t iRow, const wxString& sState, const std::string& sIcon,
                      const InstanceChecks::Light& oLight) {
  const auto i = static_cast<unsigned>(iRow);
  wxVariant oState;
  oState << wxDataViewIconText(sState, ZelviewPictures::Icon(sIcon));
  m_oList->SetValue(oState, i, 0);
  const std::string& sInstance = m_instances[iRow];
  m_oList->SetTextValue(Shown(oLight.Name.empty() ? ShortName(sInstance) : oLight.Name), i, 1);
  m_oList->SetTextValue(Shown(oLight.Text), i, 2);
  m_oList->SetTextValue(Shown(sInstance), i, 3);
}

void StartPage::Seen(const std::string& sInstance, const InstanceChecks::Light& oLight) {
  const auto it = std::ranges::find(m_instances, sInstance);
  if (it == m_instances.end()) return;
  const State& oState = States[static_cast<std::size_t>(oLight.Level)];
  Write(static_cast<std::size_t>(it - m_instances.begin()), oState.Text, oState.Shapes, oLight);
  OnLight();
}

std::vector<std::string> StartPage::Row(std::size_t i) const {
  wxVariant oState;
  m_oList->GetValue(oState, static_cast<unsigned>(i), 0);
  wxDataViewIconText oText;
  oText << oState;
  std::vector<std::string> texts = {oText.GetText().utf8_string()};
  for (unsigned iColumn = 1; iColumn < 4; ++iColumn) {
    texts.push_back(m_oList->GetTextValue(static_cast<unsigned>(i), iColumn).utf8_string());
  }
  return texts;
}

std::optional<std::string> StartPage::Selected() const {
  const int iRow = m_oList->GetSelectedRow();
  if (iRow < 0 || static_cast<std::size_t>(iRow) >= m_instances.size()) return std::nullopt;
  return m_instances[static_cast<std::size_t>(iRow)];
}

void StartPage::EnableButtons() {
  for (wxButton* oButton : m_buttons) oButton->Enable(Selected().has_value());
}

}  // namespace ZELWbr3::Host
