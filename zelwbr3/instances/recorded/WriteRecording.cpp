#include "zelwbr3/instances/recorded/WriteRecording.h"

#include "zelwbr3/base/ReplaceFile.h"
#include "zelwbr3/instances/recorded/writing/Writer.h"

#include <algorithm>
#include <filesystem>

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

void Write(const std::string& sFile, const std::string& sText) {
  std::error_code eIgnored;
  const auto oStatus = std::filesystem::status(sFile, eIgnored);
  if (std::filesystem::exists(oStatus) && !std::filesystem::is_regular_file(oStatus)) {
    throw RecordingError(sFile, {}, "is not a regular file; expected one to write the recording to");
  }
  try {
    ReplaceFile(sFile, sText);
  } catch (const std::runtime_error& oError) {
    throw RecordingError(sFile, {}, std::string("the recording cannot be written: ") + oError.what());
  }
}

}  // namespace

std::vector<std::string> WriteRecording(ZELLib3::Database& oDatabase, const std::string& sFile,
                                        const RecordOptions& oOptions) {
  Writer oWriter(oDatabase, oOptions);
  std::string sText;
  Format(oWriter.Recording(), 0, sText);
  Write(sFile, sText + "\n");
  return oWriter.Notes();
}

}  // namespace ZELWbr3::Recorded
