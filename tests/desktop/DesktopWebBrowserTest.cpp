#include "tests/desktop/Listener.h"
#include "tests/desktop/TestWindow.h"
#include "zelwbr3/desktop/FileURL.h"
#include "zelwbr3/dom/EmbeddedObject.h"
#include "zelwbr3/dom/Style.h"

#include <algorithm>
#include <fstream>
#include <random>

#include <signal.h>
#include <wx/app.h>

namespace ZELWbr3::Desktop {
namespace {

class DesktopWebBrowserTest : public TestBrowser {};

TEST_F(DesktopWebBrowserTest, ReportsANavigationInOrderAndReadsTheDocument) {
  ShowBody(
      "<p id=\"p\">one &amp; <b>two</b><!-- no --> three</p>"
      "<script>document.getElementById('p').title = 'set'</script>");
  EXPECT_EQ(Events.Log, (std::vector<std::string>{"before", "navigated", "complete"}));
  EXPECT_EQ(ByID(*Browser, "p").innerText(), "one & two three");
  EXPECT_EQ(ByID(*Browser, "p").title(), "set");
  ExpectLiveEqualsReplica(*Browser);
}

TEST_F(DesktopWebBrowserTest, FindsPageFilesInFoldersOfAnyName) {
  for (const std::string sFolder : {"with blank", "100%25 #1 ?x=y&z", "Übung/日本", "a'b\"c;d+e"}) {
    const std::string sPath =
        PageFile(sFolder + "/Page.htm", "<p id=\"p\">" + sFolder + "</p><img id=\"i\" src=\"i.svg\">");
    std::ofstream(std::filesystem::path(sPath).parent_path() / "i.svg")
        << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"7\" height=\"7\"/>";
    std::string sControl = Folder.string() + "\\" + sFolder + "\\\\Page.htm";
    std::ranges::replace(sControl, '/', '\\');
    Show(sControl);
    EXPECT_EQ(ByID(*Browser, "p").innerText(), sFolder);
    EXPECT_EQ(Ask(*Browser, "document.getElementById('i').naturalWidth"), "7") << "what a page refers to is found, too";
  }
  Show("about:blank");
  EXPECT_EQ(Browser->Document()->body()->innerText(), "");
}

TEST_F(DesktopWebBrowserTest, ShowsADocumentThatSaysWhatCannotBeShown) {
  Show("/no such folder/Main & <Sub>.htm");
  EXPECT_NE(Browser->Document()->body()->innerText().find("Main%20%26%20%3CSub%3E.htm"), std::string::npos)
      << Browser->Document()->body()->innerText();
  ExpectLiveEqualsReplica(*Browser);

  Show("http://127.0.0.1:9/");
  EXPECT_NE(Browser->Document()->body()->innerText().find("Only local pages"), std::string::npos);

  std::ofstream(Folder / "data.bin") << std::string(
      "\x7f"
      "ELF\0\1\2",
      7);
  Show((Folder / "data.bin").string());
  EXPECT_NE(Browser->Document()->body()->innerText().find("data.bin"), std::string::npos);

  ShowBody("<p id=\"p\">back</p>");
  EXPECT_EQ(ByID(*Browser, "p").innerText(), "back");
}

TEST_F(DesktopWebBrowserTest, ReportsOnlyTheDocumentAskedForLast) {
  ShowBody("<p id=\"p\">old</p>");
  const std::string sFirst = PageFile("A.htm", "<p id=\"p\">first</p>");
  const std::string sSecond = PageFile("B.htm", "<p id=\"p\">second</p>");
  for (int i = 0; i < 30; ++i) {
    const auto oOld = Browser->Document();
    Browser->Navigate(sFirst, NavigateFlags::Fresh);
    // Some way into the first load, a different one each time.
    for (int iTurn = 0; iTurn < i % 10; ++iTurn) Platform->Pump().Poll();
    oOld->all().item("p")->innerText("too late");
    EXPECT_TRUE(Browser->Settled());
    Show(sSecond);
    ASSERT_EQ(ByID(*Browser, "p").innerText(), "second");
  }
  ExpectLiveEqualsReplica(*Browser);
}

TEST_F(DesktopWebBrowserTest, SubFramesAreReportedAsSuch) {
  PageFile("Inner.htm", "<p>inner</p><a id=\"out\" href=\"Outer.htm\">x</a>");
  ShowBody("<iframe id=\"f\" src=\"Inner.htm\"></iframe>");
  EXPECT_EQ(Events.Documents, 1);
  EXPECT_EQ(std::ranges::count(Events.Log, "complete frame"), 1);
  EXPECT_NE(ByID(*Browser, "f").tagName(), "");
}

/// Changes a document at random, everything a page can do to it.
class Fuzzer {
 public:
  Fuzzer(ZELWbr3::Document& oDocument, unsigned iSeed) : m_oDocument(oDocument), m_oRandom(iSeed) {
    for (const char* sID : {"a", "b", "rows"}) m_oElements.push_back(m_oDocument.all().item(sID));
  }

