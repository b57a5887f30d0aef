#pragma once

#include <functional>
#include <istream>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

using Lines = std::vector<std::string>;

Lines LinesOf(std::istream&& oText, char cEnd = '\n');

/// The names, without their endings, of the files in a folder that have this
/// ending.
Lines Names(const std::string& sFolder, const std::string& sEnding);

/// The unified difference between two texts; empty when there is none.
std::string Difference(const Lines& before, const Lines& after);

/// Expects that what a test tells is what its file holds. With
/// ZELWBR3_ACCEPT_PICTURES in the environment the file is written instead, and
/// what has changed in it goes to standard output.
void ExpectAccepted(const std::string& sFile, const Lines& told);

/// The same for a file of stories, each a heading after "== ", lines with its
/// steps, and what it comes to, which begins with two blanks; "#" begins a
/// comment.
using Teller = std::function<Lines(const std::string& sHeading, const Lines& steps)>;
void ExpectAccepted(const std::string& sFile, const Teller& oTell);

}  // namespace ZELWbr3::Testing
