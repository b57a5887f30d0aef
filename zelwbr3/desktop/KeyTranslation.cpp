#include "zelwbr3/desktop/KeyTranslation.h"

#include <gdk/gdk.h>
#include <gdk/gdkkeysyms.h>
#include <wx/event.h>

#include <algorithm>
#include <array>

namespace ZELWbr3::Desktop {

namespace {

struct Row {
  guint iSymbol;
  int iCode;
};

constexpr std::array Codes = {
    Row{GDK_KEY_BackSpace, 8},      Row{GDK_KEY_Tab, 9},
    Row{GDK_KEY_ISO_Left_Tab, 9},   Row{GDK_KEY_Clear, 12},
    Row{GDK_KEY_KP_Begin, 12},      Row{GDK_KEY_Return, 13},
    Row{GDK_KEY_KP_Enter, 13},      Row{GDK_KEY_ISO_Enter, 13},
    Row{GDK_KEY_Shift_L, 16},       Row{GDK_KEY_Shift_R, 16},
    Row{GDK_KEY_Control_L, 17},     Row{GDK_KEY_Control_R, 17},
    Row{GDK_KEY_Alt_L, 18},         Row{GDK_KEY_Alt_R, 18},
    Row{GDK_KEY_Pause, 19},         Row{GDK_KEY_Caps_Lock, 20},
    Row{GDK_KEY_Escape, 27},        Row{GDK_KEY_space, 32},
    Row{GDK_KEY_KP_Space, 32},      Row{GDK_KEY_Page_Up, 33},
    Row{GDK_KEY_KP_Page_Up, 33},    Row{GDK_KEY_Page_Down, 34},
    Row{GDK_KEY_KP_Page_Down, 34},  Row{GDK_KEY_End, 35},
    Row{GDK_KEY_KP_End, 35},        Row{GDK_KEY_Home, 36},
    Row{GDK_KEY_KP_Home, 36},       Row{GDK_KEY_Left, 37},
    Row{GDK_KEY_KP_Left, 37},       Row{GDK_KEY_Up, 38},
    Row{GDK_KEY_KP_Up, 38},         Row{GDK_KEY_Right, 39},
    Row{GDK_KEY_KP_Right, 39},      Row{GDK_KEY_Down, 40},
    Row{GDK_KEY_KP_Down, 40},       Row{GDK_KEY_Print, 44},
    Row{GDK_KEY_Insert, 45},        Row{GDK_KEY_KP_Insert, 45},
    Row{GDK_KEY_Delete, 46},        Row{GDK_KEY_KP_Delete, 46},
    Row{GDK_KEY_Help, 47},          Row{GDK_KEY_Super_L, 91},
    Row{GDK_KEY_Super_R, 92},       Row{GDK_KEY_Menu, 93},
    Row{GDK_KEY_KP_Multiply, 106},  Row{GDK_KEY_KP_Add, 107},
    Row{GDK_KEY_KP_Separator, 108}, Row{GDK_KEY_KP_Subtract, 109},
    Row{GDK_KEY_KP_Decimal, 110},   Row{GDK_KEY_KP_Divide, 111},
    Row{GDK_KEY_Num_Lock, 144},     Row{GDK_KEY_Scroll_Lock, 145},
    Row{GDK_KEY_semicolon, 186},    Row{GDK_KEY_equal, 187},
    Row{GDK_KEY_comma, 188},        Row{GDK_KEY_minus, 189},
    Row{GDK_KEY_period, 190},       Row{GDK_KEY_slash, 191},
    Row{GDK_KEY_grave, 192},        Row{GDK_KEY_bracketleft, 219},
    Row{GDK_KEY_backslash, 220},    Row{GDK_KEY_bracketright, 221},
    Row{GDK_KEY_apostrophe, 222},
};

int CodeOf(guint iSymbol) {
  iSymbol = gdk_keyval_to_upper(iSymbol);
  if ((iSymbol >= GDK_KEY_A && iSymbol <= GDK_KEY_Z) || (iSymbol >= GDK_KEY_0 && iSymbol <= GDK_KEY_9)) {
    return static_cast<int>(iSymbol);
  }
  if (iSymbol >= GDK_KEY_KP_0 && iSymbol <= GDK_KEY_KP_9) return static_cast<int>(iSymbol - GDK_KEY_KP_0) + 96;
  if (iSymbol >= GDK_KEY_F1 && iSymbol <= GDK_KEY_F24) return static_cast<int>(iSymbol - GDK_KEY_F1) + 112;
  const auto it = std::ranges::find(Codes, iSymbol, &Row::iSymbol);
  return it == Codes.end() ? 0 : it->iCode;
}

int CodeOf(guint iSymbol, guint iHardwareCode, gint iUserGroup) {
  int iCode = CodeOf(iSymbol);
  // A shifted sign ("!") and a letter that is not Latin: what the key bears
  // unshifted, in the user's layout and then in the first one.
  GdkKeymap* oKeymap = gdk_keymap_get_for_display(gdk_display_get_default());
  for (const gint iGroup : {iUserGroup, 0}) {
    if (iCode != 0) break;
    const GdkKeymapKey oKey = {iHardwareCode, iGroup, 0};
    iCode = CodeOf(gdk_keymap_lookup_key(oKeymap, &oKey));
  }
  return iCode;
}

}  // namespace

Key Translate(const GdkEventKey& oEvent) {
  return {CodeOf(oEvent.keyval, oEvent.hardware_keycode, oEvent.group),
          (oEvent.state & (GDK_CONTROL_MASK | GDK_MOD1_MASK | GDK_SUPER_MASK)) != 0};
}

Key Translate(const wxKeyEvent& oEvent) {
  return {CodeOf(oEvent.GetRawKeyCode(), oEvent.GetRawKeyFlags(), 0), oEvent.HasAnyModifiers()};
}

}  // namespace ZELWbr3::Desktop
