#pragma once

#include "zelwbr3/instances/recorded/objects/BlockCursor.h"
#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

/// What views, tables and the history have in common: entries that lie in an
/// array of the recording and are delivered in blocks.
template <class I>
class Blocks : public Of<I> {
 public:
  bool IsEmpty() const override {
    this->Check("IsEmpty");
    return Entries().empty();
  }
  Long RowCount() const override {
    this->Check("RowCount");
    return m_oCursor.Delivered();
  }
  bool Open() override {
    m_oCursor.Close();
    if (!this->Do("Open")) return false;
    const Json* const pSource = Source();
    m_pSource = pSource != nullptr ? pSource : &this->Nothing();
    if (pSource == nullptr) return false;
    const Json* const pBlockSize = this->Find(*pSource, "BlockSize");
    m_oCursor.Open(Entries().size(), pBlockSize != nullptr ? pBlockSize->get<std::size_t>() : DefaultBlockSize);
    return true;
  }
  bool ReadMore() override {
    if (!this->Do("ReadMore")) return false;
    m_oCursor.Deliver();
    return true;
  }
  bool EndOfBlock() const override {
    this->Check("EndOfBlock");
    return m_oCursor.EndOfBlock();
  }
  bool HasMore() const override {
    this->Check("HasMore");
    return m_oCursor.HasMore();
  }

 protected:
  /// `sEntries` is the key of the entries; `oClosed` is read before Open.
  Blocks(Place oPlace, const char* sEntries, const Json& oClosed)
      : Of<I>(std::move(oPlace)), m_sEntries(sEntries), m_pSource(&oClosed) {}

  /// What Open reads from; null, with LastError set, when there is none.
  virtual const Json* Source() { return this->Here().pValue; }

  /// A list of the source.
  const Json& ListOfSource(const char* sName) const { return this->ListOf(*m_pSource, sName); }
  const Json& Entries() const { return ListOfSource(m_sEntries); }

  bool Next() { return m_oCursor.Next(); }
  /// Which entry was last stepped to.
  std::optional<std::size_t> CurrentIndex() const { return m_oCursor.Current(); }
  /// That entry; null before the first.
  const Json* Current() const {
    const auto lEntry = CurrentIndex();
    return lEntry ? &Entries()[*lEntry] : nullptr;
  }

 private:
  BlockCursor m_oCursor;
  const char* m_sEntries;
  const Json* m_pSource;
};

}  // namespace ZELWbr3::Recorded
