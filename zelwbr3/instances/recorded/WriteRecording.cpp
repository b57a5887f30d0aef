#include "zelwbr3/instances/recorded/WriteRecording.h"

#include "zelwbr3/instances/recorded/writing/Writer.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

namespace ZELWbr3::Recorded {

namespace {

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

std::vector<std::string> WriteRecording(ZELLib3::Database& oDatabase, const std::string& sFile,
                                        const RecordOptions& oOptions) {
  Writer oWriter(oDatabase, oOptions);
  std::string sText;
  Format(oWriter.Recording(), 0, sText);
  ReplaceFile(sFile, sText + "\n");
  return oWriter.Notes();
}

}  // namespace ZELWbr3::Recorded
