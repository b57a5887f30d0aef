#include "zelwbr3/desktop/DesktopScreenPointer.h"

#include <gtk/gtk.h>
#include <webkit2/webkit2.h>
#include <wx/utils.h>

namespace ZELWbr3::Desktop {

namespace {

/// All web views of the program that are on the screen.
void CollectWebViews(GtkWidget* oWidget, gpointer pViews) {
  if (WEBKIT_IS_WEB_VIEW(oWidget)) {
    if (gtk_widget_get_realized(oWidget)) static_cast<std::vector<GtkWidget*>*>(pViews)->push_back(oWidget);
  } else if (GTK_IS_CONTAINER(oWidget)) {
    gtk_container_forall(GTK_CONTAINER(oWidget), CollectWebViews, pViews);
  }
}

}  // namespace

/// A web view's window with the wait pointer; gets its own pointer back.
struct DesktopScreenPointer::Covered {
  explicit Covered(GtkWidget* oView) : oWindow(gtk_widget_get_window(oView)), oOwn(gdk_window_get_cursor(oWindow)) {
    g_object_ref(oWindow);
    if (oOwn != nullptr) g_object_ref(oOwn);
    GdkCursor* oWait = gdk_cursor_new_from_name(gdk_window_get_display(oWindow), "wait");
    gdk_window_set_cursor(oWindow, oWait);
    if (oWait != nullptr) g_object_unref(oWait);
  }
  ~Covered() {
    if (!gdk_window_is_destroyed(oWindow)) gdk_window_set_cursor(oWindow, oOwn);
    if (oOwn != nullptr) g_object_unref(oOwn);
    g_object_unref(oWindow);
  }

  GdkWindow* oWindow;
  GdkCursor* oOwn;
};

DesktopScreenPointer::DesktopScreenPointer() = default;

DesktopScreenPointer::~DesktopScreenPointer() { MousePointer(Default); }

void DesktopScreenPointer::MousePointer(Integer iPointer) {
  const bool bWas = m_iPointer == Hourglass;
  const bool bWill = iPointer == Hourglass;
  m_iPointer = iPointer;
  if (bWill && !bWas) {
    std::vector<GtkWidget*> oViews;
    GList* oWindows = gtk_window_list_toplevels();
    for (GList* o = oWindows; o != nullptr; o = o->next) CollectWebViews(GTK_WIDGET(o->data), &oViews);
    g_list_free(oWindows);
    for (GtkWidget* oView : oViews) m_oCovered.push_back(std::make_unique<Covered>(oView));
    wxBeginBusyCursor();
  }
  if (bWas && !bWill) {
    wxEndBusyCursor();
    m_oCovered.clear();
  }
}

}  // namespace ZELWbr3::Desktop
