#include "zelwbr3/desktop/ListFocus.h"

#include <gtk/gtk.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

namespace {

GtkWidget* Rows(const wxWindow& oList) {
  GtkWidget* oWidget = oList.GetHandle();
  return GTK_IS_SCROLLED_WINDOW(oWidget) ? gtk_bin_get_child(GTK_BIN(oWidget)) : oWidget;
}

}  // namespace

void FocusRows(const wxWindow& oList) { gtk_widget_grab_focus(Rows(oList)); }

void SelectRow(const wxWindow& oList, int iRow) {
  GtkTreePath* oPath = gtk_tree_path_new_from_indices(iRow, -1);
  gtk_tree_view_set_cursor(GTK_TREE_VIEW(Rows(oList)), oPath, nullptr, FALSE);
  gtk_tree_path_free(oPath);
}

}  // namespace ZELWbr3::Desktop
