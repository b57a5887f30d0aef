#include "zelwbr3/dom/Element.h"

#include "tests/support/AgentModel.h"
#include "zelwbr3/dom/All.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/dom/Style.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace ZELWbr3 {

using Headless::ParseHTML;

namespace {

class ElementTest : public testing::Test {
 protected:
  void Load(const char* sHTML) { Document = ParseHTML(sHTML); }
  Element& At(const char* sID) { return *Document->all().item(sID); }

  std::shared_ptr<ZELWbr3::Document> Document;
};

}  // namespace

TEST_F(ElementTest, TextReplacesAllContent) {
  Load("<div id=d>a<b id=b>b</b>c<i>d</i></div>tail");
  EXPECT_EQ(At("d").innerText(), "abcd");
  At("d").innerText("  <b>&amp; \"new\"\r\n\t ");
  EXPECT_EQ(At("d").innerText(), "  <b>&amp; \"new\"\r\n\t ");
  EXPECT_EQ(Document->all().item("b"), nullptr);
  EXPECT_EQ(Document->body()->innerText(), "  <b>&amp; \"new\"\r\n\t tail");

  // An element's own text is as good as any other.
  At("d").innerText(std::string(50, 'x'));
  At("d").innerText(At("d").text());
  EXPECT_EQ(At("d").innerText(), std::string(50, 'x'));
}

TEST_F(ElementTest, HostileTextsAreCleanedEverywhere) {
  Load("<div id=d></div>");
  const std::string_view sHostile("a\0b\xFF\xED\xA0\x80z", 8);
  const std::string sClean =
      "a\xEF\xBF\xBD"
      "b\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBDz";
  At("d").innerText(sHostile);
  EXPECT_EQ(At("d").innerText(), sClean);
  At("d").title(sHostile);
  EXPECT_EQ(At("d").title(), sClean);
  At("d").id(sHostile);
  EXPECT_EQ(Document->all().item(sClean)->title(), sClean);
}

TEST_F(ElementTest, ClonesShareAttributesOnlyUntilOneOfThemWrites) {
  Load("<ul><li id=t class=k title=x><b>y</b></li></ul>");
  Element& oTemplate = At("t");
  Element& oClone = oTemplate.cloneNode(true);
  EXPECT_EQ(&oClone.attributes(), &oTemplate.attributes());
  oClone.className("changed");
  oTemplate.removeAttribute("title");
  oTemplate.id("u");
  EXPECT_EQ(oTemplate.className(), "k");
  EXPECT_EQ(oClone.title(), "x");
  EXPECT_EQ(oClone.id(), "t");
  EXPECT_EQ(Document->all().item("t"), nullptr);  // the clone has no place yet
  oTemplate.after(oClone);
  EXPECT_EQ(Document->all().item("t"), &oClone);
  EXPECT_EQ(oClone.innerText(), "y");
  EXPECT_THROW(oClone.cloneNode(false), std::invalid_argument);
}

TEST_F(ElementTest, InsertingInTheSamePlaceAgainAndAgainKeepsTheOrder) {
  Load("<ul id=u><li id=x>first</li><li>last</li></ul>");
  Element& oFirst = At("x");
  for (int i = 0; i < 500; ++i) oFirst.after(oFirst.cloneNode(true)).innerText(std::to_string(i));
  oFirst.id("");
  int iExpected = 499;  // each went in front of those before it
  for (int i = 0; i < 500; ++i, --iExpected) {
    Element* oRow = Document->all().item("x");
    ASSERT_NE(oRow, nullptr);
    ASSERT_EQ(oRow->innerText(), std::to_string(iExpected));
    oRow->removeAttribute("id");
  }
}

TEST_F(ElementTest, RefusesInsertionsThatMakeNoTree) {
  Load("<div id=d><p id=p></p></div><div id=e></div>");
  EXPECT_THROW(At("e").appendChild(At("p")), std::logic_error);  // has a place
  EXPECT_THROW(At("p").appendChild(*Document->documentElement()), std::logic_error);
  EXPECT_THROW(Document->documentElement()->after(At("p").cloneNode(true)), std::logic_error);
  EXPECT_THROW(At("p").after(At("p")), std::logic_error);
  Element& oLoose = At("d").cloneNode(true);
  EXPECT_THROW(oLoose.firstElementChild()->appendChild(oLoose), std::logic_error);
  EXPECT_THROW(oLoose.after(At("p").cloneNode(true)), std::logic_error);
  const auto oOther = ParseHTML("<p id=q>");
  EXPECT_THROW(At("d").appendChild(oOther->all().item("q")->cloneNode(true)), std::logic_error);
  EXPECT_EQ(Testing::AgentModel::Describe(*Document),
            Testing::AgentModel::Describe(*ParseHTML("<div id=d><p id=p></p></div><div id=e></div>")));
}

TEST_F(ElementTest, DisplayLeavesTheOtherDeclarations) {
  Load("<p id=p style='color: red;display:none ;; width:1px'></p><p id=q style='display:none'></p><p id=r></p>");
  EXPECT_EQ(At("p").style().display(), "none");
  At("p").style().display("");
  EXPECT_EQ(At("p").style().display(), "");
  EXPECT_EQ(At("p").getAttribute("style"), "color: red; width:1px;");
  At("p").style().display("none");
  EXPECT_EQ(At("p").getAttribute("style"), "color: red; width:1px; display: none;");
  At("q").style().display("");
  EXPECT_FALSE(At("q").hasAttribute("style"));
  At("r").style().display("");
  EXPECT_FALSE(At("r").hasAttribute("style"));
}

TEST_F(ElementTest, BrokenMarkupLeavesTheContent) {
  Load("<div id=d>old<b id=b></b></div>");
  const std::string sBefore = Testing::AgentModel::Describe(*Document);
  for (const char* sMarkup :
       {"<b>", "</b>", "<b></i>", "<b", "<", "<b x>", "<b x=1></b>", "<b x=\"1></b>", "<b x=\"1\"y=\"2\"></b>",
        "<B></B>", "a & b", "&nbsp;", "&", "<!-- x -->", "<b>x</b", "x<br></br>", "< b></b>"}) {
    EXPECT_THROW(At("d").innerHTML(sMarkup), std::invalid_argument) << sMarkup;
    EXPECT_EQ(Testing::AgentModel::Describe(*Document), sBefore) << sMarkup;
  }
  try {
    At("d").innerHTML("good<b>bad");
  } catch (const std::invalid_argument& oError) {
    EXPECT_STREQ(oError.what(), "Expected </b> at character 10 of the markup good<b>bad");
  }
}

}  // namespace ZELWbr3
