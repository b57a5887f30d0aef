#include "tests/support/AgentModel.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/Style.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace ZELWbr3 {

using Headless::ParseHTML;
using Testing::AgentModel;

namespace {

/// Everything below a root in document order, by walking.
void Walk(const Element& oRoot, std::vector<Element*>& oFound) {
  for (Element* o = oRoot.firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    oFound.push_back(o);
    Walk(*o, oFound);
  }
}

std::vector<Element*> Below(const Element& oRoot) {
  std::vector<Element*> oFound;
  Walk(oRoot, oFound);
  return oFound;
}

}  // namespace

TEST(Document, KeepsAHundredThousandEqualIdsInOrder) {
  const auto oDocument = ParseHTML("<table><tbody id=t><tr id=r></tr></tbody></table><p id=r></p>");
  Element& oBody = *oDocument->all().item("t");
  Element& oTemplate = *oBody.firstElementChild();
  Element& oParagraph = *oDocument->body()->firstElementChild()->nextElementSibling();
  for (int i = 1; i < 100'000; ++i) oBody.appendChild(oTemplate.cloneNode(true));

  Element* oRow = &oTemplate;
  for (int i = 0; i < 50'000; ++i) {
    ASSERT_EQ(oDocument->all().item("r"), oRow);
    oRow->id("s");
    oRow = oRow->nextElementSibling();
  }
  EXPECT_EQ(oDocument->all().item("s"), &oTemplate);
  oBody.innerText("");
  EXPECT_EQ(oDocument->all().item("r"), &oParagraph);
  EXPECT_EQ(oDocument->all().item("s"), nullptr);
}

// Some thousand arbitrary writes: after each the index must say what a walk
// says, and at the end the change log must have told the whole story.
TEST(Document, StaysConsistentUnderArbitraryWrites) {
  for (const unsigned iSeed : {1u, 2u, 3u, 4u}) {
    SCOPED_TRACE(iSeed);
    std::mt19937 oRandom(iSeed);
    const auto Pick = [&](std::size_t iCount) { return oRandom() % iCount; };
    const std::string ids[] = {"a", "b", "c", "d", "A", ""};
    const auto AnyID = [&] { return ids[Pick(std::size(ids))]; };

    const auto oDocument = ParseHTML("<div id=a>one<p>two</p> three<ul><li id=b>4</li>5</ul></div>six");
    AgentModel oAgent(*oDocument);
    oDocument->ReportTo(&oAgent);
    Element& oBody = *oDocument->body();
    std::vector<Element*> oLoose;

    for (int i = 0; i < 3000; ++i) {
      const auto oAll = Below(oBody);
      Element& oElement = oAll.empty() ? oBody : *oAll[Pick(oAll.size())];
      switch (Pick(oAll.size() > 60 ? 10 : 9)) {
        case 0:
        case 1:
          oElement.id(AnyID());
          break;
        case 2:
          if (oAll.size() < 80) oElement.appendChild(oElement.cloneNode(true));
          break;
        case 3:
          if (&oElement != &oBody && oAll.size() < 80) oElement.after(oElement.cloneNode(true));
          break;
        case 4:
          oLoose.push_back(&oElement.cloneNode(true));
          oLoose.back()->id(AnyID());
          break;
        case 5:
          if (oLoose.empty()) break;
          if (Below(*oLoose.back()).size() < 20) oElement.appendChild(*oLoose.back());
          oLoose.pop_back();
          break;
        case 6:
          if (&oElement == &oBody) break;
          if (Element* oChild = oElement.firstElementChild()) oLoose.push_back(oChild);
          oElement.innerText(AnyID());
          break;
        case 7:
          oElement.innerHTML("x<b id=\"" + AnyID() + "\">y<i></i>z</b>&amp;");
          break;
        case 8:
          oElement.style().display(Pick(2) == 0 ? "none" : "");
          oElement.className(AnyID());
          oElement.removeAttribute("title");
          break;
        case 9:
          oElement.innerText("");
          break;
      }
      const auto oNow = Below(oBody);
      const Element* oRoots[] = {oDocument->documentElement(), &oBody, oNow.empty() ? &oBody : oNow[Pick(oNow.size())],
                                 oLoose.empty() ? &oBody : oLoose[Pick(oLoose.size())]};
      for (const Element* oRoot : oRoots) {
        const auto oBelow = Below(*oRoot);
        ASSERT_EQ(All(oRoot).item(""), nullptr) << "after write " << i;
        for (const char* sID : {"a", "b", "c", "d", "A"}) {
          const auto it = std::ranges::find_if(oBelow, [&](const Element* o) { return o->id() == sID; });
          ASSERT_EQ(All(oRoot).item(sID), it == oBelow.end() ? nullptr : *it) << "after write " << i << ", id " << sID;
        }
      }
    }
    EXPECT_GT(oAgent.Recorded(), 1000u);
    EXPECT_EQ(oAgent.Describe(), AgentModel::Describe(*oDocument));
  }
}

// A row of a template is one change, whatever is in its texts; a row that texts
// cannot tell is told in the ordinary way.
TEST(Document, TellsRowsOfATemplateWithTheirTextsOnly) {
  const auto oDocument = ParseHTML(
      "<table><tbody id=t><tr id=r style='display:none'><td>old</td><td class=c></td><td></td></tr>"
      "<tr id=l style='display:none'><td><a>x</a></td></tr></tbody></table>");
  AgentModel oAgent(*oDocument);
  oDocument->ReportTo(&oAgent);
  Element& oSection = *oDocument->all().item("t");
  Element& oTemplate = *oDocument->all().item("r");
  const auto Add = [&](const std::vector<std::string>& texts) {
    const std::size_t iBefore = oAgent.Recorded();
    oSection.appendRow(oTemplate, texts);
    return oAgent.Recorded() - iBefore;
  };
  EXPECT_EQ(Add({"a", " ", ""}), 1u);
  EXPECT_EQ(Add({"", "<b>\"'&\\\n", "\xFF\xD7\xA9" + std::string(1'000'000, 'x')}), 1u);
  EXPECT_EQ(Add({"b"}), 1u);
  EXPECT_EQ(Add({}), 1u);
  EXPECT_GT(Add({"in\x7fseparable", "", "c"}), 1u);
  EXPECT_THROW(Add({"1", "2", "3", "4"}), std::runtime_error);
  oSection.appendRow(*oDocument->all().item("l"), std::vector<std::string>{"link"});
  EXPECT_EQ(oSection.innerText(),
            "oldx"
            "a "
            "old<b>\"'&\\\n\xEF\xBF\xBD\xD7\xA9" +
                std::string(1'000'000, 'x') +
                "bold"
                "in\x7fseparable"
                "clink");
  oSection.rows(2)->cells(1)->innerText("written");
  EXPECT_FALSE(oSection.rows(3)->hasAttribute("style"));
  EXPECT_EQ(oSection.rows(3)->id(), "r");
  EXPECT_EQ(oAgent.Describe(), AgentModel::Describe(*oDocument));
}

TEST(Document, MakesTheNearestElementThatCanBeActiveActive) {
  const auto oDocument = ParseHTML(
      "<div id=plain><span id=inPlain>x</span></div><a id=link><b id=inLink>x</b></a><p tabindex=0 id=tab><i id=inTab>"
      "</i></p><table><tr id=row><td id=cell><i id=inCell></i></td></tr></table><zel-fill-bar id=bar></zel-fill-bar>"
      "<button id=btn></button>");
  const auto Active = [&](const char* sID) {
    oDocument->Activate(oDocument->all().item(sID));
    return oDocument->activeElement()->id();
  };
  EXPECT_EQ(Active("inLink"), "link");
  EXPECT_EQ(Active("inTab"), "tab");
  EXPECT_EQ(Active("inCell"), "cell");
  EXPECT_EQ(Active("bar"), "bar");
  EXPECT_EQ(Active("btn"), "btn");
  EXPECT_EQ(Active("inPlain"), "");
  EXPECT_EQ(oDocument->activeElement(), oDocument->body());
  EXPECT_EQ(Active("row"), "");

  // What leaves the document is no longer active, whatever else happens to it.
  Active("inCell");
  oDocument->all().item("row")->innerText("");
  EXPECT_EQ(oDocument->activeElement(), oDocument->body());
  Element& oLoose = oDocument->all().item("link")->cloneNode(true);
  oDocument->Activate(&oLoose);
  EXPECT_EQ(oDocument->activeElement(), oDocument->body());

  Document oEmpty;
  oEmpty.Activate(nullptr);
  EXPECT_EQ(oEmpty.activeElement(), nullptr);
  EXPECT_EQ(oEmpty.all().item("x"), nullptr);
}

}  // namespace ZELWbr3
