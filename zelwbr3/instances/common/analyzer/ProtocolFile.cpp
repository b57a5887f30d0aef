#include "zelwbr3/instances/common/analyzer/ProtocolFile.h"

#include "zelwbr3/base/Text.h"

#include <sys/stat.h>

#include <algorithm>
#include <charconv>
#include <stdexcept>
#include <utility>

namespace ZELWbr3::Instances {

namespace {

/// Longer than any line: an error text is the longest field.
constexpr off_t kTail = 65536;

std::string FieldOf(std::string sField) {
  // Line breaks would be allowed within quotes, but then a line of the file
  // were no longer an evaluation.
  for (char& c : sField) {
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f) c = ' ';
  }
  return Text::CSVField(std::move(sField));
}

std::string Line(const std::string& sNumber, const std::string& sTime, const std::vector<std::string>& fields) {
  std::string sLine = sNumber + "," + sTime;
  for (const std::string& sField : fields) sLine.append(",").append(FieldOf(sField));
  return sLine + "\n";
}

std::string ReadFrom(int lFile, off_t lFrom, off_t lBytes, const std::string& sPath) {
  std::string sBytes(static_cast<std::size_t>(lBytes), '\0');
  const ssize_t lRead = pread(lFile, sBytes.data(), sBytes.size(), lFrom);
  if (lRead < 0) RaiseSystemError(sPath);
  sBytes.resize(static_cast<std::size_t>(lRead));
  return sBytes;
}

std::string Tail(int lFile, off_t lSize, const std::string& sPath) {
  const off_t lFrom = std::max<off_t>(0, lSize - kTail);
  return ReadFrom(lFile, lFrom, lSize - lFrom, sPath);
}

/// The last line that is ended.
std::string_view LastLine(std::string_view sText) {
  const auto lEnd = sText.rfind('\n');
  if (lEnd == std::string_view::npos) return {};
  sText = sText.substr(0, lEnd);
  return sText.substr(sText.rfind('\n') + 1);
}

struct Beginning {
  int Number = 0;
  std::string Time;
};

/// The first two fields, which are never quoted.
std::optional<Beginning> ParseBeginning(std::string_view sLine) {
  const auto lComma = sLine.find(',');
  if (lComma == std::string_view::npos) return std::nullopt;
  Beginning oBeginning;
  const auto oResult = std::from_chars(sLine.data(), sLine.data() + lComma, oBeginning.Number);
  if (oResult.ec != std::errc() || oResult.ptr != sLine.data() + lComma || oBeginning.Number < 1) return std::nullopt;
  const std::string_view sRest = sLine.substr(lComma + 1);
  oBeginning.Time = sRest.substr(0, sRest.find(','));
  return oBeginning;
}

}  // namespace

ProtocolFile::ProtocolFile(const Descriptor& oFolder, const std::string& sFolder, const ProtocolLines& oLines)
    : m_oLines(oLines),
      m_sPath(sFolder + "/" + oLines.File + std::string(Ending)),
      m_sHeader(Line("Number", "Time", oLines.Columns)),
      m_oFile(openat(oFolder, (oLines.File + std::string(Ending)).c_str(),
                     O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666),
              m_sPath) {
  struct stat oStat {};
  if (fstat(m_oFile, &oStat) != 0) RaiseSystemError(m_sPath);
  if (!S_ISREG(oStat.st_mode)) throw std::runtime_error(m_sPath + ": is not a regular file");
  m_lSize = oStat.st_size;
  Repair();
  const auto lHeader = static_cast<off_t>(m_sHeader.size());
  if (m_lSize > 0 && ReadFrom(m_oFile, 0, lHeader, m_sPath) != m_sHeader) {
    throw std::runtime_error(m_sPath + ": has other columns than the analyzer writes; delete today's protocols");
  }
}

void ProtocolFile::Repair() {
  const std::string sTail = Tail(m_oFile, m_lSize, m_sPath);
  if (sTail.empty() || sTail.back() == '\n') return;
  const auto lEnd = sTail.rfind('\n');
  const off_t lWhole = lEnd == std::string::npos ? 0 : m_lSize - static_cast<off_t>(sTail.size() - lEnd - 1);
  if (lWhole == 0 && m_sHeader.compare(0, sTail.size(), sTail) != 0) {
    throw std::runtime_error(m_sPath + ": is not a protocol file");
  }
  if (ftruncate(m_oFile, lWhole) != 0) RaiseSystemError(m_sPath);
  m_lSize = lWhole;
}

int ProtocolFile::LastNumber() const {
  if (m_lSize <= static_cast<off_t>(m_sHeader.size())) return 0;
  const auto oBeginning = ParseBeginning(LastLine(Tail(m_oFile, m_lSize, m_sPath)));
  if (!oBeginning) throw std::runtime_error(m_sPath + ": its last line is damaged; delete today's protocols");
  return oBeginning->Number;
}

void ProtocolFile::Append(int lNumber, const std::string& sTimeStamp) {
  std::string sText = m_lSize == 0 ? m_sHeader : std::string();
  for (const auto& fields : m_oLines.Lines) sText += Line(std::to_string(lNumber), sTimeStamp, fields);
  const ssize_t lWritten = write(m_oFile, sText.data(), sText.size());
  if (lWritten == static_cast<ssize_t>(sText.size())) return;
  const int lError = lWritten < 0 ? errno : ENOSPC;  // a part was written: there was no room for more
  Undo();
  errno = lError;
  RaiseSystemError(m_sPath);
}

// When this fails as well, the next evaluation repairs the file.
void ProtocolFile::Undo() { (void)!ftruncate(m_oFile, m_lSize); }

std::optional<ProtocolFile::Extent> ProtocolFile::ReadExtent(const std::string& sPath) {
  struct stat oStat {};
  const int lFile = open(sPath.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
  if (lFile < 0) return std::nullopt;
  const Descriptor oFile(lFile, sPath);
  if (fstat(oFile, &oStat) != 0 || !S_ISREG(oStat.st_mode)) return std::nullopt;
  const std::string sHead = ReadFrom(oFile, 0, std::min(oStat.st_size, kTail), sPath);
  const auto lHeader = sHead.find('\n');
  if (lHeader == std::string::npos) return std::nullopt;
  const auto oFirst = ParseBeginning(std::string_view(sHead).substr(lHeader + 1));
  const auto oLast = ParseBeginning(LastLine(Tail(oFile, oStat.st_size, sPath)));
  if (!oFirst || !oLast) return std::nullopt;
  return Extent{oFirst->Time, oLast->Time, oLast->Number};
}

}  // namespace ZELWbr3::Instances
