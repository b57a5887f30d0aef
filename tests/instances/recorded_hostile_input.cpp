#include "tests/instances/RecordingFiles.h"

#include <sys/stat.h>

using namespace RecordingFiles;

namespace {

/// The message about a file that cannot be opened, without the file's name.
std::string Refusal(const std::string& sPath) {
  try {
    OpenRecording(sPath);
  } catch (const ZELWbr3::Recorded::RecordingError& oError) {
    const std::string sMessage = oError.what();
    EXPECT_EQ(std::string::npos, sMessage.find_first_of("\n\r\t")) << "not one line: " << sMessage;
    EXPECT_LT(sMessage.size(), 1500u) << sMessage;
    EXPECT_EQ(0u, sMessage.find(sPath + ": ")) << "the file is not named: " << sMessage;
    return sMessage.substr(std::min(sMessage.size(), sPath.size() + 2));
  }
  return "opened";
}

struct Bad {
  std::string sText;      // the value of "Database", or a whole file
  std::string sWhere;     // how the message begins
  std::string sExpected;  // what it goes on to say
};

void ExpectRefused(const std::vector<Bad>& oCases, const std::string& sBefore, const std::string& sAfter) {
  for (const Bad& oCase : oCases) {
    const std::string sRefusal = Refusal(File(sBefore + oCase.sText + sAfter).Path());
    EXPECT_EQ(0u, sRefusal.find(oCase.sWhere)) << oCase.sText << "\n" << sRefusal;
    EXPECT_NE(std::string::npos, sRefusal.find(oCase.sExpected)) << oCase.sText << "\n" << sRefusal;
  }
}

std::string Nested(std::size_t lLevels) { return std::string(lLevels, '[') + std::string(lLevels, ']'); }

}  // namespace

TEST(RecordedHostileInput, WhatIsNoReadableFileIsNamed) {
  const File oFile;
  EXPECT_NE(std::string::npos, Refusal(oFile.Path()).find("no such file"));
  EXPECT_NE(std::string::npos, Refusal(oFile.Path() + "/below/it").find("expected a recording"));
  EXPECT_NE(std::string::npos, Refusal(oFile.Folder()).find("is a directory"));
  ASSERT_EQ(0, mkfifo(oFile.Path().c_str(), 0600));
  EXPECT_NE(std::string::npos, Refusal(oFile.Path()).find("not a regular file")) << "and nobody waits for a writer";
}

TEST(RecordedHostileInput, TextThatIsNoJsonOrNoRecording) {
  ExpectRefused(
      {
          {"", "not JSON", "line 1, column 1"},
          {R"({"Database": {"Parameters": [{"Name": "A"}, {"Name" "B"}]}})", "Database.Parameters[1].Name: not JSON",
           "':'"},
          {"{\"Database\": {\"InstanceName\": \"\xff\xfe\"}}", "Database.InstanceName: not JSON", "UTF-8"},
          {R"({"Database": {"InstanceName": "\ud800"}})", "Database.InstanceName: not JSON", "surrogate"},
          {R"({"Database": {"PageSize": 1)", "Database.PageSize: not JSON", "end of input"},
          {"{\"Database\": \"" + std::string(1 << 20, 'x'), "Database: not JSON", "missing closing quote"},
          {R"({"fails": [], "Database": {"PageSize": 1, "PageSize": 2}})",
           "Database.PageSize: ", "expected each key once"},
          {R"({"Database": {"Caches": {"DataCacheSize": 1e999}}})", "Database.Caches.DataCacheSize: ", "double"},
          {"{\"Database\": " + Nested(65) + "}", "Database[0]", "at most 64 levels"},
          {Nested(1000000), "[0]", "levels of nesting"},
          {"[]", "expected an object", "found an array"},
          {R"({"Instance": {}})", "Instance: no such key", "LastError, fails, raises, Database"},
          {R"({"Database": null})", "Database: expected an object", "found null"},
          {R"({"fails": "SysInfo.Open"})", "fails: expected an array", "SysInfo.Open"},
          {R"({"fails": ["Shutdown", "Shutdwon"]})", "fails[1]: expected the path of an operation", "\"Shutdwon\""},
          {R"({"raises": ["StateInfo.NoSuch"]})", "raises[0]: expected the path of a member", "NoSuch"},
          {R"({"raises": [""]})", "raises[0]: expected", "\"\""},
      },
      "", "");
}

