#pragma once

#include "instances/recorded/BlockCursor.h"
#include "instances/recorded/Object.h"

namespace ZELWbr3::Recorded {

/// The rows of a view or table; both interfaces read them alike.
template <class I>
class Rows : public Of<I> {
 public:
  explicit Rows(Place oPlace) : Of<I>(std::move(oPlace)) {}

  bool IsEmpty() const override {
    this->Check("IsEmpty");
    return List("Rows").empty();
  }
  Long RowCount() const override {
    this->Check("RowCount");
    return m_oCursor.Delivered();
  }
  Long ColumnCount() const override {
    this->Check("ColumnCount");
    return List("Columns").size();
  }
  std::string ColumnName(Long lColumn) const override { return Header("ColumnName", lColumn).Name; }
  std::string ColumnTitle(Long lColumn) const override { return Header("ColumnTitle", lColumn).Title; }

  bool Open() override {
    m_oCursor.Close();
    m_pSource = nullptr;
    if (!this->Do("Open")) return false;
    m_pSource = Source();
    if (m_pSource == nullptr) return false;
    const Json* const pBlockSize = this->Find(*m_pSource, "BlockSize");
    m_oCursor.Open(List("Rows").size(), pBlockSize != nullptr ? pBlockSize->get<std::size_t>() : DefaultBlockSize);
    return true;
  }
  bool ReadMore() override {
    if (!this->Do("ReadMore")) return false;
    m_oCursor.Deliver();
    return true;
  }
  bool NextRow() override { return this->Do("NextRow") && m_oCursor.Next(); }
  std::string Value(Long lColumn) const override {
    this->Check("Value");
    const auto lRow = m_oCursor.Current();
    if (!lRow) throw std::out_of_range("There is no current row");
    const Json& oRow = List("Rows")[*lRow];
    return oRow[Within(lColumn, oRow.size())].template get<std::string>();
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
  /// The object that Open reads from; null, with LastError set, when there is
  /// none.
  virtual const Json* Source() = 0;
  /// What the members read before Open.
  virtual const Json& Closed() const = 0;

 private:
  const Json& List(const char* sName) const {
    static const Json oEmpty = Json::array();
    const Json* const pList = this->Find(m_pSource != nullptr ? *m_pSource : Closed(), sName);
    return pList != nullptr ? *pList : oEmpty;
  }
  Column Header(const char* sName, Long lColumn) const {
    this->Check(sName);
    const Json& oColumns = List("Columns");
    return FromJson<Column>(oColumns[Within(lColumn, oColumns.size())]);
  }
  static std::size_t Within(Long lColumn, std::size_t lColumns) {
    if (lColumn < 0 || static_cast<std::size_t>(lColumn) >= lColumns) {
      throw std::out_of_range("There is no column " + std::to_string(lColumn) + " of " + std::to_string(lColumns));
    }
    return static_cast<std::size_t>(lColumn);
  }

  BlockCursor m_oCursor;
  const Json* m_pSource = nullptr;
};

}  // namespace ZELWbr3::Recorded
