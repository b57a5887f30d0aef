#include "zelwbr3/dom/FrozenRows.h"

#include "tests/support/AgentModel.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/HTMLWriter.h"
#include "zelwbr3/dom/Style.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>

#include <functional>
#include <random>

namespace ZELWbr3 {

using Headless::ParseHTML;
using Testing::AgentModel;

namespace {

constexpr const char* Tables =
    "<div id=d><table id=t1><tbody id=s1><tr id=h><th>head</th></tr> <tr id=r style='display:none'>"
    "<td id=c>old</td> <td class=k></td></tr><tr id=q style='display:none'><th></th></tr>\n</tbody></table></div>"
    "<table><tbody id=s3><tr id=l style='display:none'><th tabindex=0><a href='#' class=k></a></th><td "
    "class=k>\n</td></tr></tbody></table>"
    "<table><tbody id=s2><tr id=r class=z style='display:none'><td>x</td><td></td><td id=e></td></tr></tbody></table>";

/// What appendRow is said to do, with elements only.
void AppendElements(Element& oSection, Element& oTemplate, const std::vector<std::string>& texts) {
  Element& oRow = oSection.appendChild(oTemplate.cloneNode(true));
  oRow.style().display("");
  for (std::size_t i = 0; i < texts.size(); ++i) {
    if (!texts[i].empty()) oRow.cells()[i]->innerText(texts[i]);
  }
}

/// The same document twice: with rows that are frozen and with elements only.
class Twins {
 public:
  Twins() : m_oFrozen(ParseHTML(Tables)), m_oPlain(ParseHTML(Tables)), m_oAgent(*m_oFrozen) {
    m_oFrozen->ReportTo(&m_oAgent);
  }

  NodeNumber Count() const { return static_cast<NodeNumber>(m_oPlain->Count()); }
  Document& Plain() { return *m_oPlain; }

  void AppendRow(NodeNumber iTemplate, const std::vector<std::string>& texts) {
    Element& oTemplate = *m_oFrozen->ByNumber(iTemplate);
    oTemplate.parentElement()->appendRow(oTemplate, texts);
    Element& oOther = *m_oPlain->ByNumber(iTemplate);
    AppendElements(*oOther.parentElement(), oOther, texts);
  }

  void AppendRow(NodeNumber iTemplate, const std::function<void(Element&)>& oWrite) {
    Element& oTemplate = *m_oFrozen->ByNumber(iTemplate);
    oTemplate.parentElement()->appendRow(oTemplate, oWrite);
    Element& oOther = *m_oPlain->ByNumber(iTemplate);
    Element& oRow = oOther.parentElement()->appendChild(oOther.cloneNode(true));
    oRow.style().display("");
    oWrite(oRow);
  }

  /// Does the same to the element with this number in both.
  void Both(NodeNumber iNode, const std::function<void(Element&)>& oAct) {
    oAct(*m_oPlain->ByNumber(iNode));
    oAct(*m_oFrozen->ByNumber(iNode));
  }

  /// Reads in passing only: nothing is thawed by it.
  void ExpectEqual() const {
    ASSERT_EQ(m_oFrozen->Count(), m_oPlain->Count());
    ASSERT_EQ(HTMLWriter().Outer(*m_oFrozen->documentElement()), HTMLWriter().Outer(*m_oPlain->documentElement()));
    ASSERT_EQ(m_oFrozen->body()->innerText(), m_oPlain->body()->innerText());
    ASSERT_EQ(Numbers(*m_oFrozen->body()), Numbers(*m_oPlain->body()));
  }
  /// This may thaw the row that is found.
  void ExpectSameFound(NodeNumber iRoot, const char* sID) const {
    const auto Found = [&](Document& o) {
      // A frozen row that has left the document is no more; one of elements finds nothing.
      Element* oRoot = o.ByNumber(iRoot);
      const Element* oFound = oRoot == nullptr ? nullptr : oRoot->all().item(sID);
      return oFound == nullptr ? 0 : oFound->Number();
    };
    ASSERT_EQ(Found(*m_oFrozen), Found(*m_oPlain)) << sID << " below " << iRoot;
  }
  void ExpectSameForAgent() const { EXPECT_EQ(m_oAgent.Describe(), AgentModel::Describe(*m_oPlain)); }

