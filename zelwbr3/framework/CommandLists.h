#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/platform/FCommandlist.h"

#include <map>
#include <optional>
#include <vector>

namespace ZELWbr3 {

/// The state of a command list: the items of each page and which page is in
/// front. A platform adds the drawing.
class ZELWBR3_EXPORT CommandLists : public ZELCmd3::FCommandlist {
 public:
  bool HasList(Long lPageType) const override;
  void Add(Long lPageType, const ZELCmd3::CommandItem& oItem) override;
  void Enable(Long lPageType, Long lKey, bool bEnabled) override;
  void Reset(Long lPageType) override;
  void BringToFront(Long lPageType) override;
  std::vector<ZELCmd3::CommandItem> Items() const override;

  /// Items with this picture are not drawn, because the host offers the same at
  /// another place.
  void LeaveOut(Long lPicture);

 protected:
  /// The items shown have changed.
  virtual void ItemsChanged() = 0;
  /// The items to be drawn, with separators only between others.
  std::vector<ZELCmd3::CommandItem> Drawn() const;
  /// Reports a click on the item with this key of the list shown. False if there
  /// is no such item, or it is a separator or disabled.
  bool Click(Long lKey);

 private:
  void Changed(Long lPageType);

  std::map<Long, std::vector<ZELCmd3::CommandItem>> m_lists;
  Long m_lFront;
  std::optional<Long> m_lLeftOut;
};

}  // namespace ZELWbr3
