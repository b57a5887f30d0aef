#include "host/Check.h"

#include "host/OpenInstance.h"
#include "zelwbr3/base/Text.h"
#include "zelwbr3/framework/Health.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <ostream>

namespace ZELWbr3::Host {

namespace {

/// The performance data begin at the first bar.
std::string Sentence(const std::string& sText) {
  std::string sSentence = Text::OneLine(Text::Clean(sText));
  std::ranges::replace(sSentence, '|', '/');
  return sSentence;
}

std::string Line(const Health& oHealth) {
  std::string sLine = Health::LevelName(oHealth.Worst()) + std::string(" - ");
  if (oHealth.Findings.empty()) sLine += "Nothing needs attention";
  const char* sBetween = "";
  for (const Health::Finding& oFinding : oHealth.Findings) {
    sLine += sBetween + Sentence(oFinding.Text);
    sBetween = "; ";
  }
  sBetween = " | ";
  for (const Health::Bar& oBar : oHealth.Bars) {
    sLine += sBetween;
    sLine.append("'").append(oBar.Name).append("'=").append(std::to_string(oBar.Percent)).append("%;");
    sLine.append(std::to_string(oBar.Warning)).append(";").append(std::to_string(oBar.Critical));
    sBetween = " ";
  }
  return sLine;
}

std::string JSON(const Health& oHealth, const std::string& sInstance) {
  nlohmann::ordered_json oFindings = nlohmann::ordered_json::array();
  for (const Health::Finding& o : oHealth.Findings) {
    oFindings.push_back(
        {{"level", Health::LevelName(o.Severity)}, {"name", o.Name}, {"text", Text::Clean(o.Text)}, {"page", o.Page}});
  }
  const nlohmann::ordered_json oAll = {
      {"level", Health::LevelName(oHealth.Worst())}, {"instance", Text::Clean(sInstance)}, {"findings", oFindings}};
  return oAll.dump();
}

}  // namespace

int Check(const std::string& sInstance, bool bJSON, std::ostream& oOut) {
  Health oHealth;
  std::string sName = ShownInstance(sInstance);
  try {
    const auto oDatabase = OpenInstance(sInstance);
    sName = oDatabase->InstanceName();
    oHealth = Health::Of(*oDatabase);
  } catch (const std::exception& oError) {
    oHealth = {{{Health::Level::Unknown, "state", oError.what(), "Main"}}, {}};
  }
  oOut << (bJSON ? JSON(oHealth, sName) : Line(oHealth)) << '\n' << std::flush;
  if (!oOut) throw std::runtime_error("Standard output cannot be written");
  return static_cast<int>(oHealth.Worst());
}

}  // namespace ZELWbr3::Host
