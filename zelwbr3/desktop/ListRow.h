#pragma once

class wxListBox;

namespace ZELWbr3::Desktop {

/// Selects a row of a list and continues there with the arrow keys: the toolkit's
/// own SetSelection leaves the keyboard's place behind.
void SelectRow(wxListBox& oList, int iRow);

}  // namespace ZELWbr3::Desktop
