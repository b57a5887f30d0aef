#pragma once

#include "host/HostPages.h"

#include <functional>
#include <string>
#include <vector>

#include <wx/dataview.h>
#include <wx/panel.h>

namespace ZELWbr3::Host {

/// zelview's list of pages at the left: in groups, each page with an icon and,
/// where something needs attention, a count. A narrow list shows the icons only.
class PageList : public wxPanel {
 public:
  explicit PageList(wxWindow* oParent);

  /// Called with the page that the user has chosen. With the arrow keys the user
  /// looks at pages (bBrowsing): the keyboard stays here.
  std::function<void(const std::string& sPage, bool bBrowsing)> OnChoose;
  /// Called on Enter or a double click.
  std::function<void()> OnEnter;

  /// Selects the page with this name, or the one whose pages begin with it.
  void Select(const std::string& sPage);
  /// How many findings concern a page; none for 0.
  void Count(const std::string& sPage, int iCount);
  void Narrow(bool bNarrow);
  bool IsNarrow() const { return m_bNarrow; }
  /// The list itself, which takes the keyboard.
  wxWindow* List() const { return m_oList; }
  bool HasFocus() const override;
  void SetFocus() override { m_oList->SetFocus(); }

 private:
  struct Row {
    std::string Page;  ///< empty for the heading of a group
    std::string Title;
    int Count = 0;
  };

  void Fill();
  void Write(std::size_t iRow);
  void OnSelected();

  wxDataViewListCtrl* m_oList;
  std::vector<Row> m_rows;
  int m_iSelected = -1;
  bool m_bNarrow = false;
  /// The last key pressed here chooses a row.
  bool m_bBrowsing = false;
};

}  // namespace ZELWbr3::Host
