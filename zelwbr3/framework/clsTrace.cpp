#include "zelwbr3/framework/clsTrace.h"

#include "zelwbr3/framework/modFormat.h"

#include <chrono>
#include <fstream>
#include <stdexcept>

namespace ZELWbr3 {

clsTrace::clsTrace(const UserLocale& oLocale, Timer oTimer) : m_oLocale(oLocale), m_oTimer(std::move(oTimer)) {}

std::int64_t clsTrace::SteadyTimer() {
  const auto oNow = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(oNow).count();
}

void clsTrace::StartLogging(const std::string& sFileName) {
  m_sFileName = sFileName;
  m_lStart = m_oTimer();
  Write(Bracketed(0) + "           Beginning");
}

void clsTrace::Text(const std::string& sText) {
  if (m_bStarted) Write(Bracketed(Elapsed()) + "           " + std::string(m_iDepth, ' ') + sText);
}

void clsTrace::Push(const std::string& sText) {
  const Long lElapsed = Elapsed();
  if (m_iDepth >= m_starts.size()) throw std::out_of_range("Subscript out of range: the trace has no further level");
  m_starts[m_iDepth] = lElapsed;
  Write(Bracketed(lElapsed) + "             > " + std::string(m_iDepth, ' ') + sText);
  ++m_iDepth;
}

void clsTrace::Pop(const std::string& sText) {
  if (m_iDepth == 0) throw std::out_of_range("Subscript out of range: the trace has no open level");
  --m_iDepth;
  const Long lElapsed = Elapsed();
  Write(Bracketed(lElapsed) + Bracketed(lElapsed - m_starts[m_iDepth]) + " < " + std::string(m_iDepth, ' ') + sText);
}

void clsTrace::StopLogging() {
  if (m_bStarted) Write(Bracketed(Elapsed()) + "           Ending");
}

Long clsTrace::Elapsed() const { return m_oTimer() - m_lStart; }

std::string clsTrace::Bracketed(Long lMilliseconds) const {
  return "[" + modFormat::PaddedGrouped(lMilliseconds, m_oLocale) + "]";
}

void clsTrace::Write(const std::string& sLine) {
  std::ofstream oFile(m_sFileName, std::ios::app);
  oFile << sLine << '\n';
  oFile.close();
  if (!oFile) throw std::runtime_error("Cannot write the trace file '" + m_sFileName + "'");
  m_bStarted = true;
}

}  // namespace ZELWbr3
