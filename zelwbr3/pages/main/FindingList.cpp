#include "zelwbr3/pages/main/FindingList.h"

#include "zelwbr3/dom/EmbeddedObject.h"
#include "zelwbr3/framework/modElement.h"

#include <charconv>
#include <stdexcept>

namespace ZELWbr3 {

namespace {

using modElement::ShowElement;

constexpr std::string_view Block = "divHealth";
constexpr std::string_view LinkPrefix = "FINDING";
constexpr std::string_view HelpPrefix = "HELPFINDING";

struct LevelLook {
  const char* Class;
  const char* Word;
};

/// By level.
constexpr LevelLook Looks[] = {{"zelFindingOK", ""},
                               {"zelFindingWarning", "Attention"},
                               {"zelFindingCritical", "Critical"},
                               {"zelFindingUnknown", "Unknown"}};

const Health::Finding* FindingOf(const Health& oHealth, std::string_view sPrefix, std::string_view sID) {
  if (!sID.starts_with(sPrefix)) return nullptr;
  sID.remove_prefix(sPrefix.size());
  std::size_t i = 0;
  const auto [pEnd, eError] = std::from_chars(sID.data(), sID.data() + sID.size(), i);
  const bool bNumber = eError == std::errc() && pEnd == sID.data() + sID.size();
  return bNumber && i < oHealth.Findings.size() ? &oHealth.Findings[i] : nullptr;
}

}  // namespace

bool FindingList::IsIn(const Document& oDocument) { return oDocument.all().item(Block) != nullptr; }

void FindingList::Fill(Document& oDocument, const Health& oHealth, const HasHelp& oHasHelp) {
  Element* oBlock = oDocument.all().item(Block);
  Element* oTemplate = oDocument.all().item("rowFinding");
  if (oBlock == nullptr || oTemplate == nullptr) return;
  ShowElement(oBlock, true);
  ShowElement(oDocument.all().item("txtHealthy"), oHealth.Findings.empty());
  for (std::size_t i = 0; i < oHealth.Findings.size(); ++i) {
    const Health::Finding& oFinding = oHealth.Findings[i];
    const LevelLook& oLook = Looks[static_cast<std::size_t>(oFinding.Severity)];
    Element& oRow = oTemplate->cloneNode(true);
    oRow.removeAttribute("id");
    oRow.className(oLook.Class);
    ShowElement(&oRow, true);
    Element* oWord = oRow.firstElementChild();
    Element* oLink = oWord == nullptr ? nullptr : oWord->nextElementSibling();
    Element* oHelp = oLink == nullptr ? nullptr : oLink->nextElementSibling();
    if (oHelp == nullptr) throw std::runtime_error("The page file has no word, link and help in \"rowFinding\"");
    oWord->innerText(oLook.Word);
    oLink->innerText(oFinding.Text);
    if (oFinding.Page == "Main") {
      oLink->removeAttribute("href");  // it is here
    } else {
      oLink->id(std::string(LinkPrefix) + std::to_string(i));
    }
    oHelp->id(std::string(HelpPrefix) + std::to_string(i));
    ShowElement(oHelp, oHasHelp(oFinding.HelpID()));
    oTemplate->parentElement()->appendChild(oRow);
  }
  if (Element* oBadge = oDocument.all().item("imgHealth")) {
    oBadge->object().Property("Level", static_cast<std::int32_t>(oHealth.Worst()));
  }
}

const Health::Finding* FindingList::Linked(const Health& oHealth, std::string_view sID) {
  return FindingOf(oHealth, LinkPrefix, sID);
}

const Health::Finding* FindingList::LinkedHelp(const Health& oHealth, std::string_view sID) {
  return FindingOf(oHealth, HelpPrefix, sID);
}

}  // namespace ZELWbr3
