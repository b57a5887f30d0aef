#pragma once

#include "zelwbr3/ZELLib3/History.h"

#include <algorithm>
#include <cstddef>
#include <memory>

namespace ZELWbr3::Instances {

/// A backup history whose entries are known as a whole when it is opened, and
/// delivered in blocks. An entry is made when it is read.
class ListedHistory : public ZELLib3::History {
 public:
  bool IsEmpty() const override { return Count() == 0; }
  ZELLib3::Long RowCount() const override { return static_cast<ZELLib3::Long>(m_iDelivered); }
  bool Open() override {
    m_iDelivered = m_iPassed = 0;
    if (!Load()) return false;
    Deliver();
    return true;
  }
  bool ReadMore() override {
    if (!HasMore()) return Refuse("there are no more entries to read");
    Deliver();
    return true;
  }
  std::shared_ptr<const ZELLib3::HistoryItem> NextItem() override {
    return EndOfBlock() ? nullptr : std::make_shared<ZELLib3::HistoryItem>(Item(m_iPassed++));
  }
  bool EndOfBlock() const override { return m_iPassed == m_iDelivered; }
  bool HasMore() const override { return m_iDelivered < Count(); }

 protected:
  /// Looks which entries there are. False, and LastError says why, when that
  /// cannot be done; there are none then.
  virtual bool Load() = 0;
  virtual std::size_t Count() const = 0;
  /// Of the newest one, 0, to the oldest one.
  virtual ZELLib3::HistoryItem Item(std::size_t i) const = 0;
  /// Answers false, and LastError says why.
  virtual bool Refuse(const char* sWhy) = 0;

 private:
  static constexpr std::size_t kBlock = 100;

  void Deliver() { m_iDelivered = std::min(Count(), m_iDelivered + kBlock); }

  std::size_t m_iDelivered = 0;
  std::size_t m_iPassed = 0;
};

}  // namespace ZELWbr3::Instances
