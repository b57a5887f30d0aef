#include "host/ZelviewPictures.h"

#include "host/CommandPictures.h"

namespace ZELWbr3::Host {

wxBitmapBundle ZelviewPictures::Picture(Long lNumber) {
  const std::string sSVG = CommandPicture(lNumber);
  return sSVG.empty() ? wxBitmapBundle() : wxBitmapBundle::FromSVG(sSVG.c_str(), wxSize(16, 16));
}

}  // namespace ZELWbr3::Host
