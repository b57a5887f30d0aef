#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/DataPage.h"
#include "zelwbr3/framework/PageType.h"

namespace ZELWbr3 {

/// A page that shows its file as it is: refreshes, closes and has command links,
/// but writes nothing into its document.
class ZELWBR3_EXPORT PageUnfilled : public DataPage {
 protected:
  void FillContent() override {}
};

}  // namespace ZELWbr3
