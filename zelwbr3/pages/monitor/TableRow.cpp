#include "zelwbr3/pages/monitor/TableRow.h"

#include "zelwbr3/framework/PageController.h"

#include <stdexcept>

namespace ZELWbr3 {

Element& TableRow(const Element& oTable, std::size_t iIndex) {
  const Element* oBody = oTable.tBodies(0);
  Element* oRow = oBody == nullptr ? nullptr : oBody->rows(iIndex);
  if (oRow == nullptr) {
    throw std::runtime_error("The table \"" + oTable.id() + "\" of the page file has no row " + std::to_string(iIndex) +
                             " in its first body");
  }
  return *oRow;
}

}  // namespace ZELWbr3
