#pragma once

#include "zelwbr3/instances/recorded/format/Path.h"
#include "zelwbr3/instances/recorded/format/Values.h"
#include "zelwbr3/instances/recorded/objects/State.h"

namespace ZELWbr3::Recorded {

/// Where an object stands: in which opened recording, at which of its values,
/// and under which path "raises" may name it.
struct Place {
  std::shared_ptr<State> oState;
  const Json* pValue;
  std::string sPath;
};

/// What all objects of a recorded instance are made of. Each member reads by
/// one of these calls, which know what "raises" and "fails" list; the names
/// are the interface's own.
class Object {
 public:
  Object(Place oPlace, const std::string& sClass) : m_oPlace(std::move(oPlace)), m_sClass(sClass) {}

 protected:
  /// A property; the default when the recording does not have it.
  template <class T>
  T Get(const char* sName, T oDefault = {}) const {
    Check(sName);
    const Json* const pValue = Find(*m_oPlace.pValue, sName);
    return pValue != nullptr ? FromJson<T>(*pValue) : oDefault;
  }

  /// An indexed property; `oPast` for an index that has no value.
  template <class T>
  T Indexed(const char* sName, Long lIndex, T oPast) const {
    Check(sName);
    const Json& oList = List(sName);
    return lIndex >= 0 && static_cast<std::size_t>(lIndex) < oList.size() ? FromJson<T>(oList[lIndex]) : oPast;
  }
  double Counter(const char* sName, Long lIndex) const { return Indexed<double>(sName, lIndex, -1); }

  /// A sub-object, an empty one where the recording has none.
  template <class T>
  std::shared_ptr<T> Sub(const char* sName) const {
    Check(sName);
    const Json* const pValue = Find(*m_oPlace.pValue, sName);
    const bool bObject = pValue != nullptr && pValue->is_object();
    return std::make_shared<T>(Place{m_oPlace.oState, bObject ? pValue : &Nothing(), Join(m_oPlace.sPath, sName)});
  }

  /// Entries of a collection. Count may say more or less than there are.
  template <class T>
  T Count() const {
    return Get<T>("Count", List("Items").size());
  }
  template <class T>
  std::shared_ptr<T> Item(Long lItem) const {
    Check("Item");
    const Json& oItems = List("Items");
    const Json* const pCount = Find(*m_oPlace.pValue, "Count");
    if (lItem < 1 || (pCount != nullptr && lItem > pCount->get<std::int64_t>()) ||
        static_cast<std::size_t>(lItem) > oItems.size()) {
      throw std::out_of_range(m_sClass + ": there is no item " + std::to_string(lItem) + ", the recording has " +
                              std::to_string(oItems.size()));
    }
    return std::make_shared<T>(Place{m_oPlace.oState, &oItems[lItem - 1], Join(m_oPlace.sPath, "Item")});
  }

  /// A list, empty where the recording has none.
  const Json& List(const char* sName) const { return ListOf(*m_oPlace.pValue, sName); }
  static const Json& ListOf(const Json& oObject, const char* sName);

  /// Raises what a member in "raises" raises.
  void Check(const char* sName) const {
    if (!m_oPlace.oState->oRaises.empty()) CheckRaises(sName);
  }

  /// An operation: reports it, then raises or answers false as listed.
  template <class... Arguments>
  bool Do(const char* sName, const Arguments&... oArguments) const {
    return Called(sName, false, oArguments...);
  }
  /// An operation that changes the instance.
  template <class... Arguments>
  bool Change(const char* sName, const Arguments&... oArguments) const {
    return Called(sName, true, oArguments...);
  }
  bool Fails(const char* sName) const;

  State& Shared() const { return *m_oPlace.oState; }
  const Place& Here() const { return m_oPlace; }

  static const Json* Find(const Json& oObject, const char* sName) {
    const auto it = oObject.find(sName);
    return it != oObject.end() ? &*it : nullptr;
  }
  static const Json& Nothing();

 private:
  template <class... Arguments>
  bool Called(const char* sName, bool bChanges, const Arguments&... oArguments) const {
    if (Shared().fnObserver) Shared().fnObserver({Join(m_sClass, sName), {Call::Argument(oArguments)...}, bChanges});
    Check(sName);
    return !Fails(sName);
  }
  bool Lists(const std::unordered_set<std::string>& oPaths, const char* sName) const;
  void CheckRaises(const char* sName) const;

  Place m_oPlace;
  const std::string& m_sClass;  // a string that lives as long as the program
};

/// An object of the recorded instance that implements the interface I.
template <class I>
class Of : public I, protected Object {
 public:
  explicit Of(Place oPlace) : Object(std::move(oPlace), InterfaceOf<I>().sClass) {}
};

}  // namespace ZELWbr3::Recorded