 private:
  static std::string Numbers(const Element& oElement) {
    std::string sNumbers = std::to_string(oElement.Number()) + " ";
    oElement.ForEachChild([&](const Element& o) { sNumbers += Numbers(o); });
    return sNumbers;
  }

  std::shared_ptr<Document> m_oFrozen;
  std::shared_ptr<Document> m_oPlain;
  AgentModel m_oAgent;
};

}  // namespace

// Whatever is done to a document: with frozen rows it stays what it would be without.
TEST(FrozenRows, AreLikeOtherRowsUnderArbitraryWrites) {
  for (const unsigned iSeed : {1u, 2u, 3u, 4u}) {
    SCOPED_TRACE(iSeed);
    std::mt19937 oRandom(iSeed);
    const auto Pick = [&](std::size_t iCount) { return static_cast<NodeNumber>(oRandom() % iCount); };
    const std::string texts[] = {"", "a", " <&>\"", "in\x7fside", "\xFF", std::string(300, 'x')};
    const char* const ids[] = {"r", "q", "c", "e", "h", "s1", "new", "l", "l1", "l2"};
    const auto AnyText = [&] { return texts[Pick(std::size(texts))]; };

    Twins oTwins;
    std::vector<NodeNumber> loose;
    for (int i = 0; i < 1500 && oTwins.Count() < 3000; ++i) {
      SCOPED_TRACE("write " + std::to_string(i));
      const NodeNumber iNode = 1 + Pick(oTwins.Count());
      const Element& oNode = *oTwins.Plain().ByNumber(iNode);
      const bool bConnected = oNode.isConnected();
      const bool bInBody = bConnected && &oNode != oTwins.Plain().body() && oTwins.Plain().body()->contains(oNode);
      switch (Pick(13)) {
        case 0:
        case 1:
        case 2:
        case 3:
          if (const Element* oTemplate = oTwins.Plain().all().item(ids[Pick(2)]); oTemplate != nullptr) {
            const NodeNumber iTemplate = oTemplate->Number();
            for (NodeNumber n = Pick(i % 50 == 0 ? 600 : 6); n > 0; --n) {
              std::vector<std::string> row(Pick(1 + oTemplate->cells().size()));
              for (std::string& sText : row) sText = AnyText();
              oTwins.AppendRow(iTemplate, row);
            }
          }
          break;
        case 12: {
          const Element* oTemplate = oTwins.Plain().all().item("l");
          for (NodeNumber n = Pick(6); n > 0 && oTemplate != nullptr; --n) {
            const std::string sText = AnyText();
            const auto iHow = Pick(10);
            oTwins.AppendRow(oTemplate->Number(), [&](Element& o) {
              if (iHow == 0) o.title("row " + sText);
              if (iHow == 1) o.removeAttribute("id");
              const auto oCells = o.cells();
              if (oCells.size() < 2) return;
              Element* oLink = iHow == 2 ? oCells[0] : oCells[0]->firstElementChild();
              if (oLink != nullptr) oLink->innerText(sText);
              if (oLink != nullptr && iHow != 3) oLink->id(iHow < 7 ? "l1" : "l2");
              if (iHow == 9) oCells[0]->id("l2");
              if (iHow > 3) oCells[1]->className(sText);
              if (iHow > 4) oCells[1]->setAttribute("data-a", sText);
              if (iHow > 5) oCells[1]->setAttribute("data-b", "<\"");
              if (iHow == 8) oCells[0]->removeAttribute("tabindex");
            });
          }
          break;
        }
        case 4:
          if (bInBody)
            oTwins.Both(iNode, [&](Element& o) {
              if (o.tagName() == "td") o.innerText("written");
            });
          break;
        case 5: {
          const char* sID = ids[Pick(std::size(ids))];
          if (bInBody) oTwins.Both(iNode, [&](Element& o) { o.id(sID); });
          break;
        }
        case 6:
          if (bInBody && oNode.tagName() == "tr") {
            loose.push_back(oTwins.Count() + 1);
            oTwins.Both(iNode, [&](Element& o) { o.cloneNode(true); });
          }
          break;
        case 7:
          if (bInBody && !loose.empty() && oNode.tagName() == "tr") {
            oTwins.Both(iNode, [&](Element& o) { o.after(*o.OwnerDocument().ByNumber(loose.back())); });
            loose.pop_back();
          }
          break;
        case 8:
          if (bInBody)
            oTwins.Both(iNode, [&](Element& o) {
              if (Element* oNext = o.nextElementSibling()) oNext->title("next");
              if (Element* oPrevious = o.previousElementSibling()) oPrevious->title("previous");
              if (Element* oRow = o.rows(7)) oRow->className("eighth");
            });
          break;
        case 9:
          // A copy of a whole section, and what is in it.
          if (i % 40 == 0 && bInBody && oNode.tagName() == "table" && oTwins.Count() < 1500) {
            const NodeNumber iCopy = oTwins.Count() + 1;
            oTwins.Both(iNode, [&](Element& o) { o.cloneNode(true); });
            oTwins.ExpectSameFound(iCopy, ids[Pick(std::size(ids))]);
            oTwins.Both(1,
                        [&](Element& o) { o.OwnerDocument().body()->appendChild(*o.OwnerDocument().ByNumber(iCopy)); });
          }
          break;
        case 10:
          if (bInBody)
            oTwins.Both(iNode, [&](Element& o) {
              if (o.tagName() == "tr") o.innerHTML("<td id=\"c\">m</td>");
            });
          break;
        case 11:
          if (i % 60 == 0 && bInBody) {
            oTwins.Both(iNode, [&](Element& o) {
              if (o.tagName() == "tbody" || o.tagName() == "div") o.innerText("gone");
            });
          }
          break;
      }
      if (i % 20 == 0) oTwins.ExpectEqual();
      const NodeNumber iRoot = 1 + Pick(40);
      for (const char* sID : ids) {
        if (Pick(4) == 0) oTwins.ExpectSameFound(iRoot, sID);
      }
      if (HasFailure()) return;
    }
    oTwins.ExpectEqual();
    oTwins.ExpectSameForAgent();
  }
}

// The index by id knows elements only. The ones that it finds in place of frozen rows
// may leave before these do.
TEST(FrozenRows, AreFoundByIdWhenWhatStandsBeforeThemIsNot) {
  const auto Expect = [](const char* sID, const std::function<void(Element&)>& oLeave) {
    Twins oTwins;
    const NodeNumber iTemplate = oTwins.Plain().all().item("r")->Number();
    for (int i = 0; i < 5; ++i) oTwins.AppendRow(iTemplate, {std::to_string(i)});
    oTwins.Both(iTemplate, oLeave);
    oTwins.ExpectSameFound(1, sID);
    oTwins.ExpectEqual();
  };
  Expect("r", [](Element& o) { o.removeAttribute("id"); });
  Expect("c", [](Element& o) { o.cells(0)->id("other"); });
  Expect("c", [](Element& o) { o.innerText("no cells"); });
}

TEST(FrozenRows, WithLinksAndIdsAreToldByWhatDiffersAndFoundById) {
  struct Log : ChangeLog {
    std::vector<std::string> Told;
    void Record(const Change& o) override { Told.push_back(std::string(o.Name) + ": " + std::string(o.Text)); }
  } oLog;
  const auto oDocument = ParseHTML(Tables);
  oDocument->ReportTo(&oLog);
  Element& oSection = *oDocument->all().item("s3");
  const auto Add = [&](const std::string& sText, const char* sTitle) {
    oSection.appendRow(*oSection.firstElementChild(), [&](Element& oRow) {
      Element& oLink = *oRow.cells(0)->firstElementChild();
      oLink.innerText(sText);
      oLink.id("go" + sText);
      oRow.title(sTitle);
    });
  };
  for (const char* sText : {"1", "2", "3"}) Add(sText, "t");
  const std::string sColumns = "2 3 0@title 2@id: ";
  const std::vector<std::string> expected = {sColumns + "1\x7f\x7ft\x7fgo1", sColumns + "2\x7f\x7ft\x7fgo2",
                                             sColumns + "3\x7f\x7ft\x7fgo3"};
  EXPECT_EQ(oLog.Told, expected);
  Element& oFound = *oDocument->all().item("go2");
  EXPECT_EQ(HTMLWriter().Outer(oFound), "<a href=\"#\" class=\"k\" id=\"go2\">2</a>");
  EXPECT_EQ(oSection.all().item("go2"), &oFound);
  EXPECT_EQ(oDocument->all().item("go4"), nullptr);
  // What columns cannot tell is an element, and no row is left half written.
  EXPECT_THROW(oSection.appendRow(*oSection.firstElementChild(), [](Element&) { throw std::runtime_error("read"); }),
               std::runtime_error);
  Add("4", "");
  EXPECT_GT(oLog.Told.size(), 4u);
  EXPECT_EQ(oDocument->all().item("go4")->parentElement()->parentElement()->Number(), oFound.Number() + 6);
}

TEST(FrozenRows, OfACopyAreItsOwn) {
  Twins oTwins;
  const NodeNumber iTemplate = oTwins.Plain().all().item("r")->Number();
  for (int i = 0; i < 5; ++i) oTwins.AppendRow(iTemplate, {std::to_string(i)});
  for (const char* sText : {"of a copy", "of another"}) {
    const NodeNumber iCopy = oTwins.Count() + 1;
    oTwins.Both(oTwins.Plain().all().item("t1")->Number(), [](Element& o) { o.cloneNode(true); });
    // A table, a section, a heading with its cell, the template.
    const NodeNumber iTemplateCopy = iCopy + 4;
    ASSERT_EQ(oTwins.Plain().ByNumber(iTemplateCopy)->id(), "r");
    oTwins.AppendRow(iTemplateCopy, {sText});
    oTwins.Both(1, [&](Element& o) { o.OwnerDocument().body()->appendChild(*o.OwnerDocument().ByNumber(iCopy)); });
  }
  oTwins.AppendRow(iTemplate, {"of the original"});
  oTwins.ExpectEqual();
  oTwins.ExpectSameForAgent();
}

TEST(FrozenRows, TwentyThousandAreWalkedThroughAndLeaveAtOnce) {
  const auto oDocument = ParseHTML(Tables);
  Element& oSection = *oDocument->all().item("s2");
  Element& oTemplate = *oSection.firstElementChild();
  constexpr int Rows = 20'000;
  for (int i = 0; i < Rows; ++i) oSection.appendRow(oTemplate, std::vector<std::string>{std::to_string(i)});
  // Behind them stands a row of elements.
  Element& oLast = oSection.appendChild(oTemplate.cloneNode(true));
  EXPECT_EQ(oSection.rows(10'000)->cells(0)->innerText(), "9999");
  Element* oRow = &oTemplate;
  for (int i = 0; i < Rows; ++i) {
    ASSERT_EQ(oSection.all().item("r"), oRow);
    oRow->id("seen");
    oRow = oRow->nextElementSibling();
    ASSERT_EQ(oRow->cells(0)->innerText(), std::to_string(i));
  }
  EXPECT_EQ(oRow->nextElementSibling(), &oLast);
  EXPECT_EQ(oLast.previousElementSibling(), oRow);
  oSection.innerText("");
  EXPECT_EQ(oSection.all().item("seen"), nullptr);
}

}  // namespace ZELWbr3
