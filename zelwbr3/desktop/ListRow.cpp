#include "zelwbr3/desktop/ListRow.h"

#include <gtk/gtk.h>
#include <wx/listbox.h>

namespace ZELWbr3::Desktop {

void SelectRow(wxListBox& oList, int iRow) {
  oList.SetSelection(iRow);
  GtkTreePath* oPath = gtk_tree_path_new_from_indices(iRow, -1);
  gtk_tree_view_set_cursor(GTK_TREE_VIEW(gtk_bin_get_child(GTK_BIN(oList.GetHandle()))), oPath, nullptr, FALSE);
  gtk_tree_path_free(oPath);
}

}  // namespace ZELWbr3::Desktop
