#include "zelwbr3/desktop/ChangeSender.h"

#include <algorithm>
#include <utility>

namespace ZELWbr3::Desktop {

void ChangeSender::Record(const Change& oChange) {
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
  }
  if (m_oBatch.Size() >= BatchSize) EndBatch();
}

void ChangeSender::Flush() {
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

}  // namespace ZELWbr3::Desktop
