// What instances tell, step by step: see stories/README.md.

#include "tests/instances/RecordingFiles.h"
#include "tests/instances/SQLiteFiles.h"
#include "tests/support/Accepted.h"
#include "zelwbr3/instances/recorded/WriteRecording.h"
#include "zelwbr3/testing/Rows.h"

#include <regex>
#include <sstream>

using namespace ZELWbr3::Testing;

namespace {

using RecordingFiles::Json;
using ZELLib3::Database;
using ZELWbr3::SQLite::SQLiteDatabase;
using ZELWbr3::Testing::Lines;
using ZELWbr3::Testing::LinesOf;

const std::string kFolder = ZELWBR3_SOURCE_DIR "/tests/instances/stories/";

bool IsPlain(const Json& o) {
  return !o.is_array() ? !o.is_object()
                       : std::ranges::none_of(o, [](const Json& oEntry) { return oEntry.is_structured(); });
}

/// The values of a recording below a place, those of one object in one line.
void Add(const std::string& sPlace, const Json& o, Lines& lines) {
  if (IsPlain(o)) return lines.push_back(sPlace + " " + o.dump());
  std::string sPlain;
  for (const auto& [sKey, oValue] : o.items()) {
    if (o.is_object() && IsPlain(oValue)) sPlain += " " + sKey + "=" + oValue.dump();
  }
  if (!sPlain.empty()) lines.push_back(sPlace + sPlain);
  for (const auto& [sKey, oValue] : o.items()) {
    if (o.is_array()) Add(sPlace, oValue, lines);
    if (o.is_object() && !IsPlain(oValue)) Add(sPlace + "." + sKey, oValue, lines);
  }
}

/// A member; of a list the entry of that name, or that member of all entries.
Json Find(const Json& o, const std::string& sKey) {
  if (o.is_object()) return o.value(sKey, Json());
  Json oMembers;
  for (const Json& oEntry : o) {
    if (oEntry["Name"] == sKey) return oEntry;
    oMembers[oEntry["Name"].get<std::string>()] = Find(oEntry, sKey);
  }
  return oMembers;
}

/// A database file, an application that has it open, and the instance of it.
class OneStory : private SQLiteFiles::SQLiteTest {
 public:
  /// What a step comes to, with DIR for the story's folder, WHEN for a moment and
  /// N for what depends on the machine.
  Lines Do(const std::string& sStep) {
    const auto lBlank = std::min(sStep.size(), sStep.find(' '));
    Lines lines;
    try {
      lines = Do(sStep.substr(0, lBlank), sStep.substr(std::min(sStep.size(), lBlank + 1)));
    } catch (const std::exception& oError) {
      lines = {std::string("raised ") + oError.what()};
    }
    for (std::string& sLine : lines) {
      sLine = std::regex_replace(sLine, std::regex(m_oFolder.Path()), "DIR");
      sLine = std::regex_replace(sLine, std::regex("20\\d\\d-\\d\\d-\\d\\dT[0-9:]{8}"), "WHEN");
      sLine = std::regex_replace(sLine, std::regex("(SessionsMax|SessionPercent|CacheHitRate)=\\d+"), "$1=N");
    }
    return lines;
  }

 private:
  void TestBody() override {}
  Database& Instance() { return m_oDatabase ? *m_oDatabase : throw std::runtime_error("no instance is open"); }

