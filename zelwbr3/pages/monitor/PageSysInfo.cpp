#include "zelwbr3/pages/monitor/PageSysInfo.h"

namespace ZELWbr3 {

void PageSysInfo::FillHead() {
  Element& oTitle = RequiredElement("txtFormTitle");
  oTitle.innerText(oTitle.innerText() + " - " + SysInfo()->Name());
}

void PageSysInfo::BeginTable() {
  MakeTable("tabSysInfo", SysInfo()->IsRecord() ? BlockTable::View::Record : BlockTable::View::Columns);
}

}  // namespace ZELWbr3
