#include "zelwbr3/framework/CommandLists.h"

#include <algorithm>

namespace ZELWbr3 {

using ZELCmd3::CommandItem;

namespace {

auto WithKey(Long lKey) {
  return [lKey](const CommandItem& oItem) { return oItem.Key == lKey; };
}

}  // namespace

bool CommandLists::HasList(Long lPageType) const { return m_lists.contains(lPageType); }

void CommandLists::Add(Long lPageType, const CommandItem& oItem) {
  m_lists[lPageType].push_back(oItem);
  Changed(lPageType);
}

void CommandLists::Enable(Long lPageType, Long lKey, bool bEnabled) {
  const auto oList = m_lists.find(lPageType);
  if (oList == m_lists.end()) return;
  const auto oItem = std::ranges::find_if(oList->second, WithKey(lKey));
  if (oItem == oList->second.end() || oItem->Enabled == bEnabled) return;
  oItem->Enabled = bEnabled;
  Changed(lPageType);
}

void CommandLists::Reset(Long lPageType) {
  if (m_lists.erase(lPageType) > 0) Changed(lPageType);
}

void CommandLists::BringToFront(Long lPageType) {
  const auto oBefore = Items();
  m_lFront = lPageType;
  if (Items() != oBefore) ItemsChanged();
}

std::vector<CommandItem> CommandLists::Items() const {
  const auto oList = m_lists.find(m_lFront);
  return oList == m_lists.end() ? std::vector<CommandItem>() : oList->second;
}

void CommandLists::LeaveOut(Long lPicture) {
  m_lLeftOut = lPicture;
  ItemsChanged();
}

std::vector<CommandItem> CommandLists::Drawn() const {
  std::vector<CommandItem> oItems;
  for (const CommandItem& oItem : Items()) {
    if (!oItem.Separator && m_lLeftOut && oItem.Picture == *m_lLeftOut) continue;
    if (oItem.Separator && (oItems.empty() || oItems.back().Separator)) continue;
    oItems.push_back(oItem);
  }
  if (!oItems.empty() && oItems.back().Separator) oItems.pop_back();
  return oItems;
}

bool CommandLists::Click(Long lKey) {
  const auto oItems = Items();  // a handler may change the list
  const auto oItem = std::ranges::find_if(oItems, WithKey(lKey));
  if (oItem == oItems.end() || oItem->Separator || !oItem->Enabled) return false;
  ItemClick.Raise(m_lFront, *oItem);
  return true;
}

void CommandLists::Changed(Long lPageType) {
  if (lPageType == m_lFront) ItemsChanged();
}

}  // namespace ZELWbr3
