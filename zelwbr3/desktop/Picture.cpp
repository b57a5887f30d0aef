#include "zelwbr3/desktop/Picture.h"

#include <gtk/gtk.h>
#include <wx/window.h>

#include <cstring>

namespace ZELWbr3::Desktop {

wxImage TakePicture(wxWindow& oWindow) {
  GtkWidget* oWidget = oWindow.GetHandle();
  const int iWidth = gtk_widget_get_allocated_width(oWidget);
  const int iHeight = gtk_widget_get_allocated_height(oWidget);
  cairo_surface_t* oSurface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, iWidth, iHeight);
  cairo_t* oContext = cairo_create(oSurface);
  gtk_widget_draw(oWidget, oContext);
  cairo_destroy(oContext);
  cairo_surface_flush(oSurface);

  wxImage oImage(iWidth, iHeight);
  const unsigned char* pSource = cairo_image_surface_get_data(oSurface);
  const int iStride = cairo_image_surface_get_stride(oSurface);
  unsigned char* pTarget = oImage.GetData();
  for (int y = 0; y < iHeight; ++y) {
    for (int x = 0; x < iWidth; ++x) {
      std::uint32_t lPixel = 0;
      std::memcpy(&lPixel, pSource + std::ptrdiff_t{y} * iStride + std::ptrdiff_t{x} * 4, sizeof lPixel);
      *pTarget++ = static_cast<unsigned char>(lPixel >> 16);
      *pTarget++ = static_cast<unsigned char>(lPixel >> 8);
      *pTarget++ = static_cast<unsigned char>(lPixel);
    }
  }
  cairo_surface_destroy(oSurface);
  return oImage;
}

}  // namespace ZELWbr3::Desktop
