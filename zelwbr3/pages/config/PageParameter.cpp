#include "zelwbr3/pages/config/PageParameter.h"

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modCheckCommands.h"
#include "zelwbr3/framework/modElement.h"
#include "zelwbr3/pages/config/ParameterChange.h"

#include <array>
#include <stdexcept>

namespace ZELWbr3 {

using modElement::ShowElement;

namespace {

std::string_view ClassOfGroup(Long lGroup) {
  static constexpr std::array<std::string_view, 4> Classes = {"zelParamGenLrg", "zelParamExtLrg", "zelParamSupLrg",
                                                              "zelParamInfLrg"};
  const bool bKnown = lGroup >= 0 && lGroup < static_cast<int>(Classes.size());
  return bKnown ? Classes[static_cast<std::size_t>(lGroup)] : "zelParamNonLrg";
}

}  // namespace

void PageParameter::Show(std::shared_ptr<ZELLib3::Database> oDatabase, std::shared_ptr<ZELLib3::Parameter> oParameter) {
  m_oParameter = std::move(oParameter);
  DataPage::Show(std::move(oDatabase));
}

void PageParameter::Hide() {
  m_oParameter.reset();
  DataPage::Hide();
}

void PageParameter::CleanUp() {
  m_oParameter.reset();
  DataPage::CleanUp();
}

void PageParameter::FillContent() {
  NewCommandlist();
  if (m_oParameter == nullptr) throw std::logic_error("The page Parameter has no parameter to show");
  if (!m_oParameter->Exists()) return ReportLastError();

  // Elements missing in the page file are skipped.
  const auto Find = [this](std::string_view sID) { return Document()->all().item(sID); };
  if (Element* oName = Find("celName")) oName->className(ClassOfGroup(m_oParameter->Group()));
  SetTextIfPresent("txtName", m_oParameter->Name());
  const std::string sValue = m_oParameter->Value();
  SetTextIfPresent("txtActVal", sValue);
  if (const std::string sNewValue = NewValue(); sNewValue != sValue) {
    SetTextIfPresent("txtNewVal", sNewValue);
    ShowElement(Find("rowNewVal"), true);
  }
  const std::string sExplanation = m_oParameter->Explanation();
  SetTextIfPresent("txtExplain", sExplanation);
  ShowElement(Find("rowExplain"), !sExplanation.empty());
  FillHistory();
}

std::string PageParameter::NewValue() const {
  return modCheckCommands::CheckOnlineFeature(Database()) ? m_oParameter->NewValueOnline() : m_oParameter->NewValue();
}

void PageParameter::FillHistory() {
  Element* oTable = Document()->all().item("tabHistory");
  Element* oTemplate = oTable == nullptr ? nullptr : oTable->all().item("rowTemplate");
  if (oTemplate == nullptr) return;
  for (const ParameterChange& oChange : ParameterChange::ReadAll(*m_oParameter, Locale())) {
    oChange.Write(modCells::AddRowCells(*oTemplate, 3), 0);
  }
}

bool PageParameter::OnClick(const std::string& sID) {
  if (sID != "btnClose") return false;
  CarryOut(CommandClose);
  return true;
}

}  // namespace ZELWbr3
