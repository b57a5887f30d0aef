#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/CommandLists.h"

namespace ZELWbr3::Headless {

/// A command list without a screen; ClickItem plays the user.
class ZELWBR3_EXPORT HeadlessCommandlist : public CommandLists {
 public:
  /// Clicks the item with that key; clicking a disabled item does nothing. Throws
  /// std::invalid_argument, which names the key, if the list shown has no such
  /// item.
  void ClickItem(Long lKey);

  /// The items shown have changed.
  Event<> Changed;

 private:
  void ItemsChanged() override { Changed.Raise(); }
};

}  // namespace ZELWbr3::Headless
