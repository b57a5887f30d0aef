#include "tests/support/AgentModel.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace ZELWbr3::Testing {

NodeNumber AgentModel::Copy(const Element& oElement) {
  const NodeNumber iNode = oElement.Number();
  m_nodes[iNode] = {oElement.tagName(), {oElement.attributes().begin(), oElement.attributes().end()}, {}};
  AppendText(iNode, oElement.text());
  for (const Element* o = oElement.firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    Insert(iNode, m_nodes[iNode].Content.size(), Copy(*o));
    AppendText(iNode, o->tail());
  }
  return iNode;
}

NodeNumber AgentModel::Clone(NodeNumber iNode, NodeNumber& iNext) {
  const Node oNode = m_nodes.at(iNode);
  const NodeNumber iClone = iNext++;
  m_nodes[iClone] = {oNode.Tag, oNode.Attributes, {}};
  for (const auto& oPart : oNode.Content) {
    if (const auto* sText = std::get_if<std::string>(&oPart)) {
      AppendText(iClone, *sText);
    } else {
      const NodeNumber iChild = Clone(std::get<NodeNumber>(oPart), iNext);
      Insert(iClone, m_nodes[iClone].Content.size(), iChild);
    }
  }
  return iClone;
}

void AgentModel::AppendText(NodeNumber iNode, std::string_view sText) {
  if (!sText.empty()) m_nodes.at(iNode).Content.emplace_back(std::string(sText));
}

void AgentModel::Insert(NodeNumber iParent, std::size_t iPlace, NodeNumber iChild) {
  if (std::exchange(m_nodes.at(iChild).Parent, iParent) != 0) {
    throw std::logic_error("A change inserts a node that has a place");
  }
  auto& content = m_nodes.at(iParent).Content;
  content.emplace(content.begin() + static_cast<std::ptrdiff_t>(iPlace), iChild);
}

void AgentModel::Record(const Change& oChange) {
  ++m_iRecorded;
  Node& oNode = m_nodes.at(oChange.Node);
  switch (oChange.What) {
    case Change::Kind::Text:
      for (const auto& oPart : oNode.Content) {
        if (const auto* iChild = std::get_if<NodeNumber>(&oPart)) m_nodes.at(*iChild).Parent = 0;
      }
      oNode.Content.clear();
      AppendText(oChange.Node, oChange.Text);
      break;
    case Change::Kind::AppendText:
      AppendText(oChange.Node, oChange.Text);
      break;
    case Change::Kind::Attribute:
      oNode.Attributes[std::string(oChange.Name)] = oChange.Text;
      break;
    case Change::Kind::RemoveAttribute:
      oNode.Attributes.erase(std::string(oChange.Name));
      break;
    case Change::Kind::Display:
      // The tests' style attributes hold nothing but display.
      oNode.Attributes.erase("style");
      if (!oChange.Text.empty()) oNode.Attributes["style"] = "display: " + std::string(oChange.Text) + ";";
      break;
    case Change::Kind::Clone: {
      NodeNumber iNext = oChange.Other;
      Clone(oChange.Node, iNext);
      break;
    }
    case Change::Kind::Row: {
      NodeNumber iNext = oChange.Other;
      const NodeNumber iRow = Clone(oChange.Node, iNext);
      m_nodes.at(iRow).Attributes.erase("style");
      std::istringstream oValues{std::string(oChange.Text)};
      std::istringstream oColumns{std::string(oChange.Name)};
      std::string sValue;
      std::string sColumn;
      for (NodeNumber iCell = iRow + 1; std::getline(oValues, sValue, Change::Separator); ++iCell) {
        if (!(oColumns >> sColumn)) sColumn = std::to_string(iCell - iRow);
        Node& oElement = m_nodes.at(iRow + static_cast<NodeNumber>(std::stoul(sColumn)));
        const auto iName = sColumn.find('@');
        if (sValue.empty()) continue;
        if (iName == std::string::npos)
          oElement.Content.assign(1, sValue);
        else
          oElement.Attributes[sColumn.substr(iName + 1)] = sValue;
      }
      Insert(oNode.Parent, m_nodes.at(oNode.Parent).Content.size(), iRow);
      break;
    }
    case Change::Kind::Create:
      m_nodes[oChange.Other] = {std::string(oChange.Name), {}, {}};
      [[fallthrough]];
    case Change::Kind::Append:
      Insert(oChange.Node, oNode.Content.size(), oChange.Other);
      break;
    case Change::Kind::After: {
      const auto& content = m_nodes.at(oNode.Parent).Content;
      const auto it = std::ranges::find(content, decltype(oNode.Content)::value_type(oChange.Node));
      Insert(oNode.Parent, static_cast<std::size_t>(it - content.begin()) + 1, oChange.Other);
      break;
    }
  }
}

std::string AgentModel::Describe(NodeNumber iNode) const {
  const Node& oNode = m_nodes.at(iNode);
  std::string sOut = '<' + oNode.Tag;
  for (const auto& [sName, sValue] : oNode.Attributes) sOut += ' ' + sName + "='" + sValue + '\'';
  sOut += '>';
  for (const auto& oPart : oNode.Content) {
    const auto* sText = std::get_if<std::string>(&oPart);
    sOut += sText != nullptr ? *sText : Describe(std::get<NodeNumber>(oPart));
  }
  return sOut + "</>\n";
}

}  // namespace ZELWbr3::Testing
