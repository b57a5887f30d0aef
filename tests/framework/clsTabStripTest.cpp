#include "zelwbr3/framework/clsTabStrip.h"

#include "zelwbr3/dom/Style.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>

namespace ZELWbr3::Testing {

namespace {

/// A page with one strip; its classes in one line, from edge to edge, the
/// selected tab and the blocks that are not hidden.
class Strip {
 public:
  explicit Strip(int iTabs, const std::string& sName = "X") : m_iTabs(iTabs), m_sName(sName) {
    std::string sHTML = "<body><a id='tbsTab1Other' class='zelTbsLinkOff'></a><p id='tbsPrev" + sName +
                        "' class='zelTbsFirstAngOnPrevoff'></p><p id='tbsNext" + sName +
                        "' class='zelTbsLastOffNextoff'></p><div id='tbsTabStrip" + sName + "' tabcount='" +
                        std::to_string(iTabs) + "' selectedtab='0'></div>";
    for (int i = 0; i < std::max(iTabs, 2); ++i) {
      const std::string k = std::to_string(i);
      if (i > 0) {
        sHTML += "<a id='tbsTab" + k + "Ang" + sName + "' class='" + (i == 1 ? "zelTbsAngOnOff" : "zelTbsAngOffOff") +
                 "'></a>";
      }
      if (i == iTabs) break;
      sHTML += "<a id='tbsTab" + k + sName + "' class='" + (i == 0 ? "zelTbsLinkOn" : "zelTbsLinkOff") + "'></a>";
      sHTML += "<div id='tbsContent" + k + sName + "'" + (i == 0 ? "" : " style='display:none'") + "></div>";
    }
    Document = Headless::ParseHTML(sHTML);
    Tabs.Init(Document, sName);
  }

  bool Click(const std::string& sID) {
    Document->Activate(&At(sID));
    return Tabs.HandleOnClick(sID);
  }

  Element& At(const std::string& sID) const { return *Document->all().item(sID); }

  std::string Look() const {
    const auto Class = [&](const std::string& sPart) { return At(sPart + m_sName).className().substr(6); };
    std::string sLook = Class("tbsPrev");
    std::string sBlocks;
    for (int i = 0; i < std::max(m_iTabs, 2); ++i) {
      const std::string k = std::to_string(i);
      if (i > 0) sLook += " " + Class("tbsTab" + k + "Ang");
      if (i == m_iTabs) break;
      sLook += " " + Class("tbsTab" + k);
      if (At("tbsContent" + k + m_sName).style().display() != "none") sBlocks += " " + k;
    }
    return sLook + " " + Class("tbsNext") + ":" + At("tbsTabStrip" + m_sName).getAttribute("selectedtab") + sBlocks;
  }

  clsTabStrip Tabs;
  std::shared_ptr<ZELWbr3::Document> Document;

 private:
  int m_iTabs;
  std::string m_sName;
};

}  // namespace

TEST(clsTabStrip, SelectsFromAnyTabToAnyOther) {
  const std::string sLooks[] = {
      "FirstAngOnPrevoff LinkOn AngOnOff LinkOff AngOffOff LinkOff LastOffNextoff:0 0",
      "FirstAngOffPrevoff LinkOff AngOffOn LinkOn AngOnOff LinkOff LastOffNextoff:1 1",
      "FirstAngOffPrevoff LinkOff AngOffOff LinkOff AngOffOn LinkOn LastOnNextoff:2 2",
  };
  for (int iFrom = 0; iFrom < 3; ++iFrom) {
    for (int iTo = 0; iTo < 3; ++iTo) {
      Strip oStrip(3);
      EXPECT_EQ(oStrip.Look(), sLooks[0]);
      oStrip.Tabs.Select(iFrom);
      EXPECT_EQ(oStrip.Look(), sLooks[iFrom]);
      EXPECT_EQ(oStrip.Click("tbsTab" + std::to_string(iTo) + "X"), iFrom != iTo);
      EXPECT_EQ(oStrip.Look(), sLooks[iTo]) << "from " << iFrom << " to " << iTo;
      if (iFrom == iTo) continue;
      const auto Selected = [&](int i) {
        return oStrip.At("tbsTab" + std::to_string(i) + "X").getAttribute("aria-selected");
      };
      EXPECT_EQ(Selected(iFrom) + " " + Selected(iTo), "false true");
    }
  }
}

TEST(clsTabStrip, IgnoresClicksThatAreNotForIt) {
  Strip oStrip(3);
  oStrip.Tabs.Disable(2);
  EXPECT_EQ(oStrip.At("tbsTab2X").className(), "zelTbsLinkOffDsbl");
  const std::string sLook = oStrip.Look();
  for (const char* sID : {"tbsTab0X", "tbsTab2X", "tbsTab1AngX", "tbsTab1Other", "tbsContent1X"}) {
    EXPECT_FALSE(oStrip.Click(sID)) << sID;
  }
  EXPECT_EQ(oStrip.Look(), sLook);
  EXPECT_TRUE(oStrip.Tabs.IsSelectable(1));
  EXPECT_FALSE(oStrip.Tabs.IsSelectable(2));
  EXPECT_FALSE(oStrip.Tabs.IsSelectable(3));
}

// One tab has no neighbour, and of an id one digit is read.
TEST(clsTabStrip, StripsOfOneAndOfManyTabs) {
  Strip oOne(1);
  EXPECT_EQ(oOne.Look(), "FirstAngOnPrevoff LinkOn AngOnOff LastOffNextoff:0 0");
  EXPECT_FALSE(oOne.Click("tbsTab0X"));
  Strip oMany(12);
  EXPECT_TRUE(oMany.Click("tbsTab11X"));
  EXPECT_EQ(oMany.Tabs.Selected(), 1);
}

TEST(clsTabStrip, WithoutAStripNothingHappens) {
  clsTabStrip oTabs;
  EXPECT_FALSE(oTabs.HandleOnClick("tbsTab1X"));
  const auto oDocument = Headless::ParseHTML("<body><a id='tbsTab1X' class='zelTbsLinkOff'></a></body>");
  oTabs.Init(oDocument, "X");
  oDocument->Activate(oDocument->all().item("tbsTab1X"));
  EXPECT_FALSE(oTabs.HandleOnClick("tbsTab1X"));
  oTabs.Select(1);
  EXPECT_EQ(oDocument->all().item("tbsTab1X")->className(), "zelTbsLinkOff");
}

}  // namespace ZELWbr3::Testing