  Lines Do(const std::string& sVerb, const std::string& sRest) {
    const auto iBlank = sRest.find(' ');
    const std::string sFirst = Path(sRest.substr(0, iBlank));
    const std::string sSecond = iBlank == std::string::npos ? "" : sRest.substr(iBlank + 1);
    Lines lines;
    if (sVerb == "app") {
      Run(sRest);
    } else if (sVerb == "reader") {
      if (!m_oReader) m_oReader = std::make_unique<SQLiteFiles::Application>(Path());
      m_oReader->Run(sRest);
    } else if (sVerb == "insert") {
      InsertRows(App(), std::stoi(sRest));
    } else if (sVerb == "leave") {
      m_oApplication.reset();
    } else if (sVerb == "write") {
      std::filesystem::create_directories(std::filesystem::path(sFirst).parent_path());
      SQLiteFiles::WriteFile(sFirst, sSecond);
    } else if (sVerb == "remove") {
      std::filesystem::remove_all(sFirst);
    } else if (sVerb == "rename") {
      std::filesystem::rename(sFirst, Path(sSecond));
    } else if (sVerb == "open") {
      Open({.BusyTimeout = std::chrono::milliseconds(1),
            .ReadingTimeout = std::chrono::seconds(2),
            .MaxPageCount = sRest.empty() ? 0 : std::stoi(sRest),
            .StateFolder = Path("state")});
    } else if (sVerb == "show") {
      lines = Show(LinesOf(std::istringstream(sRest), ' '));
    } else if (sVerb == "files") {
      for (const std::string& sName : SQLiteFiles::Names(Path(""))) lines.push_back(sName);
    } else if (sVerb == "refresh") {
      lines.push_back(Done(Instance().DataArea()->Refresh()));
    } else if (sVerb == "read") {
      const auto iDot = sRest.find('.');
      for (const auto& row : ReadTable(Instance(), sRest.substr(0, iDot), sRest.substr(iDot + 1))) {
        lines.push_back(Json(row).dump(-1, ' ', false, Json::error_handler_t::replace));
      }
    } else if (sVerb == "copied") {
      lines.push_back(Done(dynamic_cast<SQLiteDatabase&>(Instance()).RegisterCopy(sFirst, {2024, 1, 2}, sSecond)));
    } else if (sVerb == "recording") {
      OpenRecording(sRest);
    } else {
      static const std::map<std::string, bool (Database::*)()> operations = {{"Shutdown", &Database::Shutdown},
                                                                             {"Admin", &Database::Admin},
                                                                             {"Online", &Database::Online},
                                                                             {"AutoLogOff", &Database::AutoLogOff}};
      lines.push_back(Done((Instance().*operations.at(sVerb))()));
    }
    return lines;
  }

  std::string Done(bool bDone) const {
    return bDone ? "ok" : std::to_string(m_oDatabase->LastError().ErrorCode) + " " + Error();
  }

  /// What a recording of the instance says in these places.
  Lines Show(const Lines& places) {
    ZELWbr3::Recorded::WriteRecording(Instance(), Path("it.json"));
    const Json oRecorded = Json::parse(std::ifstream(Path("it.json")));
    Lines lines;
    for (const std::string& sPlace : places) {
      Json oPlace = oRecorded["Database"];
      for (const std::string& sKey : LinesOf(std::istringstream(sPlace), '.')) oPlace = Find(oPlace, sKey);
      Add(sPlace, oPlace, lines);
    }
    if (const Json& oFails = oRecorded["fails"]; !oFails.empty()) {
      const Json& oError = oRecorded["LastError"];
      lines.push_back("fails " + oFails.dump() + " " + oError["ErrorCode"].dump() + " " +
                      oError.value("ErrorText", ""));
    }
    return lines;
  }

  void OpenRecording(const std::string& sText) const {
    SQLiteFiles::WriteFile(Path("it.json"), sText);
    ZELWbr3::Recorded::OpenRecording(Path("it.json"));
  }

  std::unique_ptr<SQLiteFiles::Application> m_oReader;
};

class Stories : public testing::TestWithParam<std::string> {};

}  // namespace

TEST_P(Stories, ComeOutAsAccepted) {
  const std::string sFile = kFolder + GetParam() + ".txt";
  Lines told;
  std::unique_ptr<OneStory> oStory;
  for (const std::string& sLine : LinesOf(std::ifstream(sFile))) {
    if (sLine.starts_with("  ")) continue;
    told.push_back(sLine);
    if (sLine.starts_with("== ")) oStory = std::make_unique<OneStory>();
    if (!oStory || sLine.empty() || sLine.starts_with("== ") || sLine.starts_with("#")) continue;
    for (const std::string& sOutcome : oStory->Do(sLine)) told.push_back("  " + sOutcome);
  }
  ZELWbr3::Testing::ExpectAccepted(sFile, told);
}

INSTANTIATE_TEST_SUITE_P(, Stories, testing::ValuesIn(ZELWbr3::Testing::Names(kFolder, ".txt")),
                         [](const auto& o) { return o.param; });
