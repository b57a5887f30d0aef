#include "zelwbr3/instances/recorded/WriteRecording.h"

#include "zelwbr3/instances/recorded/Database.h"
#include "zelwbr3/instances/recorded/Writer.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <system_error>

namespace ZELWbr3::Recorded {

namespace {

bool IsEmpty(const ZELLib3::Error& oError) { return oError.ErrorCode == 0 && oError.ErrorText.empty(); }

// As text for people: a line for each key, each entry and each row, with lists
// of plain values and objects without inner ones kept on one line where short.
void Format(const Writer::Output& oOutput, std::size_t lIndent, std::string& sText) {
  constexpr std::size_t MaxLine = 110;
  const bool bRow = oOutput.is_array() && std::none_of(oOutput.begin(), oOutput.end(),
                                                       [](const auto& oEntry) { return oEntry.is_structured(); });
  const std::string sLine = oOutput.dump(-1, ' ', false, Json::error_handler_t::replace);
  if (!oOutput.is_structured() || oOutput.empty() || bRow || sLine.size() + lIndent <= MaxLine) {
    sText += sLine;
    return;
  }
  const std::string sMargin(lIndent + 1, ' ');
  const char* sSeparator = oOutput.is_object() ? "{\n" : "[\n";
  for (const auto& oItem : oOutput.items()) {
    sText += sSeparator + sMargin;
    if (oOutput.is_object()) sText += Json(oItem.key()).dump() + ": ";
    Format(oItem.value(), lIndent + 1, sText);
    sSeparator = ",\n";
  }
  sText += "\n" + std::string(lIndent, ' ') + (oOutput.is_object() ? "}" : "]");
}

// Written beside the file and then moved over it.
void ReplaceFile(const std::string& sFile, const std::string& sText) {
  namespace fs = std::filesystem;
  std::error_code oError;
  const fs::file_status oStatus = fs::status(sFile, oError);
  if (fs::exists(oStatus) && !fs::is_regular_file(oStatus)) {
    throw RecordingError(sFile, {}, "is not a regular file; expected one to write the recording to");
  }
  const std::string sPart = sFile + "." + std::to_string(std::random_device{}()) + ".part";
  errno = 0;
  std::ofstream oStream(sPart, std::ios::binary | std::ios::trunc);
  oStream << sText;
  oStream.close();
  if (!oStream) {
    oError = std::error_code(errno, std::generic_category());
  } else {
    fs::rename(sPart, sFile, oError);
  }
  if (oError || !oStream) {
    std::error_code oIgnored;
    fs::remove(sPart, oIgnored);
    throw RecordingError(sFile, {}, "the recording cannot be written: " + oError.message());
  }
}

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
  // Looking for tables that it need not have leaves errors behind.
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

std::vector<std::string> WriteRecording(ZELLib3::Database& oDatabase, const std::string& sFile,
                                        const RecordOptions& oOptions) {
  Writer oWriter(oDatabase, oOptions);
  std::string sText;
  Format(oWriter.Recording(), 0, sText);
  ReplaceFile(sFile, sText + "\n");
  return oWriter.Notes();
}

}  // namespace ZELWbr3::Recorded
