#include "zelwbr3/dom/EmbeddedObject.h"

#include <string>

namespace ZELWbr3 {

namespace {

std::string AttributeOf(std::string_view sProperty) {
  std::string sName = "data-";
  for (const char c : sProperty) sName += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  return sName;
}

}  // namespace

const std::string& EmbeddedObject::Property(std::string_view sName) const {
  return m_oElement.getAttribute(AttributeOf(sName));
}

void EmbeddedObject::Set(std::string_view sName, std::string_view sValue) {
  m_oElement.setAttribute(AttributeOf(sName), sValue);
}

}  // namespace ZELWbr3
