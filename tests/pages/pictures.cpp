// The pages as a person sees them: tests/pictures, see the README there.

#include "tests/support/Accepted.h"
#include "tests/support/Shown.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <regex>
#include <set>
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

/// The lines of a story in a file, up to what is to be seen.
struct Story {
  Lines Recordings, Steps;
  Testing::Changes Changes;

  bool IsPlain() const { return Steps.empty() && Changes.empty(); }

  Lines Tell(const std::string& sPage, const std::string& sRecording) const {
    const Seen oSeen = See(sPage, sRecording, Changes, Steps);
    Lines lines = oSeen.Told;
    if (IsPlain() || !HasName(oSeen.Page)) {
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

  /// The same for all its recordings, or which one differs.
  Lines Tell(const std::string& sPage) const {
    const Lines first = Tell(sPage, Recordings.at(0));
    for (const std::string& sOther : Recordings) {
      const Lines other = Tell(sPage, sOther);
      if (other != first) return {"Not the same with " + sOther + ":\n" + Difference(first, other)};
    }
    return first;
  }
};

class Pictures : public testing::TestWithParam<std::string> {};

TEST_P(Pictures, AreAsAccepted) {
  const std::string sFile = Folder + GetParam() + ".txt";
  const std::string sPage = GetParam().substr(0, GetParam().find('-'));
  Lines told;
  std::set<std::string> plain;
  Story oStory;
  const auto EndStory = [&] {
    if (oStory.Recordings.empty()) return;
    for (const std::string& sLine : oStory.Tell(sPage)) told.push_back("  " + sLine);
    if (oStory.IsPlain()) plain.insert(oStory.Recordings.begin(), oStory.Recordings.end());
    oStory = {};
  };
  for (const std::string& sLine : LinesOf(std::ifstream(sFile))) {
    if (sLine.starts_with("  ")) continue;
    if (sLine.empty() || sLine.starts_with("#") || sLine.starts_with("== ")) EndStory();
    told.push_back(sLine);
    if (sLine.starts_with("== ")) {
      std::istringstream oNames(sLine.substr(3));
      for (std::string sName; oNames >> sName;) oStory.Recordings.push_back(sName);
    } else if (sLine.starts_with("with ") && oStory.Steps.empty()) {
      oStory.Changes.push_back(sLine.substr(5));
    } else if (!sLine.empty() && !sLine.starts_with("#")) {
      oStory.Steps.push_back(sLine.starts_with("then ") ? sLine.substr(5) : sLine);
    }
  }
  EndStory();
  if (sPage == GetParam()) {
    EXPECT_EQ(Lines(plain.begin(), plain.end()), Names(ZELWBR3_SOURCE_DIR "/tests/recordings", ".json"))
        << "every recording is in " << sFile;
  }

  ExpectAccepted(sFile, told);
}

INSTANTIATE_TEST_SUITE_P(Pages, Pictures, testing::ValuesIn(Names(Folder, ".txt")), [](const auto& oInfo) {
  std::string sName = oInfo.param;
  std::erase(sName, '-');
  return sName;
});

}  // namespace
}  // namespace ZELWbr3::Testing