TEST(RecordedHostileInput, KeysAndTypes) {
  const std::string sLong = "a whole number from -2147483648 to 2147483647";
  const std::string sDate = "a date \"YYYY-MM-DDTHH:MM:SS\"";
  ExpectRefused(
      {
          {R"("StateInfo": {"Data\nUsed \u0007": 1})", R"(Database.StateInfo."Data\nUsed \u0007": no such key)",
           "expected"},
          {R"("DataArea": {"Refresh": true})", "Database.DataArea.Refresh: no such key", "Size, Volumes"},
          {R"("StateInfo": {"DataUsed": 2147483648})", "Database.StateInfo.DataUsed: expected " + sLong, "2147483648"},
          {R"("StateInfo": {"DataUsed": -2147483649})", "Database.StateInfo.DataUsed: expected " + sLong,
           "-2147483649"},
          {R"("StateInfo": {"DataUsed": 1.0})", "Database.StateInfo.DataUsed: expected " + sLong, "1.0"},
          {R"("StateInfo": {"DataFull": 1})", "Database.StateInfo.DataFull: expected true or false", "1"},
          {R"("StateInfo": {"BarThresholds": [1,2,3,4,5,6,7,8,9,10]})", "Database.StateInfo.BarThresholds",
           "at most 9"},
          {R"("InstanceName": 7)", "Database.InstanceName: expected a text", "7"},
          {R"("Caches": {"DataCacheSize": "1"})", "Database.Caches.DataCacheSize: expected a number", "\"1\""},
          {R"("Parameters": {})", "Database.Parameters: expected an array", "an object"},
          {R"("Parameters": [{"History": [{}, {"Text": ""}]}])", "Database.Parameters[0].History[1].Text: no such key",
           "Date, Value, NewValue"},
          {R"("Sessions": {"Count": 32768, "Items": []})",
           "Database.Sessions.Count: expected a whole number from -32768 to 32767", ""},
          {R"("DataArea": {"Volumes": {"Items": [{}, {}, {"Size": "x"}]}})",
           "Database.DataArea.Volumes.Items[2].Size: expected " + sLong, ""},
          {R"("Analyzer": {"ProtocolSets": [{"Texts": ["a", 1]}]})",
           "Database.Analyzer.ProtocolSets[0].Texts[1]: expected a text", "1"},
          {R"("SysInfos": [{"BlockSize": 0}])", "Database.SysInfos[0].BlockSize: expected a whole number from 1", "0"},
          {R"("SysInfos": [{"Columns": [{"Name": "A"}, {}], "Rows": [["1", "2"], ["3"]]}])",
           "Database.SysInfos[0].Rows[1]: expected as many texts as there are columns, 2", "1"},
          {R"("Snapshot": {"Created": "2026-02-29T00:00:00"})", "Database.Snapshot.Created: expected " + sDate,
           "exists"},
          {R"("Snapshot": {"Created": "2026-01-01T00:00:00Z"})", "Database.Snapshot.Created: expected " + sDate, ""},
      },
      R"({"Database": {)", "}}");
  // What lies at the bounds is welcome.
  EXPECT_EQ(
      "opened",
      Refusal(File(std::string(R"({"Database": {"Snapshot": {"Created": "2024-02-29T23:59:59"}, "PageSize": -2147483648,
      "Caches": {"DataCacheSize": 3, "ConverterSize": -1.7e308}, "Activity": null, "StateInfo": {"DataUsed": 2147483647}}})"))
                  .Path()));
  // The interface counts sessions and views in 16 bits.
  const Json oSessions = Json::array_t(32768, Json::object());
  EXPECT_EQ(0u, Refusal(File(Json{{"Database", {{"Sessions", oSessions}}}}).Path())
                    .find("Database.Sessions: expected at most 32767 entries, found 32768"));
}
