#pragma once

#include "zelwbr3/ZELLib3/Database.h"

#include <nlohmann/json.hpp>

#include <array>
#include <cstdint>
#include <functional>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

namespace ZELWbr3::Recorded {

using Json = nlohmann::json;

struct Interface;
class Writer;

/// What a value in a recording must be.
struct Type {
  enum class Kind { Text, Whole, Number, Flag, Date, List, Object };

  Kind eKind;
  bool bNullable = false;
  std::int64_t lMin = 0;                  ///< of a whole number
  std::int64_t lMax = 0;                  ///< of a whole number, or entries of a list
  const Type* pEntry = nullptr;           ///< of a list
  const Interface* pInterface = nullptr;  ///< of an object
};

/// One member of an interface, or a key that stands for several of them.
struct Member {
  std::string sName;
  const Type* pType = nullptr;  ///< null: not a key
  bool bRaises = true;          ///< may be listed in "raises"
  bool bFails = false;          ///< may be listed in "fails"
  /// Adds the member of an object of the interface to what is being written.
  std::function<void(void*, Writer&)> fnWrite = {};
  /// Sets the field of a plain entry.
  std::function<void(void*, const Json&)> fnAssign = {};
};

/// The members of one interface of the instance data: the one list that the
/// check of a file, the writer and the paths in "fails" and "raises" follow.
struct Interface {
  /// How a recording shows an object of the interface.
  enum class Form {
    Object,
    Array,          ///< of its items
    List,           ///< an array, or an object with its items and a count of its own
    ObjectOrArray,  ///< an object, of which an array gives the items only
  };

  std::string sClass;
  Form eForm = Form::Object;
  bool bPlain = false;  ///< a plain entry, whose fields are read all at once
  std::vector<Member> oMembers;

  const Member* Find(std::string_view sName) const;
};

/// Defined for every interface and plain entry, in Interfaces.cpp.
template <class I>
const Interface& InterfaceOf();

/// Rows of a block where a recording does not say it.
inline constexpr int DefaultBlockSize = 50;

/// The columns and the rows of a view, as a recording keeps them.
struct Column {
  std::string Name;
  std::string Title;
};
using RowTexts = std::vector<std::string>;

/// An entry of a parameter's own history.
struct ParameterChange {
  ZELWbr3::Date Date;
  std::string Value;
  std::string NewValue;
};

/// An entry of the history of all parameters.
struct ListedChange {
  ZELWbr3::Date Date;
  std::string Parameter;
  std::string Value;
  std::string NewValue;
  std::string Text;
};

/// The whole file; only its list of members is of use.
struct File {};

template <class T>
inline constexpr bool IsList = false;
template <class T>
inline constexpr bool IsList<std::vector<T>> = true;
template <class T, std::size_t N>
inline constexpr bool IsList<std::array<T, N>> = true;
template <class T>
inline constexpr bool IsOptional = false;
template <class T>
inline constexpr bool IsOptional<std::optional<T>> = true;
template <class T>
inline constexpr bool IsObject = false;
template <class T>
inline constexpr bool IsObject<std::shared_ptr<T>> = true;

/// The type of the values that stand for a C++ type.
template <class T>
const Type& TypeOf() {
  static const Type oType = [] {
    using Kind = Type::Kind;
    if constexpr (std::is_same_v<T, std::string>) {
      return Type{Kind::Text};
    } else if constexpr (std::is_same_v<T, bool>) {
      return Type{Kind::Flag};
    } else if constexpr (std::is_same_v<T, double>) {
      return Type{Kind::Number};
    } else if constexpr (std::is_same_v<T, ZELWbr3::Date>) {
      return Type{Kind::Date};
    } else if constexpr (std::is_same_v<T, Integer>) {
      using Limits = std::numeric_limits<std::int16_t>;
      return Type{Kind::Whole, false, Limits::min(), Limits::max()};
    } else if constexpr (std::is_same_v<T, Long>) {
      using Limits = std::numeric_limits<std::int32_t>;
      return Type{Kind::Whole, false, Limits::min(), Limits::max()};
    } else if constexpr (IsList<T>) {
      std::int64_t lMax = std::numeric_limits<std::int32_t>::max();
      if constexpr (std::is_same_v<T, ZELLib3::StateInfo::Thresholds>) lMax = std::tuple_size_v<T>;
      return Type{Kind::List, false, 0, lMax, &TypeOf<typename T::value_type>()};
    } else if constexpr (IsOptional<T>) {
      Type oNullable = TypeOf<typename T::value_type>();
      oNullable.bNullable = true;
      return oNullable;
    } else if constexpr (IsObject<T>) {
      const Interface& oInterface = InterfaceOf<typename T::element_type>();
      using Form = Interface::Form;
      const bool bNullable = oInterface.eForm == Form::Object || oInterface.eForm == Form::ObjectOrArray;
      return Type{Kind::Object, bNullable, 0, 0, nullptr, &oInterface};
    } else {
      return Type{Kind::Object, false, 0, 0, nullptr, &InterfaceOf<T>()};
    }
  }();
  return oType;
}

}  // namespace ZELWbr3::Recorded
