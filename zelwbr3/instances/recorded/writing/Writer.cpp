#include "zelwbr3/instances/recorded/writing/Writer.h"

#include "zelwbr3/instances/recorded/objects/Database.h"

#include <set>
#include <utility>

namespace ZELWbr3::Recorded {

namespace {

bool IsEmpty(const ZELLib3::Error& oError) { return oError.ErrorCode == 0 && oError.ErrorText.empty(); }

}  // namespace

void Writer::Failed(const std::string& sName) {
  ++m_oTallies[Join(m_sPath, sName)].lFailed;
  if (!m_oFailed) m_oFailed = LastError();
}

ZELLib3::Error Writer::LastError() {
  const std::string sOuter = std::exchange(m_sPath, {});
  const auto oError = Read("LastError", [&] { return m_oDatabase.LastError(); });
  m_sPath = sOuter;
  return oError.value_or(ZELLib3::Error{});
}

Writer::Output Writer::InForm(Output oObject, Interface::Form eForm) {
  using Form = Interface::Form;
  if (eForm == Form::Object || eForm == Form::ObjectOrArray || oObject.contains("Count")) return oObject;
  return oObject.contains("Items") ? oObject["Items"] : Output::array();
}

Writer::Output Writer::Recording() {
  // Looking for tables that it need not have sets LastError.
  const ZELLib3::Error oStanding = LastError();
  Output oDatabase = Object(m_oDatabase, {});

  // Nothing here calls an operation that changes the instance, but another
  // recording knows which of them fail, and which error it has.
  const auto* const pRecorded = dynamic_cast<const Recorded::Database*>(&m_oDatabase);

  // Without a failed operation the instance may still have an error to tell.
  // One that a member raised comes last: it need not have become LastError.
  ZELLib3::Error oError = m_oFailed.value_or(oStanding);
  if (IsEmpty(oError) && m_oRaised && pRecorded == nullptr) oError = *m_oRaised;

  std::set<std::string> oFails;
  std::set<std::string> oRaises;
  if (pRecorded != nullptr) {
    oFails.insert(pRecorded->Fails().begin(), pRecorded->Fails().end());
    oRaises.insert(pRecorded->Raises().begin(), pRecorded->Raises().end());
  }
  for (const auto& [sPath, oTally] : m_oTallies) {
    if (oTally.lRaised == oTally.lCalls) {
      oRaises.insert(sPath);
    } else if (oTally.lFailed == oTally.lCalls) {
      oFails.insert(sPath);
    } else if (oTally.lRaised + oTally.lFailed > 0) {
      Note(sPath + " failed in " + std::to_string(oTally.lRaised + oTally.lFailed) + " of " +
           std::to_string(oTally.lCalls) + " calls; recorded without what these would have given");
    }
  }

  Output oFile = Output::object();
  if (!IsEmpty(oError)) oFile["LastError"] = *ToOutput(oError, {});
  oFile["fails"] = oFails;
  oFile["raises"] = oRaises;
  oFile["Database"] = std::move(oDatabase);
  return oFile;
}

}  // namespace ZELWbr3::Recorded
