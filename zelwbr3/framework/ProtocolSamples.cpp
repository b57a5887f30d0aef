#include "zelwbr3/framework/ProtocolSamples.h"

#include "zelwbr3/ZELLib3/Analyzer.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <utility>

namespace ZELWbr3::ProtocolSamples {

namespace {

using Protocol = ZELLib3::Analyzer::Protocol;

/// What the protocols know of a figure: a column, or the share of one in another.
struct Source {
  const char* Figure;  ///< its ID
  const char* Column;  ///< kind and name in a protocol
  const char* Whole = nullptr;
};
constexpr Source Sources[] = {
    {"DataPercent", "data.Percent"},
    {"LogPercent", "log.Percent"},
    {"SessionPercent", "sessions.Used", "sessions.Max"},
    {"DataUsed", "data.Used"},
    {"LogUsed", "log.Used"},
    {"CacheHitRate", "io.HitRate"},
    {"tabCommands.6", "load.Rollbacks"},
    {"tabCommands.7", "load.Commits"},
    {"tabCommands.12", "load.Updated"},
    {"tabCommands.15", "load.Deleted"},
    {"tabCommands.20", "load.Inserted"},
    {"tabIO.0", "io.Read"},
    {"tabIO.2", "io.Written"},
};

const Source* SourceOf(const std::string& sFigure) {
  const auto it = std::ranges::find(Sources, sFigure, &Source::Figure);
  return it == std::end(Sources) ? nullptr : it;
}

std::string ColumnOf(const Protocol& oProtocol, std::size_t iFigure) {
  return oProtocol.Name + "." + oProtocol.Figures[iFigure];
}

/// By moment: the values of all columns that are known then.
using Readings = std::map<std::int64_t, std::map<std::string, double>>;

Readings Joined(const std::vector<Protocol>& protocols) {
  Readings oReadings;
  for (const Protocol& o : protocols) {
    for (std::size_t i = 0; i < o.Times.size(); ++i) {
      auto& oValues = oReadings[o.Times[i]];
      for (std::size_t iFigure = 0; iFigure < o.Figures.size(); ++iFigure) {
        oValues[ColumnOf(o, iFigure)] = o.Values[i * o.Figures.size() + iFigure];
      }
    }
  }
  return oReadings;
}

double ValueOf(const std::map<std::string, double>& oValues, const char* sColumn) {
  const auto it = oValues.find(sColumn);
  return it == oValues.end() ? Samples::NotKnown : it->second;
}

/// "data.Percent" as "Data: Percent".
std::string LabelOf(const Protocol& oProtocol, std::size_t iFigure) {
  std::string sLabel = ColumnOf(oProtocol, iFigure);
  const auto iPoint = sLabel.find('.');
  sLabel.replace(iPoint, 1, ": ");
  if (sLabel[0] >= 'a' && sLabel[0] <= 'z') sLabel[0] = static_cast<char>(sLabel[0] - 'a' + 'A');
  return sLabel;
}

/// At most so many that a chart can be drawn of them at once.
std::size_t StepOf(std::size_t iCount) { return (iCount + Samples::Most - 1) / Samples::Most; }

}  // namespace

void Begin(Samples& oSamples, ZELLib3::Analyzer& oAnalyzer, const std::vector<Samples::Figure>& figures) {
  if (oSamples.Of("State") != nullptr) return;
  const Readings oReadings = Joined(oAnalyzer.Protocols(2));
  if (oReadings.empty()) return;
  constexpr std::int64_t Day = std::int64_t{24} * 60 * 60 * 1000;
  const std::int64_t iFrom = oReadings.rbegin()->first - Day;
  for (const auto& [iTime, oValues] : oReadings) {
    if (iTime < iFrom) continue;
    std::vector<Samples::Figure> read = figures;
    for (Samples::Figure& oFigure : read) {
      const Source* pSource = SourceOf(oFigure.ID);
      oFigure.Value = pSource == nullptr ? Samples::NotKnown : ValueOf(oValues, pSource->Column);
      if (pSource != nullptr && pSource->Whole != nullptr) {
        const double dWhole = ValueOf(oValues, pSource->Whole);
        oFigure.Value = dWhole > 0 ? 100 * oFigure.Value / dWhole : Samples::NotKnown;
      }
    }
    oSamples.Add("State", std::move(read), iTime);
  }
}

void Add(Samples& oSamples, ZELLib3::Analyzer& oAnalyzer, int iDays) {
  const auto protocols = oAnalyzer.Protocols(iDays);
  std::vector<Samples::Figure> figures;
  for (const Protocol& o : protocols) {
    for (std::size_t i = 0; i < o.Figures.size(); ++i) {
      if (o.Figures[i] == "PageSize") continue;  // never changes
      const bool bPercent = o.Figures[i] == "Percent" || o.Figures[i] == "HitRate";
      figures.push_back({.ID = ColumnOf(o, i), .Label = LabelOf(o, i), .Unit = bPercent ? "%" : "", .Place = ""});
    }
  }
  const Readings oReadings = Joined(protocols);
  const std::size_t iStep = StepOf(oReadings.size());
  std::size_t iReading = 0;
  for (const auto& [iTime, oValues] : oReadings) {
    if (iReading++ % iStep != 0) continue;
    for (Samples::Figure& o : figures) o.Value = ValueOf(oValues, o.ID.c_str());
    oSamples.Add(Name, figures, iTime);
  }
}

std::string Nearest(const std::string& sFigure) {
  const Source* pSource = SourceOf(sFigure);
  return pSource == nullptr ? "" : pSource->Column;
}

}  // namespace ZELWbr3::ProtocolSamples
