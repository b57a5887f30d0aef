#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/PageType.h"
#include "zelwbr3/pages/storage/PageStorageArea.h"

namespace ZELWbr3 {

/// The log area.
class ZELWBR3_EXPORT PageLogArea : public PageStorageArea {
 public:
  static constexpr int Type = zelWebBrowserPageLogArea;

  PageLogArea() : PageStorageArea(LogStorageArea) {}
};

}  // namespace ZELWbr3
