#pragma once

#include "zelwbr3/framework/Samples.h"

#include <string>
#include <vector>

namespace ZELLib3 {
class Analyzer;
}

/// Samples out of the analyzer's protocols: what was read before this program was
/// started, or weeks ago.
namespace ZELWbr3::ProtocolSamples {

/// The group that Add makes.
inline constexpr const char* Name = "Analyzer";

/// Begins the group "State" with what the protocols hold of the last day. figures are
/// those that are about to be added. Does nothing if the group has readings.
void Begin(Samples& oSamples, ZELLib3::Analyzer& oAnalyzer, const std::vector<Samples::Figure>& figures);

/// Adds all figures of the last days as the group Name; none if there are none.
void Add(Samples& oSamples, ZELLib3::Analyzer& oAnalyzer, int iDays);

/// The figure of that group that is nearest to one of another group; empty for none.
std::string Nearest(const std::string& sFigure);

}  // namespace ZELWbr3::ProtocolSamples
