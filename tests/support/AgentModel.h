#pragma once

#include "zelwbr3/dom/Document.h"

#include <map>
#include <string>
#include <variant>
#include <vector>

namespace ZELWbr3::Testing {

/// What the agent makes of a document's changes, told by the rules of a
/// browser's document: text stands in nodes of its own, an element that is
/// removed takes only what is below it along. Starts as a copy of a document
/// and follows it as its change log. Throws for a node that there is not.
class AgentModel : public ChangeLog {
 public:
  explicit AgentModel(const Document& oDocument) : m_iRoot(Copy(*oDocument.documentElement())) {}

  void Record(const Change& oChange) override;
  std::size_t Recorded() const { return m_iRecorded; }

  /// Elements, attributes and texts in a notation for tests. Neighbouring texts
  /// are one, attributes stand in the order of their names.
  std::string Describe() const { return Describe(m_iRoot); }
  static std::string Describe(const Document& oDocument) { return AgentModel(oDocument).Describe(); }

 private:
  struct Node {
    std::string Tag;
    std::map<std::string, std::string> Attributes;
    std::vector<std::variant<NodeNumber, std::string>> Content;
    NodeNumber Parent = 0;
  };

  NodeNumber Copy(const Element& oElement);
  NodeNumber Clone(NodeNumber iNode, NodeNumber& iNext);
  void AppendText(NodeNumber iNode, std::string_view sText);
  /// At a place in the parent's content, counted from 0.
  void Insert(NodeNumber iParent, std::size_t iPlace, NodeNumber iChild);
  std::string Describe(NodeNumber iNode) const;

  std::map<NodeNumber, Node> m_nodes;
  NodeNumber m_iRoot;
  std::size_t m_iRecorded = 0;
};

}  // namespace ZELWbr3::Testing
