#pragma once

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/Page.h"
#include "zelwbr3/framework/modCells.h"

#include <span>
#include <string>
#include <utility>
#include <vector>

namespace ZELWbr3::Bench {

/// A page with an empty table to fill: a plain one, or one that is a list.
class PageRows : public Page {
 public:
  explicit PageRows(std::string sName = "Rows") : m_sName(std::move(sName)) {}
  std::string Name() const override { return m_sName; }
  Long PageType() const override { return 99; }
  Long WebBrowser() const override { return 1; }
  void Show() { ShowInFrame(); }
  bool HandleOnClick(const std::string&) override { return false; }
  bool HandleOnKeyDown(Long&, Element*) override { return false; }

  using Page::Document;

 private:
  std::string m_sName;
};

inline constexpr int Columns = 6;

/// Texts of about twelve characters, all different.
inline std::vector<std::string> MakeTexts(int iRows) {
  std::vector<std::string> texts;
  texts.reserve(static_cast<std::size_t>(iRows) * Columns);
  for (int i = 0; i < iRows * Columns; ++i) texts.push_back("value " + std::to_string(100000 + i));
  return texts;
}

/// Adds the rows to the table of the page, as the page controllers do.
inline void AddRows(Document& oDocument, const std::vector<std::string>& texts) {
  Element& oTemplate = *oDocument.all().item("rowTemplate");
  for (std::size_t i = 0; i < texts.size(); i += Columns) {
    modCells::AddRow(oTemplate, std::span(texts).subspan(i, Columns));
  }
}

/// The same in the page: a script that keeps the texts for BuildRows, which
/// builds the rows from them and returns the milliseconds it took.
inline std::string KeepTexts(const std::vector<std::string>& texts) {
  std::string sScript = "globalThis.benchTexts = [";
  for (const std::string& sText : texts) sScript += "'" + sText + "',";
  return sScript + "]; 0";
}

inline constexpr const char* BuildRows = R"((() => {
  const texts = globalThis.benchTexts;
  const start = performance.now();
  const section = document.getElementById('tabRows').tBodies[0];
  const template = section.rows[0];
  for (let i = 0; i < texts.length; ) {
    const row = template.cloneNode(true);
    section.appendChild(row);
    row.style.display = '';
    for (const cell of row.cells) cell.textContent = texts[i++];
  }
  return performance.now() - start;
})())";

}  // namespace ZELWbr3::Bench
