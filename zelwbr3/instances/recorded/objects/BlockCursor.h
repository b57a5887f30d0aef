#pragma once

#include "zelwbr3/instances/recorded/format/Schema.h"

#include <algorithm>

namespace ZELWbr3::Recorded {

/// Where a reader stands in entries that are delivered in blocks. Closed, it
/// has delivered nothing and has no more.
class BlockCursor {
 public:
  void Open(std::size_t lTotal, std::size_t lBlockSize) {
    *this = {};
    m_lTotal = lTotal;
    m_lBlockSize = lBlockSize;
    Deliver();
  }
  void Close() { *this = {}; }

  /// Delivers the next block. Entries that were not stepped to yet stay ahead.
  void Deliver() { m_lDelivered = std::min(m_lTotal, m_lDelivered + m_lBlockSize); }
  /// Steps to the next entry delivered; false at the end of the block.
  bool Next() {
    if (EndOfBlock()) return false;
    ++m_lPassed;
    return true;
  }
  /// Index of the entry last stepped to.
  std::optional<std::size_t> Current() const { return m_lPassed > 0 ? std::optional(m_lPassed - 1) : std::nullopt; }

  Long Delivered() const { return m_lDelivered; }
  bool EndOfBlock() const { return m_lPassed == m_lDelivered; }
  bool HasMore() const { return m_lDelivered < m_lTotal; }

 private:
  std::size_t m_lTotal = 0;
  std::size_t m_lBlockSize = 0;
  std::size_t m_lDelivered = 0;
  std::size_t m_lPassed = 0;
};

}  // namespace ZELWbr3::Recorded
