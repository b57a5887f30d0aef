#include "zelwbr3/instances/recorded/objects/Analyzer.h"

#include "zelwbr3/ZELLib3/Codes.h"

namespace ZELWbr3::Recorded {

namespace {

using namespace ZELLib3::AnalyzerState;

// The day of a set as DeleteProtocols gets it, "YYYYMMDD".
std::string DayOf(const Json& oSet) {
  const std::string sDate = oSet.value("Date", "");
  return sDate.empty() ? sDate : sDate.substr(0, 4) + sDate.substr(5, 2) + sDate.substr(8, 2);
}

bool IsDay(const std::string& sDay) {
  return sDay.size() == 8 && sDay.find_first_not_of("0123456789") == std::string::npos;
}

}  // namespace

std::optional<std::vector<Analyzer::ProtocolSet>> Analyzer::ProtocolSets() {
  using Sets = std::optional<std::vector<ProtocolSet>>;
  Check("ProtocolSets");
  return Fails("ProtocolSets") ? std::nullopt : Get<Sets>("ProtocolSets", std::vector<ProtocolSet>{});
}

bool Analyzer::Start(const StartOptions& oOptions) {
  if (!Change("Start", oOptions.Config, oOptions.Number, oOptions.Interval, oOptions.Delete, oOptions.Reconnect)) {
    return false;
  }
  Value()["State"] = Started;
  return true;
}

bool Analyzer::Stop() {
  if (!Change("Stop")) return false;
  Value()["State"] = Stopped;
  return true;
}

bool Analyzer::DeleteProtocols(const std::string& sUntilDate) {
  if (!Change("DeleteProtocols", sUntilDate)) return false;
  if (!IsDay(sUntilDate)) {
    Shared().FailedBecause("Expected a date YYYYMMDD up to which protocols are deleted, found " + Quoted(sUntilDate));
    return false;
  }
  const auto oFound = Value().find("ProtocolSets");
  if (oFound == Value().end() || !oFound->is_array()) return true;
  Json& oSets = *oFound;
  // A set without a date is not known to be that old.
  oSets.erase(std::remove_if(oSets.begin(), oSets.end(),
                             [&](const Json& oSet) {
                               const std::string sDay = DayOf(oSet);
                               return !sDay.empty() && sDay <= sUntilDate;
                             }),
              oSets.end());
  return true;
}

}  // namespace ZELWbr3::Recorded
