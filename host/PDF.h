#pragma once

#include <string>

namespace ZELWbr3::Host {

/// Prints a document to a PDF file with a browser without a screen: the one that the
/// environment variable ZELWBR3_BROWSER names, or Chromium or Chrome where the shell
/// finds it. Throws std::runtime_error that says what is missing or went wrong; the
/// old file is then still there.
void WritePDF(const std::string& sHTML, const std::string& sFile);

}  // namespace ZELWbr3::Host
