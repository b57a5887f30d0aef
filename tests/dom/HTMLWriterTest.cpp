#include "zelwbr3/dom/HTMLWriter.h"

#include "tests/support/AgentModel.h"
#include "zelwbr3/dom/All.h"
#include "zelwbr3/dom/Document.h"
#include "zelwbr3/headless/HTMLParser.h"

#include <gtest/gtest.h>

namespace ZELWbr3 {

using Headless::ParseHTML;
using Testing::AgentModel;

namespace {

std::string WrittenAndParsed(const Document& oDocument) {
  return AgentModel::Describe(*ParseHTML("<!DOCTYPE html>" + HTMLWriter().Outer(*oDocument.documentElement())));
}

}  // namespace

TEST(HTMLWriter, WhatItWritesParsesToTheSameDocument) {
  for (const char* sHTML : {
           "<p>a &amp; b &lt;i> &quot;</p>",
           "<pre>\n\n two</pre><pre>one\n</pre><textarea>\n\nx</textarea><pre><b>\n</b></pre>",
           "<script>if (a < b && c) document.write('<p>')</script><style>a > b { content: \"&\" }</style>",
           "<p title='\"quoted\" & &lt;cut> \n line'>x</p>",
           "<br><img src=x><hr><input value=1>after<table><colgroup><col></colgroup><tr><td> 1 <td></table>",
           "<p>&#13;&nbsp; \t two</p><p title='&#13;&#10;'></p>",
           "<zel-fill-bar id=b></zel-fill-bar><unknown-thing Data-X=1>text</unknown-thing>",
           "<svg viewBox='0 0 1 1'><linearGradient id=g></linearGradient><path d='M0 0'/></svg>",
           "<object id=o><param name=a value=b>fallback</object>",
           "<title>a &lt; b</title><noscript>off</noscript><template><p>t</p></template>",
       }) {
    const auto oDocument = ParseHTML(std::string("<!DOCTYPE html>") + sHTML);
    EXPECT_EQ(WrittenAndParsed(*oDocument), AgentModel::Describe(*oDocument)) << sHTML;
  }
}

TEST(HTMLWriter, KeepsWhatAProgramWroteToTheBlank) {
  const auto oDocument = ParseHTML("<!DOCTYPE html><p id=p>x</p><pre id=r></pre>");
  for (const char* sText : {"  two  blanks  ", "</p><script>alert(1)</script>", "a\r\nb\rc\n", "&amp;&#13;", "\n\nx",
                            "\xE2\x80\xA8", "]]>", "<!--"}) {
    oDocument->all().item("p")->innerText(sText);
    oDocument->all().item("p")->title(sText);
    oDocument->all().item("r")->innerText(sText);
    EXPECT_EQ(WrittenAndParsed(*oDocument), AgentModel::Describe(*oDocument)) << sText;
  }
}

}  // namespace ZELWbr3
