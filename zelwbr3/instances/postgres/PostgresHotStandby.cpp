#include "zelwbr3/instances/postgres/PostgresHotStandby.h"

namespace ZELWbr3::Postgres {

namespace {

constexpr int kStandby = 1;
constexpr int kMaster = 2;
constexpr char kUnknown[] = "UNKNOWN";

std::string BehindText(std::int64_t lBytes, double dSeconds) {
  std::string sText = std::to_string(lBytes / 1024) + " KB behind";
  if (dSeconds >= 1) sText += ", " + std::to_string(static_cast<std::int64_t>(dSeconds)) + " s";
  return sText;
}

std::string NodeText(const Figures::Node& oNode) {
  if (oNode.IsLost) return "gone, its slot keeps the log";
  if (oNode.State.empty()) return "connected";
  std::string sText = oNode.State;
  if (!oNode.Kind.empty()) sText += ", " + oNode.Kind;
  if (oNode.Behind) sText += ", " + BehindText(*oNode.Behind, oNode.SecondsBehind);
  return sText;
}

std::string NodeName(const Figures::Node& oNode) {
  if (oNode.Host.empty()) return oNode.Name;
  return oNode.Name + " (" + oNode.Host + ")";
}

std::string OwnText(const Figures::Receiver& oOwn) {
  std::string sText = oOwn.IsPaused ? "replay paused" : oOwn.State.empty() ? "no connection" : oOwn.State;
  if (oOwn.Behind) sText += ", " + BehindText(*oOwn.Behind, oOwn.SecondsBehind);
  return sText;
}

std::string SenderName(const Figures::Receiver& oOwn) {
  if (oOwn.Host.empty()) return kUnknown;
  return oOwn.Host + ":" + std::to_string(oOwn.Port);
}

}  // namespace

ZELLib3::Long PostgresHotStandby::Role(Server& oServer) {
  const auto oFigures = oServer.ReadFigures();
  if (!oFigures) return 0;
  if (oFigures->IsStandby) return 2;
  return oFigures->Nodes.empty() ? 0 : 1;
}

std::string PostgresHotStandby::OfficialNode() const {
  const auto& oGiven = m_oServer->Address().Given();
  for (const char* sKeyword : {"host", "hostaddr"}) {
    if (const auto it = oGiven.find(sKeyword); it != oGiven.end()) return it->second;
  }
  return {};
}

std::vector<ZELLib3::HotStandby::Node> PostgresHotStandby::Nodes() const {
  std::vector<Node> nodes;
  const auto oFigures = m_oServer->ReadFigures();
  if (!oFigures) return nodes;
  if (oFigures->IsStandby) {
    const Figures::Receiver& oOwn = oFigures->Own;
    nodes.push_back({SenderName(oOwn), oOwn.State == "streaming" ? "sends its log" : "not connected", kMaster});
    nodes.push_back({m_oServer->InstanceName(), OwnText(oOwn), kStandby, true});
  } else if (!oFigures->Nodes.empty()) {
    nodes.push_back({m_oServer->InstanceName(), "online", kMaster, true});
  }
  for (const Figures::Node& oNode : oFigures->Nodes) nodes.push_back({NodeName(oNode), NodeText(oNode), kStandby});
  return nodes;
}

}  // namespace ZELWbr3::Postgres
