#pragma once

#include "zelwbr3/framework/CommandLists.h"

#include <vector>

namespace ZELWbr3::Web {

class WebPlatform;

/// A command list drawn by the shell as a toolbar. The platform outlives it.
class WebCommandlist : public CommandLists {
 public:
  explicit WebCommandlist(WebPlatform& oPlatform);
  ~WebCommandlist() override;

  /// The user clicks an item.
  void Clicked(Long lKey) { Click(lKey); }
  void Send();

 private:
  /// Pages change their list item by item: it is sent once, later.
  void ItemsChanged() override;

  WebPlatform& m_oPlatform;
  std::vector<ZELCmd3::CommandItem> m_sent;
  bool m_bSending = false;
};

}  // namespace ZELWbr3::Web
