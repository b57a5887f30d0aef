#include "tests/support/TempFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>

#include <sys/wait.h>
#include <wx/image.h>

namespace {

/// The program as a user starts it.
class ZelviewTest : public testing::Test {
 protected:
  /// Runs it to its end and keeps its exit code and what it says.
  void Run(const std::string& sArguments, const std::string& sEnvironment = "") {
    const std::string sCommand = sEnvironment + " XDG_DATA_HOME='" + Folder.Path() + "' timeout 60 '" ZELVIEW "' " +
                                 sArguments + " 2>&1 >/dev/null";
    FILE* oPipe = popen(sCommand.c_str(), "r");
    std::array<char, 4096> aBuffer;
    Errors.clear();
    while (fgets(aBuffer.data(), aBuffer.size(), oPipe) != nullptr) Errors += aBuffer.data();
    const int iStatus = pclose(oPipe);
    Code = WIFEXITED(iStatus) ? WEXITSTATUS(iStatus) : -1;
  }

  /// The colours of a picture: a blank window has a handful.
  static std::size_t Colours(const std::string& sFile) {
    if (wxImage::FindHandler(wxBITMAP_TYPE_PNG) == nullptr) wxImage::AddHandler(new wxPNGHandler);
    wxImage oImage;
    if (!oImage.LoadFile(sFile, wxBITMAP_TYPE_PNG)) return 0;
    return oImage.CountColours(1000);
  }

  ZELWbr3::Testing::TempFolder Folder;
  int Code = 0;
  std::string Errors;
};

TEST_F(ZelviewTest, TakesAPictureOfTheSampleAndOfARecordingsPage) {
  const std::string sSample = Folder.Path("sample picture.png");
  Run("--screenshot '" + sSample + "'");
  EXPECT_EQ(Code, 0) << Errors;
  EXPECT_GT(Colours(sSample), 50u);

  const std::string sPage = Folder.Path("page.png");
  Run("recorded:" ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json --page Parameters --unit 1 --screenshot '" + sPage +
      "'");
  EXPECT_EQ(Code, 0) << Errors;
  EXPECT_GT(Colours(sPage), 50u);
}

TEST_F(ZelviewTest, SaysInOneLineWhatIsWrong) {
  struct Case {
    std::string Arguments;
    std::string Names;
    std::string Environment = "";
  };
  for (const Case& oCase : std::initializer_list<Case>{
           {"nonsense", "\"nonsense\""},
           {"recorded:/no/such.json", "/no/such.json"},
           {"sqlite:/no/such.db", "/no/such.db"},
           {"--page Nowhere", "\"Nowhere\""},
           {"--page SQLTable", "\"SQLTable\""},
           {"--unit 9", "--unit"},
           {"--screenshot /no/such/picture.png", "/no/such/picture.png"},
           {"--record /no/such/recording.json", "/no/such/recording.json"},
           {"--bogus", "--bogus"},
           {"", "\":987\"", "DISPLAY=:987"},
           {"", "/no/such/html", "ZELWBR3_HTML=/no/such/html"},
       }) {
    SCOPED_TRACE(oCase.Environment + " zelview " + oCase.Arguments);
    Run(oCase.Arguments, oCase.Environment);
    EXPECT_EQ(Code, 1);
    EXPECT_NE(Errors.find(oCase.Names), std::string::npos) << Errors;
    EXPECT_EQ(std::count(Errors.begin(), Errors.end(), '\n'), 1) << Errors;
  }
}

}  // namespace
