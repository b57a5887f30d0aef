#pragma once

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/Health.h"

#include <functional>
#include <string>
#include <string_view>

namespace ZELWbr3 {

/// What the main page begins with: one line if nothing needs attention, else the
/// findings, worst first, each a link to the page that shows it and one to what
/// the help file says about it. A page file without the block has none of this.
class FindingList {
 public:
  /// True if there is a help topic with that ID.
  using HasHelp = std::function<bool(const std::string& sHelpID)>;

  /// Whether the page file has a place for findings.
  static bool IsIn(const Document& oDocument);
  static void Fill(Document& oDocument, const Health& oHealth, const HasHelp& oHasHelp);

  /// The finding whose link has this id; null if it is none.
  static const Health::Finding* Linked(const Health& oHealth, std::string_view sID);
  /// The same of a link to the help.
  static const Health::Finding* LinkedHelp(const Health& oHealth, std::string_view sID);
};

}  // namespace ZELWbr3
