#pragma once

#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

class ParameterHistory final : public Of<ZELLib3::ParameterHistory> {
 public:
  using Of::Of;

  bool Open() override {
    m_lEntry = 0;
    m_bOpen = false;
    return m_bOpen = Do("Open");
  }
  bool HasEntry() const override {
    Check("HasEntry");
    return &Entry() != &Nothing();
  }
  bool MoveNext() override {
    if (!Do("MoveNext")) return false;
    if (&Entry() != &Nothing()) ++m_lEntry;
    return &Entry() != &Nothing();
  }

  ZELWbr3::Date Date() const override { return Current("Date").Date; }
  std::string Parameter() const override { return Current("Parameter").Parameter; }
  std::string Value() const override { return Current("Value").Value; }
  std::string NewValue() const override { return Current("NewValue").NewValue; }
  std::string Text() const override { return Current("Text").Text; }

 private:
  ListedChange Current(const char* sName) const {
    Check(sName);
    return FromJson<ListedChange>(Entry());
  }
  const Json& Entry() const {
    const Json& oItems = List("Items");
    return m_bOpen && m_lEntry < oItems.size() ? oItems[m_lEntry] : Nothing();
  }

  bool m_bOpen = false;
  std::size_t m_lEntry = 0;
};

}  // namespace ZELWbr3::Recorded
