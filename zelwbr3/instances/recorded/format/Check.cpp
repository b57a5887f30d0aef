#include "zelwbr3/instances/recorded/format/Check.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/recorded/format/Path.h"
#include "zelwbr3/instances/recorded/format/RecordingError.h"
#include "zelwbr3/instances/recorded/format/Values.h"

#include <map>

namespace ZELWbr3::Recorded {

namespace {

using Form = Interface::Form;
using Kind = Type::Kind;

std::string Expected(const Type& oType) {
  const std::string sOrNull = oType.bNullable ? " or null" : "";
  switch (oType.eKind) {
    case Kind::Text:
      return "a text";
    case Kind::Whole:
      return "a whole number from " + std::to_string(oType.lMin) + " to " + std::to_string(oType.lMax);
    case Kind::Number:
      return "a number";
    case Kind::Flag:
      return "true or false";
    case Kind::Date:
      return "a date \"YYYY-MM-DDTHH:MM:SS\" that exists";
    case Kind::List:
      return "an array" + sOrNull;
    case Kind::Object:
      switch (oType.pInterface->eForm) {
        case Form::Object:
          return "an object" + sOrNull;
        case Form::Array:
          return "an array";
        case Form::List:
          return "an array, or an object with \"Items\"";
        case Form::ObjectOrArray:
          return "an object or an array" + sOrNull;
      }
  }
  return {};
}

std::string Found(const Json& oJson) {
  if (oJson.is_object()) return "an object";
  if (oJson.is_array()) return "an array";
  if (oJson.is_string()) return Quoted(oJson.get_ref<const std::string&>());
  return oJson.dump();
}

bool IsWhole(const Json& oJson, const Type& oType) {
  if (oJson.is_number_unsigned())
    return oJson.get<std::uint64_t>() <= static_cast<std::uint64_t>(oType.lMax) &&
           oJson.get<std::int64_t>() >= oType.lMin;
  return oJson.is_number_integer() && oJson.get<std::int64_t>() >= oType.lMin &&
         oJson.get<std::int64_t>() <= oType.lMax;
}

class Checker {
 public:
  explicit Checker(const std::string& sFile) : m_sFile(sFile) {}

  void Value(Json& oJson, const Type& oType, const Path& oPath) const {
    if (oJson.is_null() && oType.bNullable) return;
    switch (oType.eKind) {
      case Kind::Text:
        return Require(oJson.is_string(), oJson, oType, oPath);
      case Kind::Whole:
        return Require(IsWhole(oJson, oType), oJson, oType, oPath);
      case Kind::Number:
        return Require(oJson.is_number(), oJson, oType, oPath);
      case Kind::Flag:
        return Require(oJson.is_boolean(), oJson, oType, oPath);
      case Kind::Date:
        return Require(oJson.is_string() && Calendar::ParseISO(oJson.get_ref<const std::string&>()), oJson, oType,
                       oPath);
      case Kind::List:
        return List(oJson, oType, oPath);
      case Kind::Object:
        return Object(oJson, oType, oPath);
    }
  }

 private:
  void Require(bool bOk, const Json& oJson, const Type& oType, const Path& oPath) const {
    if (!bOk) Fail(oPath, "expected " + Expected(oType) + ", found " + Found(oJson));
  }

  [[noreturn]] void Fail(const Path& oPath, const std::string& sWhat) const {
    throw RecordingError(m_sFile, oPath.Text(), sWhat);
  }

  void List(Json& oJson, const Type& oType, const Path& oPath) const {
    Require(oJson.is_array(), oJson, oType, oPath);
    AtMost(oJson, oType.lMax, oPath);
    std::size_t lIndex = 0;
    for (Json& oEntry : oJson) Value(oEntry, *oType.pEntry, Path(oPath, lIndex++));
  }

  void AtMost(const Json& oJson, std::int64_t lMax, const Path& oPath) const {
    if (oJson.size() > static_cast<std::size_t>(lMax)) {
      Fail(oPath, "expected at most " + std::to_string(lMax) + " entries, found " + std::to_string(oJson.size()));
    }
  }

  void Object(Json& oJson, const Type& oType, const Path& oPath) const {
    const Interface& oInterface = *oType.pInterface;
    if (oJson.is_array() && oInterface.eForm != Form::Object) {
      Items(oJson, oInterface, oPath);
      oJson = Json{{"Items", std::move(oJson)}};
    } else {
      const bool bForm = oInterface.eForm == Form::List ? oJson.contains("Items") : oInterface.eForm != Form::Array;
      Require(oJson.is_object() && bForm, oJson, oType, oPath);
      for (const auto& [sKey, oValue] : oJson.items()) Key(sKey, oValue, oInterface, Path(oPath, sKey));
    }
    if (oJson.contains("Rows")) Rows(oJson, oPath);
  }

