#pragma once

#include "zelwbr3/instances/recorded/writing/Walks.h"

#include <initializer_list>

namespace ZELWbr3::Recorded {

/// Makes the list of an interface's members, in the order in which a recording
/// shows them. A member with a getter is a key, checked as what the getter
/// answers and written from it.
template <class I>
class Table {
 public:
  explicit Table(std::string sClass, Interface::Form eForm = Interface::Form::Object) {
    m_oInterface.sClass = std::move(sClass);
    m_oInterface.eForm = eForm;
  }

  operator Interface() { return std::move(m_oInterface); }

  /// A property, or a sub-object. One that answers "no value" has failed.
  template <class Getter>
  Table& Value(const char* sName, Getter fnGet) {
    using T = std::decay_t<std::invoke_result_t<Getter, I&>>;
    return Add({sName, &TypeOf<T>(), true, IsOptional<T>, [=](void* pObject, Writer& oWriter) {
                  const auto oRead = oWriter.Read(sName, [&] { return std::invoke(fnGet, *static_cast<I*>(pObject)); });
                  if (!oRead) return;
                  if constexpr (IsOptional<T>) {
                    *oRead ? oWriter.Put(sName, **oRead) : oWriter.Failed(sName);
                  } else {
                    oWriter.Put(sName, *oRead);
                  }
                }});
  }

  /// A property that is read by index, from 0, with as many indexes as have a
  /// meaning.
  template <class T>
  Table& Indexed(const char* sName, T (I::*fnGet)(Long) const, int lCount) {
    return Add({sName, &TypeOf<std::vector<T>>(), true, false, [=](void* pObject, Writer& oWriter) {
                  std::vector<T> oList;
                  for (int lIndex = 0; lIndex < lCount; ++lIndex) {
                    const auto oRead = oWriter.Read(sName, [&] { return (static_cast<I*>(pObject)->*fnGet)(lIndex); });
                    if (!oRead) return;
                    oList.push_back(*oRead);
                  }
                  oWriter.Put(sName, oList);
                }});
  }

  /// A key that stands for other members, which `fnWrite` reads.
  template <class F>
  Table& Key(const char* sName, const Type& oType, F fnWrite) {
    return Add({sName, &oType, false, false,
                [=](void* pObject, Writer& oWriter) { fnWrite(*static_cast<I*>(pObject), oWriter); }});
  }
  /// A key that is put along with another one.
  Table& Key(const char* sName, const Type& oType) { return Add({sName, &oType, false, false}); }
  /// A member of that kind.
  Table& Count(const char* sName, const Type& oType) { return Add({sName, &oType}); }

  /// Members that are not keys.
  Table& Methods(std::initializer_list<const char*> oNames) {
    for (const char* sName : oNames) Add({sName});
    return *this;
  }
  Table& Operations(std::initializer_list<const char*> oNames) {
    for (const char* sName : oNames) Add({sName, nullptr, true, true});
    return *this;
  }
  /// An operation that fetches what the members listed after it answer.
  Table& Fetch(const char* sName, bool (I::*fnCall)()) {
    return Add({sName, nullptr, true, true, [=](void* pObject, Writer& oWriter) {
                  oWriter.Do(sName, [&] { return (static_cast<I*>(pObject)->*fnCall)(); });
                }});
  }

  /// The field of a plain entry.
  template <class T>
  Table& Field(const char* sName, T I::*pField) {
    m_oInterface.bPlain = true;
    return Add({sName, &TypeOf<T>(), false, false,
                [=](void* pEntry, Writer& oWriter) { oWriter.Put(sName, static_cast<I*>(pEntry)->*pField); },
                [=](void* pEntry, const Json& oJson) { static_cast<I*>(pEntry)->*pField = FromJson<T>(oJson); }});
  }

  /// The entries of a 1-based collection.
  template <class Entry>
  Table& Collection() {
    Count("Count", TypeOf<decltype(std::declval<I&>().Count())>());
    Methods({"Item"});
    return Key("Items", TypeOf<std::vector<Entry>>(), [](I& oCollection, Writer& oWriter) {
      const auto oCount = oWriter.Read("Count", [&] { return oCollection.Count(); });
      if (!oCount) return;
      Writer::Output oItems = Writer::Output::array();
      // The entries end at the first that cannot be read, and so does an
      // absurd count.
      for (int lItem = 1; lItem <= *oCount; ++lItem) {
        const auto oItem = oWriter.Read("Item", [&] { return oCollection.Item(lItem); });
        if (!oItem) break;
        oItems.push_back(oWriter.Object(**oItem, InterfaceOf<Entry>().sClass));
      }
      if (static_cast<std::int64_t>(oItems.size()) != *oCount) oWriter.Put("Count", *oCount);
      oWriter.PutOutput("Items", std::move(oItems));
    });
  }

  /// The members that views and tables share.
  Table& RowSource() {
    Key("BlockSize", BlockSizeType());
    Key("Columns", TypeOf<std::vector<Column>>());
    Key("Rows", TypeOf<std::vector<RowTexts>>(), WriteRows<I>);
    Methods({"IsEmpty", "RowCount", "ColumnCount", "ColumnName", "ColumnTitle", "Value", "EndOfBlock", "HasMore"});
    return Operations({"Open", "ReadMore", "NextRow"});
  }

 private:
  Table& Add(Member oMember) {
    m_oInterface.oMembers.push_back(std::move(oMember));
    return *this;
  }

  Interface m_oInterface;
};

}  // namespace ZELWbr3::Recorded
