#pragma once

#include "zelwbr3/base/Export.h"
#include "zelwbr3/dom/Element.h"

#include <functional>
#include <optional>
#include <string>

namespace ZELWbr3 {

/// Writes elements as HTML and keeps every blank of their texts.
class ZELWBR3_EXPORT HTMLWriter {
 public:
  /// May return markup to write in place of an element, such as a style element
  /// for a link to a style sheet.
  using Replacement = std::function<std::optional<std::string>(const Element&)>;

  explicit HTMLWriter(Replacement oReplacement = {}) : m_oReplacement(std::move(oReplacement)) {}

  /// The element with its tags and content.
  std::string Outer(const Element& oElement) const;
  /// The content only.
  std::string Inner(const Element& oElement) const;

 private:
  void WriteContent(std::string& sOut, const Element& oElement) const;
  void WriteElement(std::string& sOut, const Element& oElement) const;

  Replacement m_oReplacement;
};

}  // namespace ZELWbr3