  void Change() {
    Element& oElement = *Pick(m_oElements);
    switch (m_oRandom() % 9) {
      case 0:
        Leaf(oElement).innerText(Text());
        break;
      case 1:
        oElement.setAttribute("data-x" + std::to_string(m_oRandom() % 3), Text());
        break;
      case 2:
        oElement.removeAttribute("data-x" + std::to_string(m_oRandom() % 3));
        break;
      case 3:
        oElement.style().display(m_oRandom() % 2 == 0 ? "none" : "");
        break;
      case 4:
        oElement.appendChild(Clone());
        break;
      case 5:
        if (oElement.parentElement() != nullptr) oElement.after(Clone());
        break;
      case 6:
        oElement.title(Text());
        break;
      case 7:
        Leaf(oElement).innerHTML("x<b title=\"a&quot;b\">" + std::string("y&amp;z</b> ") + "t<br>u");
        break;
      case 8:
        oElement.className("c" + std::to_string(m_oRandom() % 5));
        break;
    }
  }

 private:
  Element* Pick(const std::vector<Element*>& oElements) { return oElements[m_oRandom() % oElements.size()]; }

  Element& Clone() {
    Element& oClone = m_oDocument.all().item("template")->cloneNode(true);
    oClone.id("");
    oClone.cells(m_oRandom() % 2)->innerText(Text());
    m_oElements.push_back(&oClone);
    return oClone;
  }

  /// Never what holds other elements that are still used.
  Element& Leaf(Element& oElement) {
    Element* oCell = oElement.cells(0);
    return oCell != nullptr ? *oCell : *m_oDocument.all().item("leaf");
  }

  std::string Text() {
    static const std::vector<std::string> Hostile = {"\"quotes\" 'and' `ticks` ${x}",
                                                     "</script><script>alert(1)</script><!-- ",
                                                     "\xE2\x80\xA8line\xE2\x80\xA9paragraph\r\nnew\ttab\v\f\b",
                                                     std::string("nul\0in the middle", 17),
                                                     "invalid \xFF\xC3( \xED\xA0\x80 \xF4\x90\x80\x80 cut \xE2\x82",
                                                     "\\u0041 \\ \\\\' \\\" &amp; &lt;",
                                                     "\xF0\x9F\x98\x80 \xE6\x97\xA5\xEF\xBB\xBF\xEF\xBF\xBF\x7F",
                                                     "',0);throw 1;('",
                                                     "   blanks   ",
                                                     ""};
    return Hostile[m_oRandom() % Hostile.size()];
  }

