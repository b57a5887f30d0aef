#pragma once

#include "zelwbr3/base/Event.h"
#include "zelwbr3/framework/CommandLists.h"

namespace ZELWbr3::Headless {

/// A command list without a screen; the user is played by ClickItem.
class HeadlessCommandlist : public CommandLists {
 public:
  /// A click on the item with that key; on a disabled one nothing happens.
  /// Throws std::invalid_argument, which names the key, when the list shown has
  /// no such item.
  void ClickItem(Long lKey);

  /// The items shown have changed.
  Event<> Changed;

 private:
  void ItemsChanged() override { Changed.Raise(); }
};

}  // namespace ZELWbr3::Headless
