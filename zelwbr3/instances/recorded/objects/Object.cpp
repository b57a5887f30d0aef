#include "zelwbr3/instances/recorded/objects/Object.h"

namespace ZELWbr3::Recorded {

const Json& Object::Nothing() {
  static const Json oNothing = Json::object();
  return oNothing;
}

const Json& Object::ListOf(const Json& oObject, const char* sName) {
  static const Json oEmpty = Json::array();
  const Json* const pList = Find(oObject, sName);
  return pList != nullptr ? *pList : oEmpty;
}

bool Object::Lists(const std::unordered_set<std::string>& oPaths, const char* sName) const {
  return oPaths.contains(Join(m_oPlace.sPath, sName)) || oPaths.contains(Join(m_sClass, sName));
}

bool Object::Fails(const char* sName) const {
  if (Shared().oFails.empty() || !Lists(Shared().oFails, sName)) return false;
  Shared().oLastError = Shared().oRecordedError;
  return true;
}

void Object::CheckRaises(const char* sName) const {
  if (!Lists(Shared().oRaises, sName)) return;
  ZELLib3::Error oError = Shared().oRecordedError;
  if (oError.ErrorCode == 0 && oError.ErrorText.empty()) oError.ErrorText = Join(m_sClass, sName) + " raised an error";
  throw ZELLib3::InstanceError(oError);
}

}  // namespace ZELWbr3::Recorded
