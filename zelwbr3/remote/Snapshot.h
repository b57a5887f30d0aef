#pragma once

#include "zelwbr3/dom/FlatList.h"

namespace ZELWbr3 {
class Document;
}

namespace ZELWbr3::Remote {

/// Builds the replica of a document, which is empty yet, from a browser's
/// snapshot of it: the rest of the list. Throws std::invalid_argument when the
/// list is not a snapshot.
void BuildDocument(FlatListReader& oList, Document& oDocument);

}  // namespace ZELWbr3::Remote
