#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/CommandLists.h"

#include <string>
#include <vector>

namespace ZELWbr3::Web {

class WebPlatform;

/// A command list drawn by the shell as a toolbar. The platform outlives it.
class ZELWBR3_EXPORT WebCommandlist : public CommandLists {
 public:
  /// sRefused says why commands that change the instance cannot be used here; empty
  /// if they can.
  explicit WebCommandlist(WebPlatform& oPlatform, std::string sRefused = {});
  ~WebCommandlist() override;

  /// The user clicks an item. One that is refused says why.
  void Clicked(Long lKey);
  void Send();

 private:
  /// Pages change their list item by item: it is sent once, later.
  void ItemsChanged() override;

  bool IsRefused(const ZELCmd3::CommandItem& oItem) const { return oItem.Changes && !m_sRefused.empty(); }

  WebPlatform& m_oPlatform;
  std::string m_sRefused;
  std::vector<ZELCmd3::CommandItem> m_sent;
  bool m_bSending = false;
};

}  // namespace ZELWbr3::Web