  void Key(const std::string& sKey, Json& oValue, const Interface& oInterface, const Path& oPath) const {
    const Member* pMember = oInterface.Find(sKey);
    if (pMember == nullptr || pMember->pType == nullptr) {
      std::string sKeys;
      for (const Member& oMember : oInterface.oMembers) {
        if (oMember.pType != nullptr) sKeys += (sKeys.empty() ? "" : ", ") + oMember.sName;
      }
      Fail(oPath, "no such key; expected one of " + sKeys);
    }
    if (sKey == "Items" && oInterface.eForm != Form::Object) {
      Require(oValue.is_array(), oValue, *pMember->pType, oPath);
      return Items(oValue, oInterface, oPath);
    }
    Value(oValue, *pMember->pType, oPath);
  }

  // The entries of a collection, no more of them than its Count can say.
  void Items(Json& oJson, const Interface& oInterface, const Path& oPath) const {
    if (const Member* pCount = oInterface.Find("Count")) AtMost(oJson, pCount->pType->lMax, oPath);
    List(oJson, *oInterface.Find("Items")->pType, oPath);
  }

  void Rows(const Json& oView, const Path& oPath) const {
    const std::size_t lColumns = oView.contains("Columns") ? oView["Columns"].size() : 0;
    const Path oRows(oPath, "Rows");
    std::size_t lRow = 0;
    for (const Json& oRow : oView["Rows"]) {
      if (oRow.size() != lColumns) {
        Fail(Path(oRows, lRow), "expected as many texts as there are columns, " + std::to_string(lColumns) +
                                    ", found " + std::to_string(oRow.size()));
      }
      ++lRow;
    }
  }

  const std::string& m_sFile;
};

/// Every path that "raises" may name, and whether "fails" may name it too.
using Paths = std::map<std::string, bool, std::less<>>;

// Members are named from the instance down, "DataArea.Volumes.MaxCount", or
// by their own interface, "Volumes.MaxCount"; those of the entries of a
// collection mostly in the second way, "SysInfo.Open".
void CollectPaths(const Interface& oInterface, const std::string& sPath, Paths& oPaths) {
  for (const Member& oMember : oInterface.oMembers) {
    const std::string sMember = Join(sPath, oMember.sName);
    if (oMember.bRaises) {
      oPaths[sMember] = oMember.bFails;
      oPaths[Join(oInterface.sClass, oMember.sName)] = oMember.bFails;
    }
    const Type* pType = oMember.pType;
    const bool bEntries = pType != nullptr && pType->eKind == Kind::List;
    if (bEntries) pType = pType->pEntry;
    if (pType == nullptr || pType->eKind != Kind::Object || pType->pInterface->bPlain) continue;
    CollectPaths(*pType->pInterface, bEntries ? Join(sPath, "Item") : sMember, oPaths);
  }
}

void CheckPaths(Json& oRoot, std::string_view sKey, bool bFails, const std::string& sFile) {
  static const Paths oPaths = [] {
    Paths oAll;
    CollectPaths(InterfaceOf<ZELLib3::Database>(), {}, oAll);
    return oAll;
  }();
  if (!oRoot.contains(sKey)) return;
  const Path oFile;
  const Path oList(oFile, sKey);
  std::size_t lIndex = 0;
  for (Json& oPath : oRoot[std::string(sKey)]) {
    auto& sPath = oPath.get_ref<std::string&>();
    const std::string sGiven = sPath;
    // "Items" is the key, "Item" the member.
    if (const auto lAt = sPath.find(".Items."); lAt != std::string::npos) sPath.erase(lAt + 5, 1);
    const auto it = oPaths.find(sPath);
    if (it == oPaths.end() || (bFails && !it->second)) {
      throw RecordingError(sFile, Path(oList, lIndex).Text(),
                           std::string("expected the path of ") +
                               (bFails ? "an operation, such as \"DataArea.Refresh\" or \"SysInfo.Open\""
                                       : "a member, such as \"StateInfo.DataTotal\" or \"SysInfo.Open\"") +
                               ", found " + Quoted(sGiven));
    }
    ++lIndex;
  }
}

}  // namespace

void CheckRecording(Json& oRoot, const std::string& sFile) {
  Checker(sFile).Value(oRoot, TypeOf<File>(), Path());
  CheckPaths(oRoot, "fails", true, sFile);
  CheckPaths(oRoot, "raises", false, sFile);
}

}  // namespace ZELWbr3::Recorded
