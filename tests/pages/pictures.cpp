// The pages as a person sees them: tests/pictures, see the README there.

#include "host/HostPages.h"
#include "tests/support/Accepted.h"
#include "tests/support/Shown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <sstream>

namespace ZELWbr3::Testing {
namespace {

const std::string Folder = ZELWBR3_SOURCE_DIR "/tests/pictures/";

/// Rows of tables whose columns are as wide as their texts, so that one that
/// becomes wider changes its own row only.
Lines Unaligned(Lines lines) {
  for (std::string& sLine : lines) sLine = std::regex_replace(sLine, std::regex(" +\\|( +|$)"), " | ");
  return lines;
}

/// What was told, which page was shown in the end, and its picture with the
/// command list's.
struct Seen {
  std::string Page;
  Lines Told, Picture;
};

Seen See(const std::string& sPage, const std::string& sRecording, const Changes& changes, const Lines& steps) {
  Shown oShown(sRecording, changes);
  if (sPage != "Main") oShown.Show("Main");
  static_cast<void>(oShown.Lines());
  oShown.Show(sPage);
  for (const std::string& sStep : steps) oShown.Do(sStep);

  std::string sPicture = oShown.Items().empty() ? "" : "Commands: " + oShown.Items() + "\n";
  sPicture += oShown.Picture();
  if (const auto i = sPicture.find(ZELWBR3_SOURCE_DIR); i != std::string::npos) {
    sPicture.replace(i, std::string_view(ZELWBR3_SOURCE_DIR).size(), "SOURCE");
  }
  Lines told = LinesOf(std::istringstream(oShown.Lines()));
  for (std::string& sLine : told) sLine = "* " + sLine;
  const auto oPage = oShown.Browser->ActPageObj();
  return {oPage == nullptr ? "" : oPage->Name(), told, LinesOf(std::istringstream(sPicture))};
}

const Seen& SeePlain(const std::string& sPage, const std::string& sRecording) {
  static std::map<std::pair<std::string, std::string>, Seen> seen;
  const auto [it, bNew] = seen.try_emplace({sPage, sRecording});
  if (bNew) it->second = See(sPage, sRecording, {}, {});
  return it->second;
}

bool HasName(const std::string& sPage) {
  return std::ranges::find(Host::HostPages::All(), sPage, &Host::HostPages::Entry::Name) !=
         Host::HostPages::All().end();
}

Lines Tell(const std::string& sPage, const std::string& sRecording, const Changes& changes, const Lines& steps) {
  const Seen oSeen = See(sPage, sRecording, changes, steps);
  Lines lines = oSeen.Told;
  if ((changes.empty() && steps.empty()) || !HasName(oSeen.Page)) {
    std::ranges::copy(oSeen.Picture, std::back_inserter(lines));
    return lines;
  }
  const Seen& oPlain = SeePlain(oSeen.Page, sRecording);
  const std::string sChanged = Difference(Unaligned(oPlain.Picture), Unaligned(oSeen.Picture));
  for (const std::string& s : LinesOf(std::istringstream(sChanged))) {
    if (s[0] == '-' || s[0] == '+') lines.push_back(s.substr(0, 1) + " " + s.substr(1, s.find_last_not_of(' ')));
  }
  return lines;
}

class Pictures : public testing::TestWithParam<std::string> {};

TEST_P(Pictures, AreAsAccepted) {
  const std::string sPage = GetParam().substr(0, GetParam().find('-'));
  Lines plain;
  ExpectAccepted(Folder + GetParam() + ".txt", [&](const std::string& sRecordings, const Lines& lines) {
    const auto itSteps = std::ranges::find_if_not(lines, [](const auto& s) { return s.starts_with("with "); });
    Changes changes;
    for (auto it = lines.begin(); it != itSteps; ++it) changes.push_back(it->substr(5));
    Lines steps(itSteps, lines.end());
    for (std::string& sStep : steps) sStep = std::regex_replace(sStep, std::regex("^then "), "");
    const Lines recordings = LinesOf(std::istringstream(sRecordings), ' ');
    if (lines.empty()) std::ranges::copy(recordings, std::back_inserter(plain));

    const Lines told = Tell(sPage, recordings.at(0), changes, steps);
    for (const std::string& sOther : recordings) {
      EXPECT_EQ(Difference(told, Tell(sPage, sOther, changes, steps)), "") << "the same with " << sRecordings;
    }
    return told;
  });
  std::ranges::sort(plain);
  if (sPage == GetParam()) {
    EXPECT_EQ(plain, Names(ZELWBR3_SOURCE_DIR "/tests/recordings", ".json")) << "every recording without changes";
  }
}

INSTANTIATE_TEST_SUITE_P(Pages, Pictures, testing::ValuesIn(Names(Folder, ".txt")), [](const auto& oInfo) {
  std::string sName = oInfo.param;
  std::erase(sName, '-');
  return sName;
});

}  // namespace
}  // namespace ZELWbr3::Testing
