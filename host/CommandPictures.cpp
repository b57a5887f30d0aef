#include "host/CommandPictures.h"

#include "zelwbr3/framework/modPicture.h"

#include <algorithm>
#include <iterator>

namespace ZELWbr3::Host {

namespace {

struct Drawing {
  int Number;
  std::string_view Shapes;  ///< SVG, 16 units wide and high
};

constexpr Drawing Drawings[] = {
    {modPicture::Offline, R"(<circle cx="8" cy="8" r="7" fill="#d04437"/>
      <rect x="4" y="6.75" width="8" height="2.5" rx="0.5" fill="#fff"/>)"},
    {modPicture::Admin, R"(<circle cx="8" cy="8" r="7" fill="#c98500"/>
      <path d="M6 7.5 V5.8 A2 2 0 0 1 10 5.8 V7.5" fill="none" stroke="#fff" stroke-width="1.4"/>
      <rect x="4.75" y="7.25" width="6.5" height="4.5" rx="0.6" fill="#fff"/>)"},
    {modPicture::Online, R"(<circle cx="8" cy="8" r="7" fill="#2e9e4f"/>
      <path d="M4.5 8.3 L7 10.8 L11.6 5.6" fill="none" stroke="#fff" stroke-width="1.9"
        stroke-linecap="round" stroke-linejoin="round"/>)"},
    {modPicture::RestartUntil, R"(<circle cx="8" cy="8" r="6.2" fill="none" stroke="#3b82d6" stroke-width="1.6"/>
      <path d="M8 4.2 V8 L10.6 9.6" fill="none" stroke="#3b82d6" stroke-width="1.6"
        stroke-linecap="round" stroke-linejoin="round"/>)"},
    {modPicture::Close, R"(<path d="M4 4 L12 12 M12 4 L4 12" fill="none" stroke="#808891" stroke-width="2"
        stroke-linecap="round"/>)"},
    {modPicture::ReadMore, R"(<path d="M8 2.5 V12.5 M3.8 8.6 L8 12.8 L12.2 8.6" fill="none" stroke="#3b82d6"
        stroke-width="2" stroke-linecap="round" stroke-linejoin="round"/>)"},
    {modPicture::ReadAll, R"(<path d="M8 1.5 V9.5 M3.8 5.8 L8 10 L12.2 5.8 M3 14 H13" fill="none" stroke="#3b82d6"
        stroke-width="2" stroke-linecap="round" stroke-linejoin="round"/>)"},
    {modPicture::Start, R"(<path d="M4 2.5 L13.5 8 L4 13.5 Z" fill="#2e9e4f"/>)"},
    {modPicture::Stop, R"(<rect x="3" y="3" width="10" height="10" rx="1" fill="#d04437"/>)"},
    {modPicture::Delete,
     R"(<path d="M3 4.5 H13 M6.2 4.2 V2.5 H9.8 V4.2 M4.4 4.8 L5 13.5 H11 L11.6 4.8 M6.9 7 V11.2 M9.1 7 V11.2"
        fill="none" stroke="#808891" stroke-width="1.4" stroke-linecap="round" stroke-linejoin="round"/>)"},
};

}  // namespace

std::string IconSVG(std::string_view sShapes) {
  return R"(<svg xmlns="http://www.w3.org/2000/svg" width="16" height="16" viewBox="0 0 16 16">)" +
         std::string(sShapes) + "</svg>";
}

std::string CommandPicture(Long lNumber) {
  const auto oDrawing = std::ranges::find_if(Drawings, [&](const Drawing& o) { return lNumber == o.Number; });
  if (oDrawing == std::end(Drawings)) return {};
  return IconSVG(oDrawing->Shapes);
}

}  // namespace ZELWbr3::Host
