#include "zelwbr3/web/WebCommandlist.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/FlatList.h"
#include "zelwbr3/web/WebPlatform.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Web {

WebCommandlist::WebCommandlist(WebPlatform& oPlatform, std::string sRefused)
    : m_oPlatform(oPlatform), m_sRefused(std::move(sRefused)) {
  m_oPlatform.m_oCommandlist = this;
}

WebCommandlist::~WebCommandlist() { m_oPlatform.m_oCommandlist = nullptr; }

void WebCommandlist::Clicked(Long lKey) {
  const auto items = Items();
  const auto it = std::ranges::find(items, lKey, &ZELCmd3::CommandItem::Key);
  if (it == items.end() || !IsRefused(*it)) {
    Click(lKey);
    return;
  }
  m_oPlatform.MessageBox().Show(m_sRefused, "Not allowed", MessageBox::Buttons::OK, MessageBox::Icon::Exclamation);
}

void WebCommandlist::ItemsChanged() {
  if (std::exchange(m_bSending, true)) return;
  m_oPlatform.MessagePump().Post([&oPlatform = m_oPlatform] {
    WebCommandlist* oList = oPlatform.m_oCommandlist;
    if (oList == nullptr) return;
    oList->m_bSending = false;
    if (oList->Drawn() != oList->m_sent) oList->Send();
  });
}

void WebCommandlist::Send() {
  m_sent = Drawn();
  FlatListWriter oList;
  oList.Add("commands");
  for (const ZELCmd3::CommandItem& oItem : m_sent) {
    oList.Add(std::to_string(oItem.Key));
    oList.Add(Text::Clean(oItem.Text));
    oList.Add(std::to_string(oItem.Picture));
    oList.Add(oItem.Enabled && !IsRefused(oItem) ? 1U : 0U);
    oList.Add(oItem.Separator ? 1U : 0U);
    oList.Add(IsRefused(oItem) ? m_sRefused : "");
  }
  m_oPlatform.SendList(oList);
}

}  // namespace ZELWbr3::Web
