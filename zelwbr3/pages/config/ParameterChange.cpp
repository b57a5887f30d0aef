#include "zelwbr3/pages/config/ParameterChange.h"

#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"
#include "zelwbr3/framework/modFormat.h"

namespace ZELWbr3 {

std::vector<ParameterChange> ParameterChange::ReadAll(const ZELLib3::Parameter& oParameter, const UserLocale& oLocale) {
  std::vector<ParameterChange> changes;
  const Long lCount = oParameter.HistoryCount();
  for (Long k = 1; k <= lCount; ++k) {
    changes.push_back({modFormat::GeneralDate(oParameter.HistoryDate(k), oLocale), oParameter.HistoryValue(k),
                       oParameter.HistoryNewValue(k)});
  }
  return changes;
}

void ParameterChange::Write(const std::vector<Element*>& oCells, std::size_t iFirst) const {
  modCells::SetCellText(*oCells[iFirst], When);
  modCells::SetCellText(*oCells[iFirst + 1], Value);
  modCells::SetCellText(*oCells[iFirst + 2], NewValue);
}

}  // namespace ZELWbr3
