#include "zelwbr3/remote/Snapshot.h"

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/DocumentBuilder.h"

#include <stdexcept>

namespace ZELWbr3::Remote {

void BuildDocument(FlatListReader& oList, Document& oDocument) {
  // The items of a snapshot, as agent.js writes them.
  enum Item : std::uint32_t { Begin = 1, Attribute = 2, Text = 3, End = 4 };

  // Browsers give no document a deeper one.
  constexpr int MostDepth = 512;

  DocumentBuilder oBuilder(oDocument);
  int iDepth = 0;
  while (!oList.AtEnd()) {
    const auto eItem = oList.Number();
    if (iDepth == 0 && (eItem != Begin || oDocument.documentElement() != nullptr)) {
      throw std::invalid_argument("A snapshot's item stands outside of its root element");
    }
    switch (eItem) {
      case Begin: {
        const std::string sTag = oList.Text();
        const NodeNumber iNumber = oList.Number();
        if (oBuilder.Begin(sTag).Number() != iNumber) {
          throw std::invalid_argument("A snapshot's element " + std::to_string(iNumber) + " is out of order");
        }
        if (++iDepth > MostDepth) throw std::invalid_argument("A snapshot's elements are nested too deeply");
        break;
      }
      case Attribute: {
        const std::string sName = oList.Text();
        oBuilder.Attribute(sName, oList.Text());
        break;
      }
      case Text:
        oBuilder.Text(oList.Text());
        break;
      case End:
        oBuilder.End();
        --iDepth;
        break;
      default:
        throw std::invalid_argument("A snapshot has no items of kind " + std::to_string(eItem));
    }
  }
  if (iDepth != 0) throw std::invalid_argument("A snapshot ends before its elements do");
}

}  // namespace ZELWbr3::Remote
