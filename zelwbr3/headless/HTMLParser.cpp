#include "zelwbr3/headless/HTMLParser.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/dom/DocumentBuilder.h"

#include <gumbo.h>

namespace ZELWbr3::Headless {

namespace {

std::string TagName(const GumboElement& oElement) {
  if (oElement.tag != GUMBO_TAG_UNKNOWN) return gumbo_normalized_tagname(oElement.tag);
  GumboStringPiece oTag = oElement.original_tag;
  gumbo_tag_from_original_text(&oTag);
  std::string sTag(oTag.data, oTag.length);
  for (char& c : sTag) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return sTag;
}

void Build(DocumentBuilder& oBuilder, const GumboNode& oNode) {
  switch (oNode.type) {
    case GUMBO_NODE_ELEMENT:
    case GUMBO_NODE_TEMPLATE: {
      const GumboElement& oElement = oNode.v.element;
      oBuilder.Begin(TagName(oElement));
      for (unsigned i = 0; i < oElement.attributes.length; ++i) {
        const auto& oAttribute = *static_cast<const GumboAttribute*>(oElement.attributes.data[i]);
        oBuilder.Attribute(oAttribute.name, oAttribute.value);
      }
      for (unsigned i = 0; i < oElement.children.length; ++i) {
        Build(oBuilder, *static_cast<const GumboNode*>(oElement.children.data[i]));
      }
      oBuilder.End();
      break;
    }
    case GUMBO_NODE_TEXT:
    case GUMBO_NODE_WHITESPACE:
    case GUMBO_NODE_CDATA:
      oBuilder.Text(oNode.v.text.text);
      break;
    case GUMBO_NODE_DOCUMENT:
    case GUMBO_NODE_COMMENT:
      break;
  }
}

}  // namespace

std::shared_ptr<Document> ParseHTML(std::string_view sHTML) {
  const auto Destroy = [](GumboOutput* oOutput) { gumbo_destroy_output(&kGumboDefaultOptions, oOutput); };
  const std::unique_ptr<GumboOutput, decltype(Destroy)> oOutput(
      gumbo_parse_with_options(&kGumboDefaultOptions, sHTML.data(), sHTML.size()), Destroy);
  auto oDocument = std::make_shared<Document>();
  DocumentBuilder oBuilder(*oDocument);
  Build(oBuilder, *oOutput->root);
  return oDocument;
}

std::shared_ptr<Document> LoadPageFile(const std::string& sPath) {
  try {
    const std::string sHTML = ReadFile(sPath);
    return sHTML.empty() ? nullptr : ParseHTML(sHTML);
  } catch (const ReadFileError&) {
    return nullptr;
  }
}

std::shared_ptr<Document> PageNotFound(const std::string& sPath) {
  return ParseHTML("<!DOCTYPE html><html lang=\"en\" " + std::string(Document::ErrorPageMark) +
                   "=\"\"><head><title>Page not found</title></head><body><h1>Page not found</h1><p>" +
                   Text::EscapeHTML(sPath) + " cannot be read.</p></body></html>");
}

}  // namespace ZELWbr3::Headless
