#include "zelwbr3/framework/modLocal.h"

#include "zelwbr3/framework/modFormat.h"

namespace ZELWbr3::modLocal {

std::string LocaleString(const UserLocale& oLocale, Long lLCID, Long lItem) {
  std::string sItem = oLocale.LocaleInfo(lLCID, lItem);
  return sItem.substr(0, sItem.find('\0'));
}

Long LocaleNumber(const UserLocale& oLocale, Long lLCID, Long lItem) {
  return modFormat::ToLong(modFormat::Val(LocaleString(oLocale, lLCID, lItem)));
}

}  // namespace ZELWbr3::modLocal
