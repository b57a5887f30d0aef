#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/pages/storage/PageStorageArea.h"

namespace ZELWbr3 {

/// The data area.
class ZELWBR3_EXPORT PageDataArea : public PageStorageArea {
 public:
  static constexpr int Type = zelWebBrowserPageDataArea;

  PageDataArea() : PageStorageArea(DataStorageArea) {}
};

}  // namespace ZELWbr3
