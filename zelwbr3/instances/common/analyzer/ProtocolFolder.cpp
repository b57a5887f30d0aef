#include "zelwbr3/instances/common/analyzer/ProtocolFolder.h"

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFile.h"
#include "zelwbr3/instances/common/analyzer/ProtocolReader.h"
#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include <sys/stat.h>

#include <algorithm>
#include <filesystem>
#include <functional>
#include <stdexcept>

namespace ZELWbr3::Instances {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view kStateFile = "/state.csv";
/// Before the name of a set that is being deleted.
constexpr std::string_view kDeleted = ".deleted-";

bool IsProtocolFile(const fs::directory_entry& oEntry) {
  return oEntry.symlink_status().type() == fs::file_type::regular && oEntry.path().extension() == ProtocolFile::Ending;
}

/// Names of the folders in a folder that need not exist; no links.
std::vector<std::string> FoldersIn(const std::string& sPath) {
  std::vector<std::string> names;
  std::error_code oError;
  for (fs::directory_iterator i(sPath, oError), iEnd; !oError && i != iEnd; i.increment(oError)) {
    if (i->symlink_status().type() == fs::file_type::directory) names.push_back(i->path().filename().string());
  }
  if (oError && oError != std::errc::no_such_file_or_directory) {
    throw fs::filesystem_error("The protocol folder cannot be read", sPath, oError);
  }
  return names;
}

/// Tries again what fails: an analyzer may have just made a file, which it
/// does once.
void RemoveAll(const fs::path& oFolder) {
  std::error_code oIgnored;
  fs::remove_all(oFolder, oIgnored);
  fs::remove_all(oFolder);
}

std::string TimeOfDay(const std::string& sTimeStamp) {
  const std::string sTime = ReadableTime(sTimeStamp);
  return sTime.empty() ? sTime : sTime.substr(11);
}

ZELLib3::Analyzer::ProtocolSet SetOf(const std::string& sDay, const std::string& sPath) {
  std::uintmax_t lBytes = 0;
  int iFiles = 0;
  for (const auto& oEntry : fs::directory_iterator(sPath)) {
    if (!IsProtocolFile(oEntry)) continue;
    lBytes += oEntry.file_size();
    ++iFiles;
  }
  const std::string sSize =
      std::to_string(iFiles) + (iFiles == 1 ? " file, " : " files, ") + std::to_string((lBytes + 1023) / 1024) + " KB";
  ZELLib3::Analyzer::ProtocolSet oSet{*Calendar::ParseCompactDay(sDay), {}};
  const auto oExtent = ProtocolFile::ReadExtent(sPath + std::string(kStateFile));
  if (!oExtent) {
    oSet.Texts = {"state.csv is damaged", "", sSize};
    return oSet;
  }
  if (const std::string sFirst = TimeOfDay(oExtent->First); !sFirst.empty()) {
    const auto Number = [&](std::size_t iFrom) { return std::atoi(sFirst.substr(iFrom, 2).c_str()); };
    oSet.Date.Hour = std::clamp(Number(0), 0, 23);
    oSet.Date.Minute = std::clamp(Number(3), 0, 59);
    oSet.Date.Second = std::clamp(Number(6), 0, 59);
  }
  const std::string sCount = std::to_string(oExtent->Number) + (oExtent->Number == 1 ? " evaluation" : " evaluations");
  oSet.Texts = {sCount, "until " + TimeOfDay(oExtent->Last), sSize};
  return oSet;
}

}  // namespace

void ProtocolFolder::Append(const std::string& sTimeStamp, const std::vector<ProtocolLines>& parts) const {
  const std::string sSet = m_sPath + "/" + DayOf(sTimeStamp);
  fs::create_directories(m_sPath);
  if (mkdir(sSet.c_str(), 0777) != 0 && errno != EEXIST) RaiseSystemError(sSet);
  const Descriptor oSet(sSet, O_RDONLY | O_DIRECTORY | O_NOFOLLOW);

  std::vector<ProtocolFile> files;
  files.reserve(parts.size());
  for (const ProtocolLines& oPart : parts) {
    if (!oPart.Lines.empty()) files.emplace_back(oSet, sSet, oPart);
  }
  if (files.empty()) return;
  const int lNumber = files.front().LastNumber() + 1;
  // The state comes last: the evaluation is there when its state is.
  for (std::size_t i = files.size(); i-- > 0;) {
    try {
      files[i].Append(lNumber, sTimeStamp);
    } catch (...) {
      for (std::size_t iDone = i + 1; iDone < files.size(); ++iDone) files[iDone].Undo();
      throw;
    }
  }
}

std::vector<std::string> ProtocolFolder::Days() const {
  std::vector<std::string> days = FoldersIn(m_sPath);
  std::erase_if(days, [](const std::string& sName) { return !Calendar::ParseCompactDay(sName); });
  std::sort(days.begin(), days.end(), std::greater<>());
  return days;
}

std::vector<ZELLib3::Analyzer::ProtocolSet> ProtocolFolder::Sets() const {
  std::vector<ZELLib3::Analyzer::ProtocolSet> sets;
  for (const std::string& sDay : Days()) {
    const std::string sPath = m_sPath + "/" + sDay;
    const fs::file_status oState = fs::symlink_status(sPath + std::string(kStateFile));
    // Without a line there has been no evaluation: its disk was full.
    if (fs::is_regular_file(oState) && fs::file_size(sPath + std::string(kStateFile)) > 0) {
      sets.push_back(SetOf(sDay, sPath));
    }
  }
  return sets;
}

std::vector<ZELLib3::Analyzer::Protocol> ProtocolFolder::Read(const std::string& sFrom) const {
  std::vector<std::string> days = Days();
  std::erase_if(days, [&](const std::string& sDay) { return sDay < sFrom; });
  std::ranges::reverse(days);
  return ReadProtocols(m_sPath, days);
}

void ProtocolFolder::Delete(const std::string& sDay) const {
  const fs::path oSet = fs::path(m_sPath) / sDay;
  if (!Calendar::ParseCompactDay(sDay) || fs::symlink_status(oSet).type() != fs::file_type::directory) return;
  for (const auto& oEntry : fs::directory_iterator(oSet)) {
    if (!IsProtocolFile(oEntry)) throw std::runtime_error(oEntry.path().string() + ": is not a protocol file");
  }
  // Renamed first, so that the set goes as a whole, and what an analyzer writes
  // into it at this moment goes along.
  const fs::path oDeleted = fs::path(m_sPath) / (std::string(kDeleted) + sDay);
  RemoveAll(oDeleted);  // what a crash has left
  fs::rename(oSet, oDeleted);
  RemoveAll(oDeleted);
}

void ProtocolFolder::DeleteUntil(const std::string& sDay) const {
  std::string sFirstError;
  for (const std::string& sSet : Days()) {
    if (sSet > sDay) continue;
    try {
      Delete(sSet);
    } catch (const std::exception& oError) {
      if (sFirstError.empty()) sFirstError = oError.what();
    }
  }
  if (!sFirstError.empty()) throw std::runtime_error(sFirstError);
}

}  // namespace ZELWbr3::Instances
