#include "zelwbr3/framework/modCmdEnum.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/modFormat.h"

#include <charconv>

namespace ZELWbr3::modCmdEnum {

namespace {

constexpr std::string_view Prefix = "guicmd";

}  // namespace

std::string CommandLink(Long lCommand, std::string_view sLabel) {
  return "<a href=\"\" class=\"zelLnkFunction\" id=\"" + std::string(Prefix) + modFormat::Padded(lCommand, 5) + "\">" +
         Text::EscapeHTML(sLabel) + "</a>";
}

std::optional<Long> LinkedCommand(std::string_view sID) {
  if (!sID.starts_with(Prefix)) return std::nullopt;
  sID.remove_prefix(Prefix.size());
  if (sID.size() < 5 || sID.find_first_not_of("0123456789") != std::string_view::npos) return std::nullopt;
  std::int32_t lCommand = 0;
  if (std::from_chars(sID.data(), sID.data() + sID.size(), lCommand).ec != std::errc()) return std::nullopt;
  return lCommand;
}

}  // namespace ZELWbr3::modCmdEnum
