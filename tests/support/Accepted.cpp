#include "tests/support/Accepted.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

namespace ZELWbr3::Testing {

Lines LinesOf(std::istream&& oText, char cEnd) {
  Lines lines;
  for (std::string sLine; std::getline(oText, sLine, cEnd);) lines.push_back(sLine);
  return lines;
}

Lines Names(const std::string& sFolder, const std::string& sEnding) {
  Lines names;
  for (const auto& oEntry : std::filesystem::directory_iterator(sFolder)) {
    if (oEntry.path().extension() == sEnding) names.push_back(oEntry.path().stem());
  }
  std::ranges::sort(names);
  return names;
}

std::string Difference(const Lines& before, const Lines& after) {
  return testing::internal::edit_distance::CreateUnifiedDiff(before, after);
}

void ExpectAccepted(const std::string& sFile, const Lines& told) {
  const std::string sDifference = Difference(LinesOf(std::ifstream(sFile)), told);
  if (sDifference.empty()) return;
  if (std::getenv("ZELWBR3_ACCEPT_PICTURES") == nullptr) {
    ADD_FAILURE() << sFile << " (tests/pictures/README.md says how to accept a change):\n" << sDifference;
    return;
  }
  std::ofstream oFile(sFile);
  for (const std::string& sLine : told) oFile << sLine << '\n';
  std::cout << "Accepted in " << sFile << ":\n" << sDifference;
}

void ExpectAccepted(const std::string& sFile, const Teller& oTell) {
  Lines told;
  std::string sHeading;
  Lines steps;
  const auto EndStory = [&] {
    if (sHeading.empty()) return;
    for (const std::string& sLine : oTell(sHeading, steps)) told.push_back("  " + sLine);
    sHeading.clear();
    steps.clear();
  };
  for (const std::string& sLine : LinesOf(std::ifstream(sFile))) {
    if (sLine.starts_with("  ")) continue;
    const bool bHeading = sLine.starts_with("== ");
    if (bHeading || sLine.empty() || sLine.starts_with("#")) {
      EndStory();
      if (bHeading) sHeading = sLine.substr(3);
    } else {
      steps.push_back(sLine);
    }
    told.push_back(sLine);
  }
  EndStory();
  ExpectAccepted(sFile, told);
}

}  // namespace ZELWbr3::Testing