  ZELWbr3::Document& m_oDocument;
  std::mt19937 m_oRandom;
  std::vector<Element*> m_oElements;
};

TEST_F(DesktopWebBrowserTest, TheLiveDocumentFollowsAnyChanges) {
  const std::string sBody =
      "<div id=\"a\" style=\"color: red; display: none\">text<i id=\"b\">in</i>tail</div><p id=\"leaf\">leaf</p>"
      "<table><tbody id=\"rows\"><tr id=\"template\"><td>1<b>x</b>y</td><td title=\"t\">2</td></tr></tbody></table>";
  for (unsigned iSeed = 1; iSeed <= 4; ++iSeed) {
    ShowBody(sBody);
    Fuzzer oFuzzer(*Browser->Document(), iSeed);
    for (int iRound = 0; iRound < 5; ++iRound) {
      for (int i = 0; i < 400; ++i) oFuzzer.Change();
      ExpectLiveEqualsReplica(*Browser);
    }
    ASSERT_FALSE(HasFailure()) << "seed " << iSeed;
  }
  EXPECT_EQ(Traces, std::vector<std::string>());
}

TEST_F(DesktopWebBrowserTest, AChangeThatFailsIsTracedAndTheOthersAreMade) {
  ShowBody("<p id=\"p\"></p><p id=\"q\"></p>");
  ByID(*Browser, "p").setAttribute("not a name", "x");
  ByID(*Browser, "q").innerText("made");
  Browser->Flush();
  WaitFor("the changes", [this] { return Browser->Settled(); });
  EXPECT_EQ(Ask(*Browser, "document.getElementById('q').textContent"), "made");
  ASSERT_EQ(Traces.size(), 1u);
  EXPECT_NE(Traces[0].find("not a name"), std::string::npos) << Traces[0];
}

TEST_F(DesktopWebBrowserTest, WhatAPagesScriptsAddDoesNotDisturbTheNumbers) {
  ShowBody("<table><tbody id=\"rows\"><tr id=\"row\"><td>a</td><td>b</td></tr></tbody></table>",
           "<script>addEventListener('load', () => {"
           "  rows.insertAdjacentHTML('afterbegin', '<tr><th>added</th></tr>');"
           "  row.insertAdjacentHTML('afterbegin', '<td><i>added</i></td>'); })</script>");
  Element& oRow = ByID(*Browser, "row").cloneNode(true);
  oRow.cells(1)->innerText("second");
  ByID(*Browser, "rows").appendChild(oRow);
  ExpectLiveEqualsReplica(*Browser);
  EXPECT_EQ(Ask(*Browser, "document.getElementById('rows').textContent"), "addedaddedabaddedasecond");
}

TEST_F(DesktopWebBrowserTest, ComponentsOfThePageDrawWhatIsSetAndCloned) {
  ShowBody("<div id=\"box\"><zel-test id=\"bar\" data-percent=\"1\"></zel-test></div>",
           "<script>customElements.define('zel-test', class extends HTMLElement {"
           "  static observedAttributes = ['data-percent'];"
           "  constructor() { super(); this.attachShadow({mode: 'open'}); }"
           "  attributeChangedCallback() { this.shadowRoot.textContent = this.getAttribute('data-percent') + '%'; }"
           "})</script>");
  ByID(*Browser, "bar").object().Property("Percent", 42);
  Element& oClone = ByID(*Browser, "bar").cloneNode(true);
  oClone.id("bar2");
  oClone.object().Property("Percent", 77);
  ByID(*Browser, "box").appendChild(oClone);
  ExpectLiveEqualsReplica(*Browser);
  EXPECT_EQ(Ask(*Browser, "[bar, bar2].map(o => o.shadowRoot.textContent).join()"), "42%,77%");
}

TEST_F(DesktopWebBrowserTest, ThemeReachesPagesShownAndPagesToCome) {
  Platform->Theme(Theme::Dark);
  ShowBody("<p id=\"p\"></p>");
  EXPECT_EQ(Ask(*Browser, "document.documentElement.dataset.theme"), "dark");
  Platform->Theme(Theme::Light);
  ExpectLiveEqualsReplica(*Browser);
  EXPECT_EQ(Ask(*Browser, "document.documentElement.dataset.theme"), "light");
  // Changed while a document is loading.
  const int iDocuments = Events.Documents;
  Browser->Navigate(PageFile("Other.htm", ""), NavigateFlags::Fresh);
  Platform->Theme(Theme::Dark);
  WaitFor("a document", [&] { return Events.Documents > iDocuments; });
  ExpectLiveEqualsReplica(*Browser);
  EXPECT_EQ(Ask(*Browser, "document.documentElement.dataset.theme"), "dark");
}

TEST_F(DesktopWebBrowserTest, APageCanNeitherLeaveNorAskNorReachTheNetwork) {
  const Listener oListener;
  const std::string sURL = oListener.URL();
  PageFile("Elsewhere.htm", "<p>elsewhere</p>");
  struct Attempt {
    std::string Script;
    std::string Trace;
  };
  for (const Attempt& oAttempt : std::initializer_list<Attempt>{
           {"location = 'Elsewhere.htm'", "Elsewhere.htm"},
           {"location = 'about:blank'", "about:blank"},
           {"location = '" + sURL + "'", sURL},
           {"location = 'data:text/html,x'", ""},
           {"open('Elsewhere.htm')", ""},
           {"location.reload()", "Page.htm"},
           {"history.back()", ""},
           {"document.title = String(confirm('really?')) + prompt('what?', 'this') + alert('so')", "The page asks: so"},
       }) {
    SCOPED_TRACE(oAttempt.Script);
    ShowBody("<p id=\"p\">stays</p>");
    Traces.clear();
    const int iDocuments = Events.Documents;
    Ask(*Browser, "document.getElementById('p').after(Object.assign(document.createElement('script'), {textContent: `" +
                      oAttempt.Script + "`}))");
    if (!oAttempt.Trace.empty()) {
      WaitFor(("the refusal of " + oAttempt.Script).c_str(), [&] {
        return std::ranges::any_of(Traces, [&](const auto& s) { return s.find(oAttempt.Trace) != std::string::npos; });
      });
    }
    EXPECT_EQ(Ask(*Browser, "document.getElementById('p').textContent"), "stays");
    EXPECT_EQ(Events.Documents, iDocuments);
  }

  ShowBody("<img id=\"i\" onerror=\"title = 'blocked'\" src=\"" + sURL +
           "i.png\">"
           "<link rel=\"stylesheet\" href=\"" +
           sURL + "i.css\"><script src=\"" + sURL +
           "i.js\"></script>"
           "<script>fetch('" +
           sURL + "').catch(() => 0)</script><iframe src=\"" + sURL + "\"></iframe>");
  EXPECT_EQ(ByID(*Browser, "i").title(), "blocked");
  EXPECT_FALSE(oListener.Visited());
}

TEST_F(DesktopWebBrowserTest, ADeadProcessIsReportedAndReplaced) {
  ShowBody("<p id=\"p\">alive</p>");
  const auto oDocument = Browser->Document();
  const auto oProcesses = WebProcesses();
  ASSERT_EQ(oProcesses.size(), 1u);
  ByID(*Browser, "p").innerText("lost");
  kill(oProcesses[0], SIGKILL);
  Browser->Flush();
  WaitFor("word of its end", [this] { return Events.Log.back().starts_with("terminated"); });
  EXPECT_EQ(Browser->Document(), nullptr);
  EXPECT_TRUE(Browser->Settled());
  oDocument->all().item("p")->innerText("nowhere to go");

  ShowBody("<p id=\"p\">again</p>");
  EXPECT_EQ(ByID(*Browser, "p").innerText(), "again");
  ByID(*Browser, "p").innerText("changed");
  ExpectLiveEqualsReplica(*Browser);
}

TEST_F(DesktopWebBrowserTest, NavigatingForLongLeavesNothingBehind) {
  RecordedEvents oOtherEvents;
  DesktopWebBrowser oOther(*Platform, oOtherEvents);
  const std::string sPage = PageFile("Page.htm", "<p id=\"p\"></p>");
  const std::string sOther = PageFile("Other.htm", "<p id=\"p\"></p>");
  for (int i = 0; i < 100; ++i) {
    Show(i % 2 == 0 ? sPage : sOther);
    TestWindow::Show(oOther, oOtherEvents, i % 2 == 0 ? sOther : "about:blank");
    if (i % 10 == 0) Browser->Document()->body()->innerText("round");
  }
  EXPECT_EQ(WebView::Count(), 2);
  EXPECT_EQ(WebProcesses().size(), 2u);
  EXPECT_EQ(Browser->Document().use_count(), 2) << "earlier documents are gone, nothing else holds this one";
}

TEST_F(DesktopWebBrowserTest, GoneBrowsersTakeTheirProcessesAlong) {
  ShowBody("<p></p>");
  Browser.reset();
  EXPECT_EQ(WebView::Count(), 0);
  WaitFor("the end of the process", [] { return WebProcesses().empty(); });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
