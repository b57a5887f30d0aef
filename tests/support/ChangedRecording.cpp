#include "tests/support/ChangedRecording.h"

#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/testing/TempFolder.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <fstream>
#include <stdexcept>

namespace ZELWbr3::Testing {

ChangedRecording::ChangedRecording(std::string sRecording, const Changes& changes, Recorded::CallObserver oObserver)
    : m_sRecording(std::move(sRecording)), m_oObserver(std::move(oObserver)) {
  Change(changes);
}

void ChangedRecording::Change(const Changes& changes) {
  std::ranges::copy(changes, std::back_inserter(m_changes));
  nlohmann::json oRecording;
  if (!m_sRecording.empty()) {
    std::ifstream(ZELWBR3_SOURCE_DIR "/tests/recordings/" + m_sRecording + ".json") >> oRecording;
  }
  if (!oRecording.contains("LastError")) oRecording["LastError"] = {{"ErrorCode", -24988}, {"ErrorText", "SQL error"}};
  for (const std::string& sChange : m_changes) {
    const auto iEquals = sChange.find(" = ");
    if (iEquals == std::string::npos) throw std::invalid_argument("No \"Path = VALUE\": " + sChange);
    std::string sPath = "/" + sChange.substr(0, iEquals);
    std::ranges::replace(sPath, '.', '/');
    const std::string sFirst = sPath.substr(1, sPath.find('/', 1) - 1);
    if (sFirst != "LastError" && sFirst != "fails" && sFirst != "raises") sPath = "/Database" + sPath;
    const std::string sValue = sChange.substr(iEquals + 3);
    oRecording[nlohmann::json::json_pointer(sPath)] =
        sValue.starts_with("0x") ? nlohmann::json(std::stoi(sValue, nullptr, 16)) : nlohmann::json::parse(sValue);
  }
  const TempFolder oFolder;
  m_oOpened = Recorded::OpenRecording(oFolder.Write("changed.json", oRecording.dump()), m_oObserver);
}

}  // namespace ZELWbr3::Testing
