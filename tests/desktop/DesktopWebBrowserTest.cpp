#include "tests/desktop/Listener.h"
#include "tests/desktop/TestWindow.h"
#include "zelwbr3/dom/EmbeddedObject.h"
#include "zelwbr3/dom/Style.h"
#include "zelwbr3/remote/FileURL.h"

#include <algorithm>
#include <fstream>
#include <future>
#include <random>

#include <signal.h>
#include <wx/app.h>

namespace ZELWbr3::Desktop {
namespace {

class DesktopWebBrowserTest : public TestBrowser {};

TEST_F(DesktopWebBrowserTest, ReportsANavigationInOrderAndReadsTheDocument) {
  PageFile("Inner.htm", "<p>inner</p><a id=\"out\" href=\"Outer.htm\">x</a>");
  ShowBody(
      "<p id=\"p\">one &amp; <b>two</b><!-- no --> three</p><iframe id=\"f\" src=\"Inner.htm\"></iframe>"
      "<script>document.getElementById('p').title = 'set'</script>");
  EXPECT_EQ(Events.Log, (std::vector<std::string>{"before", "navigated", "before frame", "navigated", "complete frame",
                                                  "complete"}));
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

  Show("ftp://127.0.0.1:9/");
  EXPECT_NE(Browser->Document()->body()->innerText().find("Only files"), std::string::npos);

  std::ofstream(Folder / "data.bin") << std::string(
      "\x7f"
      "ELF\0\1\2",
      7);
  Show((Folder / "data.bin").string());
  EXPECT_NE(Browser->Document()->body()->innerText().find("data.bin"), std::string::npos);

  ShowBody("<p id=\"p\">back</p>");
  EXPECT_EQ(ByID(*Browser, "p").innerText(), "back");
}

TEST_F(DesktopWebBrowserTest, GoesToTheNetworkForTheHostButNotForAPage) {
  const Listener oServer;
  const Listener oElsewhere;
  auto oAnswered = std::async(std::launch::async, [&] { return oServer.Answer("<p id=\"p\">from afar</p>"); });
  Show(oServer.URL());
  EXPECT_TRUE(oAnswered.get());
  EXPECT_EQ(ByID(*Browser, "p").innerText(), "from afar");
  Ask(*Browser, "location = '" + oElsewhere.URL() + "'");
  Ask(*Browser, "1");  // where to go has been decided by then
  EXPECT_FALSE(oElsewhere.Visited());
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

/// A page that is shown again without being loaded again.
class ShownAgainTest : public DesktopWebBrowserTest {
 protected:
  /// Which load the document comes from.
  std::string Load() { return Ask(*Browser, "performance.timeOrigin"); }
  /// What the user and the page's script find in a document.
  std::string State() {
    return Ask(*Browser,
               "document.documentElement.outerHTML + [document.activeElement.id, scrollY, getSelection(), text.value, "
               "document.querySelectorAll('style').length, bar.shadowRoot.textContent]");
  }
  std::string Script(const std::string& sText) { return "<script>" + sText + "</script>"; }

  const std::string Begins =
      "document.currentScript.dataset.beginsAgain = '';"
      "customElements.define('zel-test', class extends HTMLElement {"
      "  connectedCallback() { this.attachShadow({mode: 'open'}).textContent = this.title; } });"
      "const Begin = () => title.append(document.createElement('i'));"
      "addEventListener('load', Begin); document.addEventListener('zelwbr3reset', Begin);";
};

TEST_F(ShownAgainTest, ADocumentBeginsAsAfterALoad) {
  const std::string sPage = PageFile("Page.htm",
                                     "<h1 id=\"title\">Title</h1><zel-test id=\"bar\" title=\"x\"></zel-test>"
                                     "<button id=\"b\">x</button><input id=\"text\"><table><tbody id=\"rows\">"
                                     "<tr id=\"row\"><td>1</td></tr></tbody></table><p style=\"height: 3000px\">",
                                     "<style>p { color: red }</style>" + Script(Begins));
  Show(sPage);
  const std::string sLoad = Load();
  const std::string sState = State();
  const auto log = Events.Log;
  for (int i = 0; i < 3; ++i) {
    const auto oOld = Browser->Document();
    for (int iRow = 0; iRow < 20; ++iRow) ByID(*Browser, "rows").appendChild(ByID(*Browser, "row").cloneNode(true));
    ByID(*Browser, "title").innerText("changed");
    oOld->documentElement()->setAttribute("lang", "de");
    oOld->documentElement()->setAttribute("class", "c");
    if (i == 1) oOld->documentElement()->firstElementChild()->title("in the head");
    ExpectLiveEqualsReplica(*Browser);
    Ask(*Browser, "scrollTo(0, 500); text.focus(); text.value = 'typed'; getSelection().selectAllChildren(rows)");

    Events.Log.clear();
    const int iClicks = Events.Clicks;
    // A click that is still on its way when the page is shown again.
    const std::string sNumber = i == 0 ? "location.search.match(/\\d+$/)[0]" : "0";
    Browser->View()->Run("webkit.messageHandlers.zelwbr3.postMessage(`[\"click\",${" + sNumber + "},9]`)",
                         [](const WebView::Outcome&) {});
    Show(sPage);
    EXPECT_EQ(Events.Log, log);
    EXPECT_EQ(Events.Clicks, iClicks);
    oOld->all().item("title")->innerText("nowhere to go");
    ExpectLiveEqualsReplica(*Browser);
    EXPECT_EQ(ByID(*Browser, "title").innerText(), "Title");
    EXPECT_EQ(State(), sState);

    ClickOn(*Browser, "b");
    WaitFor("the click", [&] { return Events.Clicks > iClicks; });
    EXPECT_EQ(Browser->Document()->activeElement()->id(), "b");
  }
  EXPECT_EQ(Load(), sLoad);
  EXPECT_EQ(Traces, std::vector<std::string>());
  Browser->Focus();
  Ask(*Browser, "text.focus()");
  Show(sPage);
  Press("Tab");
  WaitFor("the focus", [&] { return Browser->Document()->activeElement()->id() == "b"; });
}

TEST_F(ShownAgainTest, WhatMayHaveChangedIsLoaded) {
  std::ofstream(Folder / "s.js") << Begins;
  PageFile("Inner.htm", "");
  const std::string sScript = "<script src=\"s.js\"></script>";
  const auto Change = [this](const char* sFile) {
    return [sPath = Folder / sFile] { std::ofstream(sPath, std::ios::app) << " "; };
  };
  struct Case {
    std::string Body;
    std::string Head;
    std::function<void()> Between = [] {};
    bool IsLoaded = true;
  };
  for (const Case& oCase : std::initializer_list<Case>{
           {"<h1 id=\"title\">x</h1><img src=\"data:,\">", sScript, [] {}, false},
           {"<h1 id=\"title\">x</h1>", sScript, Change("Page.htm")},
           {"<h1 id=\"title\">x</h1>", sScript, Change("s.js")},
           {"<link rel=\"stylesheet\" href=\"s.css\">", "", Change("s.css")},
           {"", Script("addEventListener('click', () => 0)")},
           {"<iframe src=\"Inner.htm\"></iframe>", ""},
           {"<img src=\"a%20b.svg\">", ""},
           {"", "", [this] { Ask(*Browser, "zelwbr3.Reset = () => { throw 1 }; 0"); }},
       }) {
    SCOPED_TRACE(oCase.Head + oCase.Body);
    const std::string sPage = PageFile("Page.htm", oCase.Body, oCase.Head);
    Show(sPage);
    const std::string sLoad = Load();
    oCase.Between();
    const int iDocuments = Events.Documents;
    Show(sPage);
    EXPECT_EQ(Load() != sLoad, oCase.IsLoaded);
    EXPECT_EQ(Events.Documents, iDocuments + 1);
    ExpectLiveEqualsReplica(*Browser);
  }
  Show((Folder / "later.htm").string());
  EXPECT_TRUE(Browser->Document()->IsErrorPage());
  Show(PageFile("later.htm", "<p id=\"p\">there</p>"));
  EXPECT_EQ(ByID(*Browser, "p").innerText(), "there");
}

TEST_F(ShownAgainTest, RowsOnTheirWayDoNotReachTheNewDocument) {
  const std::string sPage =
      PageFile("Page.htm", "<table><tbody id=\"rows\"><tr id=\"row\"><td>1</td></tr></tbody></table>");
  Show(sPage);
  const std::string sLoad = Load();
  for (int i = 0; i < 5; ++i) {
    for (int iRow = 0; iRow < 40'000; ++iRow) {
      ByID(*Browser, "rows").appendChild(ByID(*Browser, "row").cloneNode(true));
    }
    Browser->Flush();
    EXPECT_FALSE(Browser->Settled());
    Browser->Navigate(sPage, NavigateFlags::Fresh);
    EXPECT_TRUE(Browser->Settled());
    for (int iTurn = 0; iTurn < i; ++iTurn) Platform->Pump().Poll();
    if (i % 2 == 0) Show(sPage);  // again, while that is still going on
    WaitFor("the document", [this] { return Browser->Document()->Count() < 20; });
    ByID(*Browser, "row").cells(0)->innerText("first");
    ExpectLiveEqualsReplica(*Browser);
    EXPECT_EQ(Ask(*Browser, "document.getElementById('rows').rows.length"), "1");
  }
  EXPECT_EQ(Traces, std::vector<std::string>());
}

/// Changes a document at random, everything a page can do to it.
TEST_F(DesktopWebBrowserTest, TheLiveDocumentFollowsAnyChanges) {
  ShowBody(
      "<div id=\"a\" style=\"color: red; display: none\">text<i id=\"b\">in</i>tail</div><p id=\"leaf\">leaf</p>"
      "<table><tbody id=\"rows\"><tr id=\"template\"><td>1<b>x</b>y</td><td title=\"t\">2</td></tr></tbody></table>");
  std::mt19937 oRandom(1);
  std::vector<Element*> elements = {&ByID(*Browser, "a"), &ByID(*Browser, "b"), &ByID(*Browser, "rows")};
  const auto Text = [&] {
    static const std::string Hostile[] = {"\"quotes\" 'and' `ticks` ${x}',0);throw 1;('",
                                          "</script><script>alert(1)</script><!-- ",
                                          "\xE2\x80\xA8line\xE2\x80\xA9paragraph\r\nnew\ttab\v\f\b",
                                          std::string("nul\0in the middle", 17),
                                          "invalid \xFF\xC3( \xED\xA0\x80 \xF4\x90\x80\x80 cut \xE2\x82",
                                          "\\u0041 \\ \\\\' \\\" &amp; &lt;",
                                          "\xF0\x9F\x98\x80 \xE6\x97\xA5\xEF\xBB\xBF\xEF\xBF\xBF\x7F   ",
                                          ""};
    return Hostile[oRandom() % std::size(Hostile)];
  };
  const auto Clone = [&]() -> Element& {
    Element& oClone = ByID(*Browser, "template").cloneNode(true);
    oClone.id("");
    oClone.cells(oRandom() % 2)->innerText(Text());
    return *elements.emplace_back(&oClone);
  };
  // Never what holds other elements that are still used.
  const auto Leaf = [&](Element& o) -> Element& { return o.cells(0) ? *o.cells(0) : ByID(*Browser, "leaf"); };
  const std::function<void(Element&)> changes[] = {
      [&](Element& o) { Leaf(o).innerText(Text()); },
      [&](Element& o) { Leaf(o).innerHTML("x<b title=\"a&quot;b\">y&amp;z</b> t<br>u"); },
      [&](Element& o) { o.setAttribute("data-x" + std::to_string(oRandom() % 3), Text()); },
      [&](Element& o) { o.removeAttribute("data-x" + std::to_string(oRandom() % 3)); },
      [&](Element& o) { o.style().display(oRandom() % 2 == 0 ? "none" : ""); },
      [&](Element& o) { o.appendChild(Clone()); },
      [&](Element& o) { o.parentElement() != nullptr ? void(o.after(Clone())) : void(); },
      [&](Element& o) { o.title(Text()); },
      [&](Element& o) { o.className("c" + std::to_string(oRandom() % 5)); },
  };
  for (int i = 1; i <= 6000 && !HasFailure(); ++i) {
    changes[oRandom() % std::size(changes)](*elements[oRandom() % elements.size()]);
    if (i % 500 == 0) ExpectLiveEqualsReplica(*Browser);
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

TEST_F(DesktopWebBrowserTest, WhatAPagesOwnScriptsDoDoesNotDisturbTheNumbers) {
  ShowBody(
      "<table><tbody id=\"rows\"><tr id=\"row\"><td>a</td><td>b</td></tr></tbody></table>"
      "<div id=\"box\"><zel-test id=\"bar\" data-percent=\"1\"></zel-test></div>",
      "<script>addEventListener('load', () => {"
      "  rows.insertAdjacentHTML('afterbegin', '<tr><th>added</th></tr>');"
      "  row.insertAdjacentHTML('afterbegin', '<td><i>added</i></td>'); });"
      "customElements.define('zel-test', class extends HTMLElement {"
      "  static observedAttributes = ['data-percent'];"
      "  constructor() { super(); this.attachShadow({mode: 'open'}); }"
      "  attributeChangedCallback() { this.shadowRoot.textContent = this.getAttribute('data-percent') + '%'; }"
      "})</script>");
  Element& oRow = ByID(*Browser, "row").cloneNode(true);
  oRow.cells(1)->innerText("second");
  ByID(*Browser, "rows").appendChild(oRow);
  ByID(*Browser, "bar").object().Property("Percent", 42);
  Element& oClone = ByID(*Browser, "bar").cloneNode(true);
  oClone.id("bar2");
  oClone.object().Property("Percent", 77);
  ByID(*Browser, "box").appendChild(oClone);
  ExpectLiveEqualsReplica(*Browser);
  EXPECT_EQ(Ask(*Browser, "document.getElementById('rows').textContent"), "addedaddedabaddedasecond");
  EXPECT_EQ(Ask(*Browser, "[bar, bar2].map(o => o.shadowRoot.textContent).join()"), "42%,77%");
}

TEST_F(DesktopWebBrowserTest, AThemeChosenWhileADocumentLoadsReachesIt) {
  Platform->Theme(Theme::Light);
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
      WaitFor("the refusal of " + oAttempt.Script, [&] {
        return std::ranges::any_of(Traces, [&](const auto& s) { return s.find(oAttempt.Trace) != std::string::npos; });
      });
    }
    EXPECT_EQ(Ask(*Browser, "document.getElementById('p').textContent"), "stays");
    EXPECT_EQ(Events.Documents, iDocuments);
  }

  std::string sReaching =
      "<img id='i' onerror='title = `blocked`' src='URL/i.png'><link rel='stylesheet' href='URL/i.css'>"
      "<script src='URL/i.js'></script><script>fetch('URL').catch(() => 0)</script><iframe src='URL'></iframe>";
  for (std::size_t i = 0; (i = sReaching.find("URL", i)) != std::string::npos;) sReaching.replace(i, 3, sURL);
  ShowBody(sReaching);
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
  const std::string sPage = PageFile("Page.htm", "<p id=\"p\">again</p>");
  Show(sPage);
  ByID(*Browser, "p").innerText("changed");
  ExpectLiveEqualsReplica(*Browser);
  // The same while the page begins again.
  kill(WebProcesses().at(0), SIGKILL);
  Browser->Navigate(sPage, NavigateFlags::Fresh);
  WaitFor("word of its end", [this] { return Events.Log.back().starts_with("terminated"); });
  EXPECT_TRUE(std::ranges::none_of(Traces, [](const auto& s) { return s.find("begin again") != std::string::npos; }));
  EXPECT_EQ(Browser->Document(), nullptr);
  Show(sPage);
  ExpectLiveEqualsReplica(*Browser);
}

TEST_F(DesktopWebBrowserTest, NavigatingForLongLeavesNothingOver) {
  RecordedEvents oOtherEvents;
  DesktopWebBrowser oOther(*Platform, oOtherEvents);
  const std::string sPage = PageFile("Page.htm", "<p id=\"p\"></p>");
  for (int i = 0; i < 100; ++i) {
    Show(i % 2 == 0 ? sPage : "about:blank");
    TestWindow::Show(oOther, oOtherEvents, i % 2 == 0 ? "about:blank" : sPage);
  }
  EXPECT_EQ(WebView::Count(), 2);
  EXPECT_EQ(WebProcesses().size(), 2u);
  EXPECT_EQ(Browser->Document().use_count(), 2) << "earlier documents are gone, nothing else holds this one";
  Browser.reset();
  WaitFor("the end of the process", [] { return WebProcesses().size() == 1; });
}

}  // namespace
}  // namespace ZELWbr3::Desktop
