#include "tests/instances/RecordingFiles.h"

#include <sys/stat.h>

using namespace RecordingFiles;

namespace {

/// The message about a file that cannot be opened begins with its name, is one
/// line and says what is wrong.
void ExpectRefused(const std::string& sPath, const std::string& sWrong) {
  try {
    OpenRecording(sPath);
    ADD_FAILURE() << "opened, although " << sWrong;
  } catch (const ZELWbr3::Recorded::RecordingError& oError) {
    const std::string sMessage = oError.what();
    EXPECT_EQ(std::string::npos, sMessage.find_first_of("\n\r\t")) << sMessage;
    EXPECT_LT(sMessage.size(), 1500u);
    EXPECT_EQ(0u, sMessage.find(sPath + ": ")) << sMessage;
    EXPECT_NE(std::string::npos, sMessage.find(sWrong)) << sMessage;
  }
}

std::string Nested(std::size_t lLevels) { return std::string(lLevels, '[') + std::string(lLevels, ']'); }

}  // namespace

// stories/recordings.txt has what fits into a line of text.
TEST(RecordedHostileInput, IsRefusedInOneLine) {
  const File oFile;
  ExpectRefused(oFile.Path(), "no such file");
  ExpectRefused(oFile.Path() + "/below/it", "expected a recording");
  ExpectRefused(oFile.Folder(), "is a directory");
  ASSERT_EQ(0, mkfifo(oFile.Path().c_str(), 0600));
  ExpectRefused(oFile.Path(), "not a regular file");  // and nobody waits for a writer

  const std::string sMany = Json{{"Database", {{"Sessions", Json::array_t(32768, Json::object())}}}}.dump();
  for (const auto& [sText, sWrong] :
       {std::pair<std::string, const char*>("{\"Database\": {\"InstanceName\": \"\xff\xfe\"}}", "UTF-8"),
        {"{\"Database\": \"" + std::string(1 << 20, 'x'), "missing closing quote"},
        {"{\"Database\": {\"Data\nUsed\": 1}}", "control character"},
        {"{\"Database\": " + Nested(65) + "}", "Database[0]"},
        {Nested(1000000), "levels of nesting"},
        {sMany, "Database.Sessions: expected at most 32767 entries, found 32768"}}) {
    ExpectRefused(File(sText).Path(), sWrong);
  }
}
