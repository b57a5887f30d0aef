#pragma once

#include "zelwbr3/base/Checked.h"
#include "zelwbr3/framework/modPicture.h"

#include <string>

#include <wx/bmpbndl.h>

namespace ZELWbr3::Host {

/// zelview's image resource: the pictures of command-list items, drawn so that
/// they are clear on light and dark buttons alike.
class ZelviewPictures {
 public:
  /// The picture with a number of modPicture; an empty bundle for any other.
  static wxBitmapBundle Picture(Long lNumber);
  /// Any other picture of the window, out of its shapes: SVG, 16 units wide and high.
  static wxBitmapBundle Icon(const std::string& sShapes);
};

}  // namespace ZELWbr3::Host
