#include "zelwbr3/web/WebCommandlist.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/web/WebPlatform.h"

namespace ZELWbr3::Web {

WebCommandlist::WebCommandlist(WebPlatform& oPlatform) : m_oPlatform(oPlatform) { m_oPlatform.m_oCommandlist = this; }

WebCommandlist::~WebCommandlist() { m_oPlatform.m_oCommandlist = nullptr; }

void WebCommandlist::ItemsChanged() {
  if (std::exchange(m_bSending, true)) return;
  m_oPlatform.MessagePump().Post([&oPlatform = m_oPlatform] {
    WebCommandlist* oList = oPlatform.m_oCommandlist;
    if (oList == nullptr) return;
    oList->m_bSending = false;
    if (oList->Items() != oList->m_sent) oList->Send();
  });
}

void WebCommandlist::Send() {
  m_sent = Items();
  FlatListWriter oList;
  oList.Add("commands");
  for (const ZELCmd3::CommandItem& oItem : m_sent) {
    oList.Add(std::to_string(oItem.Key));
    oList.Add(Text::Clean(oItem.Text));
    oList.Add(std::to_string(oItem.Picture));
    oList.Add(oItem.Enabled ? 1U : 0U);
    oList.Add(oItem.Separator ? 1U : 0U);
  }
  m_oPlatform.SendList(oList);
}

}  // namespace ZELWbr3::Web
