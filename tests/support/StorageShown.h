#pragma once

#include "tests/support/ConfiguredDatabase.h"
#include "tests/support/Shown.h"
#include "zelwbr3/pages/config/PageParameters.h"
#include "zelwbr3/pages/storage/PageDataArea.h"
#include "zelwbr3/pages/storage/PageLogArea.h"

#include <memory>

namespace ZELWbr3::Testing {

/// A control that shows the storage and configuration pages of a configured
/// instance, in pages so that sizes are easy to read.
class StorageShown : public Shown {
 protected:
  StorageShown() {
    Instance = Configured;
    Control->PreferredUnit(3);  // pages
  }

  void ShowDataArea() { Control->PageDataArea()->Show(Configured); }
  void ShowLogArea() { Control->PageLogArea()->Show(Configured); }
  void ShowParameters() { Control->PageParameters()->Show(Configured); }

  std::shared_ptr<ConfiguredDatabase> Configured = std::make_shared<ConfiguredDatabase>();
};

}  // namespace ZELWbr3::Testing
