#pragma once

#include "zelwbr3/shell/Browser.h"

#include <initializer_list>
#include <string>

namespace ZELWbr3::Testing {

/// What stands on a control's screen, read as a user would.
class Screen {
 public:
  /// Null when the document in front has no such element.
  Element* Find(const std::string& sID) const;
  /// An element of the document in front, or of one of its tables; throws when
  /// there is none.
  Element& At(const std::string& sID) const;
  Element& In(const std::string& sTable, const std::string& sID) const;
  std::string Text(const std::string& sID) const { return At(sID).innerText(); }
  std::string ClassOf(const std::string& sID) const { return At(sID).className(); }
  bool IsShown(const std::string& sID) const;
  using IDs = std::initializer_list<const char*>;
  /// The texts of elements, with "|" in between.
  std::string Texts(IDs ids) const;
  /// Those of the elements that are shown, with blanks in between.
  std::string ShownOf(IDs ids) const;
  /// A property of an embedded object.
  std::string Property(const std::string& sID, const std::string& sName) const;

  /// The visible rows of a table's first body, one a line, cells as
  /// "text|text"; "~" stands for the blank of an empty cell.
  std::string Rows(const std::string& sTable) const;
  /// The cells of a row of a table's first body, one a line, each with its
  /// class and, when they have them, tooltip and width.
  std::string Cells(const std::string& sTable, std::size_t iRow) const;

 protected:
  ~Screen() = default;

 private:
  virtual const ZELWbr3::Browser& Showing() const = 0;
};

}  // namespace ZELWbr3::Testing
