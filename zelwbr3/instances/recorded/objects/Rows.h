#pragma once

#include "zelwbr3/instances/recorded/objects/Blocks.h"

namespace ZELWbr3::Recorded {

/// The rows of a view or table; both interfaces read them alike.
template <class I>
class Rows : public Blocks<I> {
 public:
  Long ColumnCount() const override {
    this->Check("ColumnCount");
    return Columns().size();
  }
  std::string ColumnName(Long lColumn) const override { return Header("ColumnName", lColumn).Name; }
  std::string ColumnTitle(Long lColumn) const override { return Header("ColumnTitle", lColumn).Title; }

  bool NextRow() override { return this->Do("NextRow") && this->Next(); }
  std::string Value(Long lColumn) const override {
    this->Check("Value");
    const Json* const pRow = this->Current();
    if (pRow == nullptr) throw std::out_of_range("There is no current row");
    return At(*pRow, lColumn).template get<std::string>();
  }

 protected:
  Rows(Place oPlace, const Json& oClosed) : Blocks<I>(std::move(oPlace), "Rows", oClosed) {}

 private:
  const Json& Columns() const { return this->ListOfSource("Columns"); }
  Column Header(const char* sName, Long lColumn) const {
    this->Check(sName);
    return FromJson<Column>(At(Columns(), lColumn));
  }
  static const Json& At(const Json& oList, Long lColumn) {
    if (lColumn < 0 || static_cast<std::size_t>(lColumn) >= oList.size()) {
      throw std::out_of_range("There is no column " + std::to_string(lColumn) + " of " + std::to_string(oList.size()));
    }
    return oList[static_cast<std::size_t>(lColumn)];
  }
};

}  // namespace ZELWbr3::Recorded
