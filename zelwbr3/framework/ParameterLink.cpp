#include "zelwbr3/framework/ParameterLink.h"

#include "zelwbr3/framework/Given.h"
#include "zelwbr3/framework/modCells.h"

namespace ZELWbr3 {

bool ParameterLink::IsClicked(const std::string& sID) {
  return modCells::AfterPrefix("PARAM", sID, m_sName) && !m_sName.empty();
}

void ParameterLink::Open(PageSite& oBrowser, const std::shared_ptr<ZELLib3::Database>& oDatabase) const {
  oBrowser.ShowParameter(oDatabase, Given(Given(oDatabase->Parameters())->Item(m_sName)));
}

}  // namespace ZELWbr3
