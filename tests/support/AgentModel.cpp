#include "tests/support/AgentModel.h"

#include <algorithm>
#include <stdexcept>

namespace ZELWbr3::Testing {

AgentModel::AgentModel(const Document& oDocument) {
  m_nodes.resize(oDocument.Count() + 1);
  m_oRoot = Copy(*oDocument.documentElement());
}

AgentModel::Node& AgentModel::At(NodeNumber iNumber) const {
  if (iNumber >= m_nodes.size() || m_nodes[iNumber] == nullptr) {
    throw std::logic_error("A change names the node " + std::to_string(iNumber) + ", which there is not");
  }
  return *m_nodes[iNumber];
}

AgentModel::NodePtr AgentModel::Copy(const Element& oElement) {
  auto oNode = std::make_shared<Node>();
  m_nodes.at(oElement.Number()) = oNode;
  oNode->Tag = oElement.tagName();
  oNode->Attributes.insert(oElement.attributes().begin(), oElement.attributes().end());
  AppendText(*oNode, oElement.text());
  for (const Element* o = oElement.firstElementChild(); o != nullptr; o = o->nextElementSibling()) {
    oNode->Children.push_back(Copy(*o));
    oNode->Children.back()->Parent = oNode.get();
    AppendText(*oNode, o->tail());
  }
  return oNode;
}

AgentModel::NodePtr AgentModel::Clone(const Node& oNode, NodeNumber& iNext) {
  auto oClone = std::make_shared<Node>(Node{oNode.Tag, oNode.Text, oNode.Attributes, {}, nullptr});
  if (!oNode.Tag.empty()) {
    m_nodes.resize(std::max<std::size_t>(m_nodes.size(), iNext + 1));
    m_nodes[iNext++] = oClone;
  }
  for (const auto& oChild : oNode.Children) {
    oClone->Children.push_back(Clone(*oChild, iNext));
    oClone->Children.back()->Parent = oClone.get();
  }
  return oClone;
}

void AgentModel::AppendText(Node& oNode, std::string_view sText) {
  if (!sText.empty()) oNode.Children.push_back(std::make_shared<Node>(Node{"", std::string(sText), {}, {}, &oNode}));
}

void AgentModel::Record(const Change& oChange) {
  ++m_iRecorded;
  Node& oNode = At(oChange.Node);
  const auto Adopt = [&](Node& oParent, auto oBefore) {
    Node& oChild = At(oChange.Other);
    if (oChild.Parent != nullptr) throw std::logic_error("A change inserts a node that has a place");
    oChild.Parent = &oParent;
    oParent.Children.insert(oBefore, m_nodes[oChange.Other]);
  };
  switch (oChange.What) {
    case Change::Kind::Text:
      for (const auto& oChild : oNode.Children) oChild->Parent = nullptr;
      oNode.Children.clear();
      AppendText(oNode, oChange.Text);
      break;
    case Change::Kind::AppendText:
      AppendText(oNode, oChange.Text);
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
      Clone(oNode, iNext);
      break;
    }
    case Change::Kind::Append:
      Adopt(oNode, oNode.Children.end());
      break;
    case Change::Kind::After: {
      auto& siblings = oNode.Parent->Children;
      Adopt(*oNode.Parent, std::next(std::ranges::find(siblings, m_nodes[oChange.Node])));
      break;
    }
    case Change::Kind::Create:
      m_nodes.resize(std::max<std::size_t>(m_nodes.size(), oChange.Other + 1));
      m_nodes[oChange.Other] = std::make_shared<Node>(Node{std::string(oChange.Name), "", {}, {}, nullptr});
      Adopt(oNode, oNode.Children.end());
      break;
  }
}

std::string AgentModel::Describe() const {
  std::string sOut;
  Describe(*m_oRoot, sOut);
  return sOut;
}

std::string AgentModel::Describe(const Document& oDocument) { return AgentModel(oDocument).Describe(); }

void AgentModel::Describe(const Node& oNode, std::string& sOut) {
  if (oNode.Tag.empty()) {
    sOut += oNode.Text;
    return;
  }
  sOut += '<' + oNode.Tag;
  for (const auto& [sName, sValue] : oNode.Attributes) sOut += ' ' + sName + "='" + sValue + '\'';
  sOut += '>';
  for (const auto& oChild : oNode.Children) Describe(*oChild, sOut);
  sOut += "</>\n";
}

}  // namespace ZELWbr3::Testing
