#pragma once

#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/testing/TempFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>

/// Recordings for tests: those of tests/recordings, and made-up ones in a
/// folder of their own.
namespace RecordingFiles {

using Json = nlohmann::json;
using ZELWbr3::Recorded::OpenRecording;

inline std::string SamplePath(const std::string& sName) {
  return std::string(ZELWBR3_SOURCE_DIR) + "/tests/recordings/" + sName + ".json";
}

inline Json SampleContent(const std::string& sName) { return Json::parse(std::ifstream(SamplePath(sName))); }

/// A file of one's own, gone at the end.
class File {
 public:
  File() = default;
  explicit File(const std::string& sText) { m_oFolder.Write(kName, sText); }
  explicit File(const Json& oJson) : File(oJson.dump()) {}

  std::string Folder() const { return m_oFolder.Path(); }
  std::string Path() const { return m_oFolder.Path(kName); }
  std::string Text() const { return m_oFolder.Read(kName); }
  Json Content() const { return Json::parse(Text()); }

 private:
  static constexpr char kName[] = "instance.json";
  ZELWbr3::Testing::TempFolder m_oFolder;
};

/// The instance of a recording whose "Database" is given; further top-level
/// keys beside it.
inline std::shared_ptr<ZELLib3::Database> OpenWith(const Json& oDatabase, Json oBeside = Json::object(),
                                                   ZELWbr3::Recorded::CallObserver fnObserver = {}) {
  oBeside["Database"] = oDatabase;
  return OpenRecording(File(oBeside).Path(), std::move(fnObserver));
}

}  // namespace RecordingFiles
