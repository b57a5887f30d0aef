#include "host/ProgramFiles.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace ZELWbr3::Host {

namespace {

namespace fs = std::filesystem;

fs::path OwnFolder() {
  std::error_code eIgnored;
  return fs::read_symlink("/proc/self/exe", eIgnored).parent_path();
}

/// A file or folder by its name, chosen by a variable of the environment or found.
fs::path Find(const char* sVariable, const char* sName) {
  if (const char* pChosen = std::getenv(sVariable)) return pChosen;
  return (OwnFolder() / ZELWBR3_FROM_BIN_TO_DATA / sName).lexically_normal();
}

}  // namespace

std::string HTMLFolder() {
  const fs::path oFolder = Find("ZELWBR3_HTML", "html");
  std::error_code eIgnored;
  if (fs::exists(oFolder / "Main.htm", eIgnored)) return oFolder;
  throw std::runtime_error("The folder \"" + oFolder.string() + "\" contains no page files");
}

std::string HelpFile() {
  const fs::path oCompiled = Find("ZELWBR3_HELP", "messages.chm");
  std::error_code eIgnored;
  return fs::exists(oCompiled, eIgnored) ? oCompiled : Find("ZELWBR3_HELP", "messages");
}

std::vector<HelpTopic> HelpContents() {
  std::vector<HelpTopic> topics;
  std::ifstream oFile(Find("ZELWBR3_HELP_CONTENTS", "contents.txt"));
  for (std::string sLine; std::getline(oFile, sLine);) {
    const auto iBar = sLine.find('|');
    if (iBar != sLine.npos) topics.push_back({sLine.substr(0, iBar), sLine.substr(iBar + 1)});
  }
  return topics;
}

std::string ReportProgram() {
  const char* pChosen = std::getenv("ZELWBR3_REPORT");
  return pChosen != nullptr ? pChosen : OwnFolder() / "zelreport";
}

}  // namespace ZELWbr3::Host
