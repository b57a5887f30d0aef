#pragma once

#include "instances/recorded/OpenRecording.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <utility>

/// Recordings for tests: those of tests/recordings, and made-up ones in a
/// folder that goes away with the process's last use of it.
namespace RecordingFiles {

using Json = nlohmann::json;
using ZELWbr3::Recorded::OpenRecording;

inline std::string SamplePath(const std::string& sName) {
  return std::string(ZELWBR3_SOURCE_DIR) + "/tests/recordings/" + sName + ".json";
}

/// A file of one's own, gone at the end.
class File {
 public:
  File() {
    static int lNumber = 0;
    const auto* const pTest = testing::UnitTest::GetInstance()->current_test_info();
    const std::string sTest = pTest != nullptr ? pTest->name() : "none";
    m_sFolder = testing::TempDir() + "recording-" + std::to_string(std::hash<std::string>()(sTest)) + "-" +
                std::to_string(++lNumber);
    std::filesystem::remove_all(m_sFolder);
    std::filesystem::create_directory(m_sFolder);
  }
  explicit File(const std::string& sText) : File() { Write(sText); }
  explicit File(const Json& oJson) : File(oJson.dump()) {}
  ~File() {
    std::error_code oIgnored;
    std::filesystem::remove_all(m_sFolder, oIgnored);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  std::string Folder() const { return m_sFolder; }
  std::string Path() const { return m_sFolder + "/instance.json"; }
  void Write(const std::string& sText) const { std::ofstream(Path(), std::ios::binary) << sText; }
  std::string Text() const {
    std::stringstream oText;
    oText << std::ifstream(Path(), std::ios::binary).rdbuf();
    return oText.str();
  }
  Json Content() const { return Json::parse(Text()); }

 private:
  std::string m_sFolder;
};

/// The instance of a recording whose "Database" is given; further top-level
/// keys beside it.
inline std::shared_ptr<ZELLib3::Database> OpenWith(const Json& oDatabase, Json oBeside = Json::object(),
                                                   ZELWbr3::Recorded::CallObserver fnObserver = {}) {
  oBeside["Database"] = oDatabase;
  return OpenRecording(File(oBeside).Path(), std::move(fnObserver));
}

}  // namespace RecordingFiles
