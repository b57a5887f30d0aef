#include "zelwbr3/pages/monitor/PageSysInfo.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/PageController.h"
#include "zelwbr3/framework/modCells.h"

namespace ZELWbr3 {

void PageSysInfo::FillHead() {
  Element& oTitle = RequiredElement("txtFormTitle");
  oTitle.innerText(oTitle.innerText() + " - " + Text::Isolated(modCells::Known(SysInfo()->Name())));
}

void PageSysInfo::BeginTable() {
  MakeTable("tabSysInfo", SysInfo()->IsRecord() ? BlockTable::View::Record : BlockTable::View::Columns);
}

}  // namespace ZELWbr3
