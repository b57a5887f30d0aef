#include "zelwbr3/remote/ChangeSender.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Remote {

namespace {

/// Bytes of a text that a column's width depends on; none is wider on the screen.
constexpr std::size_t MostOfText = 200;

std::string_view Beginning(std::string_view sText) {
  if (sText.size() <= MostOfText) return sText;
  std::size_t iEnd = MostOfText;
  while ((static_cast<unsigned char>(sText[iEnd]) & 0xC0) == 0x80) --iEnd;  // not within a character
  return sText.substr(0, iEnd);
}

}  // namespace

void ChangeSender::Record(const Change& oChange) {
  if (oChange.What == Change::Kind::Row) return AddRow(oChange);
  EndRows();
  m_oBatch.Add(static_cast<std::uint32_t>(oChange.What));
  m_oBatch.Add(oChange.Node);
  switch (oChange.What) {
    case Change::Kind::Text:
    case Change::Kind::AppendText:
    case Change::Kind::Display:
      m_oBatch.Add(oChange.Text);
      break;
    case Change::Kind::Attribute:
      m_oBatch.Add(oChange.Name);
      m_oBatch.Add(oChange.Text);
      break;
    case Change::Kind::RemoveAttribute:
      m_oBatch.Add(oChange.Name);
      break;
    case Change::Kind::Clone:
    case Change::Kind::Append:
    case Change::Kind::After:
      m_oBatch.Add(oChange.Other);
      break;
    case Change::Kind::Create:
      m_oBatch.Add(oChange.Other);
      m_oBatch.Add(oChange.Name);
      break;
    case Change::Kind::Row:
      break;
  }
  if (m_oBatch.Size() >= BatchSize) EndBatch();
}

void ChangeSender::Present() {
  EndRows();
  m_oBatch.Add(PresentKind);
  EndBatch();
}

void ChangeSender::AddRow(const Change& oChange) {
  // Nothing else was written since: rows of one template have numbers that follow each other.
  const auto iColumns = static_cast<std::size_t>(1 + std::ranges::count(oChange.Text, Change::Separator));
  const bool bNext =
      oChange.Node == m_oRows.Template && oChange.Name == m_oRows.Columns && iColumns == m_oRows.Longest.size();
  if (m_oRows.Count > 0 && !bNext) EndRows();
  if (m_oRows.Count == 0) {
    m_oRows.Most = oChange.Node == m_oRows.Template ? RecordRows : FirstRecordRows;
    m_oRows.Template = oChange.Node;
    m_oRows.First = oChange.Other;
    m_oRows.Columns = oChange.Name;
    m_oRows.Longest.assign(iColumns, {});
  }

  ++m_oRows.Count;
  m_oRows.Texts += Change::Separator;
  m_oRows.Texts += oChange.Text;
  std::string_view sRest = oChange.Text;
  for (std::string& sLongest : m_oRows.Longest) {
    const auto iEnd = std::min(sRest.find(Change::Separator), sRest.size());
    if (iEnd > sLongest.size() && sLongest.size() < MostOfText) sLongest = Beginning(sRest.substr(0, iEnd));
    sRest.remove_prefix(std::min(iEnd + 1, sRest.size()));
  }
  if (m_oRows.Count < m_oRows.Most && m_oRows.Texts.size() < BatchSize) return;
  EndRows();
  EndBatch();
}

void ChangeSender::EndRows() {
  if (m_oRows.Count == 0) return;
  std::string sRecord = std::to_string(m_oRows.First) + Change::Separator + std::to_string(m_oRows.Count) +
                        Change::Separator + m_oRows.Columns;
  for (const std::string& sLongest : m_oRows.Longest) sRecord += Change::Separator + sLongest;
  m_oBatch.Add(static_cast<std::uint32_t>(Change::Kind::Row));
  m_oBatch.Add(m_oRows.Template);
  m_oBatch.Add(sRecord + m_oRows.Texts);
  m_oRows.Count = 0;
  m_oRows.Texts.clear();
}

void ChangeSender::Flush() {
  EndRows();
  m_bFlush = !m_oBatch.Empty();
  if (m_bFlush && (m_oBatch.Size() >= SmallBatch || m_iAcknowledged == m_iMade)) EndBatch();
}

void ChangeSender::Acknowledge(std::uint32_t iBatch) {
  m_iAcknowledged = std::max(m_iAcknowledged, std::min(iBatch, m_iSent));
  SendWaiting();
  if (m_bFlush) Flush();
}

void ChangeSender::EndBatch() {
  m_bFlush = false;
  m_oWaiting.push_back(m_oBatch.Take());
  ++m_iMade;
  SendWaiting();
}

void ChangeSender::SendWaiting() {
  while (!m_oWaiting.empty() && m_iSent - m_iAcknowledged < Outstanding) {
    std::string sList = std::move(m_oWaiting.front());
    m_oWaiting.pop_front();
    m_oSend(++m_iSent, std::move(sList));
  }
}

}  // namespace ZELWbr3::Remote
