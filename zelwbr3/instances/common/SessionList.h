#pragma once

#include "zelwbr3/ZELLib3/Sessions.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace ZELWbr3::Instances {

/// One of a list: its number there and its texts, the name first.
class ListedSession : public ZELLib3::Session {
 public:
  using Texts = std::array<std::string, 6>;
  struct Entry {
    Texts Fields;
    std::optional<bool> Active;
    std::string Detail;
  };

  ListedSession(ZELLib3::Integer iIndex, Entry oEntry) : m_iIndex(iIndex), m_oEntry(std::move(oEntry)) {}

  ZELLib3::Long Index() const override { return std::int16_t{m_iIndex}; }
  std::string Name() const override { return m_oEntry.Fields[0]; }
  std::string Field1() const override { return m_oEntry.Fields[1]; }
  std::string Field2() const override { return m_oEntry.Fields[2]; }
  std::string Field3() const override { return m_oEntry.Fields[3]; }
  std::string Field4() const override { return m_oEntry.Fields[4]; }
  std::string Field5() const override { return m_oEntry.Fields[5]; }
  std::optional<bool> IsActive() const override { return m_oEntry.Active; }
  std::string Detail() const override { return m_oEntry.Detail; }

 private:
  ZELLib3::Integer m_iIndex;
  Entry m_oEntry;
};

/// Sessions that are all read at once, at the first use or by Refresh; at most as
/// many as an Integer can number.
class SessionList : public ZELLib3::Sessions {
 public:
  ZELLib3::Integer Count() const override {
    return std::min<std::size_t>(List().size(), std::numeric_limits<std::int16_t>::max());
  }
  std::shared_ptr<ZELLib3::Session> Item(ZELLib3::Integer iIndex) const override {
    if (iIndex < 1 || iIndex > Count()) throw std::out_of_range("There is no such session");
    return std::make_shared<ListedSession>(iIndex, List()[static_cast<std::size_t>(iIndex - 1)]);
  }

 protected:
  /// Raises ZELLib3::InstanceError when they cannot be read.
  virtual std::vector<ListedSession::Entry> Read() const = 0;
  const std::vector<ListedSession::Entry>& List() const { return m_oList ? *m_oList : m_oList.emplace(Read()); }
  /// The next use reads them anew.
  void Forget() { m_oList.reset(); }

 private:
  mutable std::optional<std::vector<ListedSession::Entry>> m_oList;
};

}  // namespace ZELWbr3::Instances
