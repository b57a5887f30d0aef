#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/base/Event.h"
#include "zelwbr3/base/Export.h"

#include <string>
#include <utility>
#include <vector>

namespace ZELCmd3 {

using ZELWbr3::Long;

/// One entry of a command list.
struct CommandItem {
  Long Key;          ///< unique within its page's list; reported by a click
  std::string Text;  ///< "&" marks the mnemonic; empty for a separator
  Long Picture;      ///< index into the host's image resource; 0 = none
  bool Enabled = true;
  bool Separator = false;
  bool Changes = false;  ///< its command changes the instance

  static CommandItem MakeChanging(Long lKey, std::string sText, Long lPicture) {
    return {lKey, std::move(sText), lPicture, true, false, true};
  }
  static CommandItem MakeSeparator(Long lKey) { return {lKey, "", 0, true, true}; }
  bool operator==(const CommandItem&) const = default;
};

/// The host's command list: keeps one list of items per page (by page type) and
/// shows the list of the page in front.
class ZELWBR3_EXPORT FCommandlist {
 public:
  virtual ~FCommandlist() = default;

  virtual bool HasList(Long lPageType) const = 0;
  virtual void Add(Long lPageType, const CommandItem& oItem) = 0;
  /// An unknown key is ignored.
  virtual void Enable(Long lPageType, Long lKey, bool bEnabled) = 0;
  /// Removes the page's own items.
  virtual void Reset(Long lPageType) = 0;
  /// Shows the list of this page from now on; an empty list if it has none.
  virtual void BringToFront(Long lPageType) = 0;
  /// The items shown now.
  virtual std::vector<CommandItem> Items() const = 0;

  /// A click on an enabled item of the list shown: the page type and the item.
  ZELWbr3::Event<Long, const CommandItem&> ItemClick;
};

}  // namespace ZELCmd3
