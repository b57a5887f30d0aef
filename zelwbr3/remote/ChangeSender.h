#pragma once

#include "zelwbr3/dom/Change.h"
#include "zelwbr3/dom/FlatList.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

namespace ZELWbr3::Remote {

/// The change log of one document that a browser shows: collects changes into
/// batches and sends these without waiting, a few at a time.
///
/// A batch is a flat list with, for each change, its kind, its node and what
/// the kind needs of Other, Name and Text, in that order. Rows of one template
/// that follow each other are one record: their kind, the template, and one text
/// with, separated by Change::Separator, the first row's number, the number of
/// rows, what the columns are (as in a Change), the longest value of each column, and
/// the values. Batches are numbered
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
  /// Rows of a table's first record, which is sent at once so that it can be seen
  /// while the others are read, and of its further ones. A full record ends a
  /// batch.
  static constexpr std::uint32_t FirstRecordRows = 64;
  static constexpr std::uint32_t RecordRows = 2048;
  /// The kind that stands in a batch for Present; the others are those of Change.
  static constexpr std::uint32_t PresentKind = 11;
  /// Batches on their way at a time.
  static constexpr std::size_t Outstanding = 4;
  /// Batches that a block of rows, of up to 5,000, becomes.
  static constexpr std::size_t BlockBatches = 3;

  using Send = std::function<void(std::uint32_t iBatch, std::string sList)>;

  explicit ChangeSender(Send oSend) : m_oSend(std::move(oSend)) {}

  void Record(const Change& oChange) override;
  /// Shows a document that was filled beside the one shown (RemoteDocument::BeginRefresh).
  void Present();
  /// Sends what has been recorded so far, as soon as the browser takes it.
  void Flush();
  /// The browser has made all changes of this batch and of those before it.
  void Acknowledge(std::uint32_t iBatch);
  /// Another block of rows could make it more batches than may be on their way that
  /// have not been acknowledged.
  bool IsBehind() const { return m_iMade - m_iAcknowledged + BlockBatches > Outstanding; }
  /// True when every recorded change has been acknowledged.
  bool Settled() const { return m_oRows.Count == 0 && m_oBatch.Empty() && m_iAcknowledged == m_iMade; }

 private:
  /// Rows that become one record.
  struct Rows {
    NodeNumber Template = 0;
    NodeNumber First = 0;
    std::uint32_t Count = 0;
    std::uint32_t Most = 0;
    std::string Columns;
    std::vector<std::string> Longest;
    /// Each with a separator in front.
    std::string Texts;
  };

  void AddRow(const Change& oChange);
  void EndRows();
  void EndBatch();
  void SendWaiting();

  Send m_oSend;
  Rows m_oRows;
  FlatListWriter m_oBatch;
  /// Asked to be flushed, and held back.
  bool m_bFlush = false;
  std::deque<std::string> m_oWaiting;
  std::uint32_t m_iMade = 0;
  std::uint32_t m_iSent = 0;
  std::uint32_t m_iAcknowledged = 0;
};

}  // namespace ZELWbr3::Remote
