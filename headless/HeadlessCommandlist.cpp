#include "headless/HeadlessCommandlist.h"

#include <stdexcept>
#include <string>

namespace ZELWbr3::Headless {

void HeadlessCommandlist::ClickItem(Long lKey) {
  if (!Click(lKey)) {
    throw std::invalid_argument("The command list shown has no enabled item with the key " + std::to_string(lKey));
  }
}

}  // namespace ZELWbr3::Headless
