#include "host/ZelviewPictures.h"

#include "host/CommandPictures.h"

namespace ZELWbr3::Host {

namespace {

wxBitmapBundle Drawn(const std::string& sSVG) { return wxBitmapBundle::FromSVG(sSVG.c_str(), wxSize(16, 16)); }

}  // namespace

wxBitmapBundle ZelviewPictures::Picture(Long lNumber) {
  const std::string sSVG = CommandPicture(lNumber);
  return sSVG.empty() ? wxBitmapBundle() : Drawn(sSVG);
}

wxBitmapBundle ZelviewPictures::Icon(const std::string& sShapes) { return Drawn(IconSVG(sShapes)); }

}  // namespace ZELWbr3::Host
