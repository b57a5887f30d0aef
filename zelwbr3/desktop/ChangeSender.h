#pragma once

#include "zelwbr3/dom/Change.h"
#include "zelwbr3/dom/FlatList.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>

namespace ZELWbr3::Desktop {

/// The change log of one document that a browser shows: collects changes into
/// batches and sends these without waiting, a few at a time.
///
/// A batch is a flat list with, for each change, its kind, its node and what
/// the kind needs of Other, Name and Text, in that order. Batches are numbered
/// from 1. Only a few batches are sent ahead of what the browser has confirmed;
/// the rest waits here, so a fill of any size cannot flood the channel.
class ChangeSender : public ChangeLog {
 public:
  /// Bytes after which a batch is sent although more changes may follow. A
  /// batch costs the browser some 0.1 ms beyond its changes; measured, sizes
  /// from 256 KiB to 1 MiB make no difference.
  static constexpr std::size_t BatchSize = std::size_t{512} * 1024;
  /// Bytes from which a batch is worth its costs. A smaller one is sent only when
  /// the browser has nothing else to do, so flushing after every little change
  /// sends no more batches than the browser can take.
  static constexpr std::size_t SmallBatch = std::size_t{32} * 1024;
  /// Batches on their way at a time.
  static constexpr std::size_t Outstanding = 4;

  using Send = std::function<void(std::uint32_t iBatch, std::string sList)>;

  explicit ChangeSender(Send oSend) : m_oSend(std::move(oSend)) {}

  void Record(const Change& oChange) override;
  /// Sends what has been recorded so far, as soon as the browser takes it.
  void Flush();
  /// The browser has made all changes of this batch and of those before it.
  void Acknowledge(std::uint32_t iBatch);
  /// As many batches as may be on their way have not been acknowledged.
  bool IsBehind() const { return m_iMade - m_iAcknowledged >= Outstanding; }
  /// True when every recorded change has been acknowledged.
  bool Settled() const { return m_oBatch.Empty() && m_iAcknowledged == m_iMade; }

 private:
  void EndBatch();
  void SendWaiting();

  Send m_oSend;
  FlatListWriter m_oBatch;
  /// Asked to be flushed, and held back.
  bool m_bFlush = false;
  std::deque<std::string> m_oWaiting;
  std::uint32_t m_iMade = 0;
  std::uint32_t m_iSent = 0;
  std::uint32_t m_iAcknowledged = 0;
};

}  // namespace ZELWbr3::Desktop
