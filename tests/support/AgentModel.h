#pragma once

#include "zelwbr3/dom/Document.h"

#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace ZELWbr3::Testing {

/// What the agent makes of a document's changes, told by the rules of a
/// browser's document: text stands in nodes of its own, an element that is
/// removed takes nothing but what is below it along. Starts as a copy of a
/// document and follows it as its change log.
class AgentModel : public ChangeLog {
 public:
  explicit AgentModel(const Document& oDocument);

  void Record(const Change& oChange) override;

  /// Elements, attributes and texts, in one line of a test's own notation.
  /// Neighbouring texts are one, attributes stand in the order of their names.
  std::string Describe() const;
  static std::string Describe(const Document& oDocument);

  std::size_t Recorded() const { return m_iRecorded; }

 private:
  struct Node {
    std::string Tag;  ///< empty for text
    std::string Text;
    std::map<std::string, std::string> Attributes;
    std::list<std::shared_ptr<Node>> Children;
    Node* Parent = nullptr;
  };
  using NodePtr = std::shared_ptr<Node>;

  Node& At(NodeNumber iNumber) const;
  NodePtr Copy(const Element& oElement);
  NodePtr Clone(const Node& oNode, NodeNumber& iNext);
  static void AppendText(Node& oNode, std::string_view sText);
  static void Describe(const Node& oNode, std::string& sOut);

  NodePtr m_oRoot;
  std::vector<NodePtr> m_nodes;  // by number
  std::size_t m_iRecorded = 0;
};

}  // namespace ZELWbr3::Testing
