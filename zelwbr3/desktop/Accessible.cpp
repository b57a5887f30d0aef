#include "zelwbr3/desktop/Accessible.h"

#include <gtk/gtk.h>
#include <wx/window.h>

namespace ZELWbr3::Desktop {

namespace {

void Describe(AtkObject* oObject, std::string& sLines) {
  AtkStateSet* oStates = atk_object_ref_state_set(oObject);
  const bool bShows = atk_state_set_contains_state(oStates, ATK_STATE_SHOWING) != FALSE;
  g_object_unref(oStates);
  if (!bShows) return;
  const char* sName = atk_object_get_name(oObject);
  sLines += std::string(atk_role_get_name(atk_object_get_role(oObject))) + ": " + (sName ? sName : "") + "\n";
  for (int i = 0; i < atk_object_get_n_accessible_children(oObject); ++i) {
    AtkObject* oChild = atk_object_ref_accessible_child(oObject, i);
    if (oChild == nullptr) continue;
    Describe(oChild, sLines);
    g_object_unref(oChild);
  }
}

}  // namespace

void AccessibleName(const wxWindow& oWindow, const std::string& sName) {
  GtkWidget* oWidget = oWindow.GetHandle();
  // What scrolls is in a window that scrolls it.
  if (GTK_IS_SCROLLED_WINDOW(oWidget)) oWidget = gtk_bin_get_child(GTK_BIN(oWidget));
  atk_object_set_name(gtk_widget_get_accessible(oWidget), sName.c_str());
}

void AccessibleStatus(const wxWindow& oStatusBar, const std::string& sText) {
  AtkObject* oBar = gtk_widget_get_accessible(oStatusBar.GetHandle());
  atk_object_set_role(oBar, ATK_ROLE_STATUSBAR);
  atk_object_set_name(oBar, sText.c_str());
}

std::string AccessibleTree(const wxWindow& oWindow) {
  std::string sLines;
  Describe(gtk_widget_get_accessible(oWindow.GetHandle()), sLines);
  return sLines;
}

}  // namespace ZELWbr3::Desktop
