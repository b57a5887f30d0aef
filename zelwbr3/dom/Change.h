#pragma once

#include "zelwbr3/base/Export.h"

#include <cstdint>
#include <string_view>

namespace ZELWbr3 {

/// Elements are numbered in document order as the document is built; a clone
/// gets the next free numbers, in the order of its source. The replica and the
/// browser count alike, so no number is ever sent back. 0 = none.
using NodeNumber = std::uint32_t;

/// One write to a document. Texts are valid UTF-8 without NUL and live only for
/// the call that reports the change.
struct Change {
  enum class Kind {
    Text = 1,             ///< Node's whole content becomes Text
    Attribute = 2,        ///< Node's attribute Name becomes Text
    RemoveAttribute = 3,  ///< Node loses its attribute Name
    Display = 4,          ///< Node's style display becomes Text
    Clone = 5,            ///< a deep copy of Node, not attached yet, gets the numbers from Other on
    Append = 6,           ///< Other becomes Node's last child
    After = 7,            ///< Other is inserted directly after Node
    Create = 8,           ///< a new element Other with the tag Name becomes Node's last child
    AppendText = 9,       ///< Text is appended to Node's content
    /// A visible copy of the template row Node, with the numbers from Other on,
    /// becomes the last row of its section. Text holds a value for each column, with
    /// Separator between them; an empty one leaves what it is for as the template has
    /// it. Name says what the columns are, with blanks between them: the text of an
    /// element, by its place in the row in document order (the row is 0), or, after
    /// its place and "@", an attribute of it; "1 1@id 2" are two texts and an id. An
    /// empty Name stands for the texts of all cells of a row without other elements.
    Row = 10,
  };

  /// Occurs in no text of a row.
  static constexpr char Separator = '\x7f';

  Kind What;
  NodeNumber Node = 0;
  NodeNumber Other = 0;
  std::string_view Name = {};
  std::string_view Text = {};
};

/// Receives the writes to a document, in order.
class ZELWBR3_EXPORT ChangeLog {
 public:
  virtual ~ChangeLog() = default;
  virtual void Record(const Change& oChange) = 0;
};

}  // namespace ZELWbr3
