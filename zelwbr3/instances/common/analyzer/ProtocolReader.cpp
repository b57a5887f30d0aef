#include "zelwbr3/instances/common/analyzer/ProtocolReader.h"

#include "zelwbr3/base/ReadFile.h"
#include "zelwbr3/instances/common/analyzer/ProtocolFile.h"
#include "zelwbr3/instances/common/analyzer/TimeStamp.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <filesystem>
#include <limits>
#include <map>
#include <optional>
#include <set>
#include <string_view>

namespace ZELWbr3::Instances {

namespace {

namespace fs = std::filesystem;
using Protocol = ZELLib3::Analyzer::Protocol;

constexpr double kNotKnown = std::numeric_limits<double>::quiet_NaN();
/// A day of evaluations every second.
constexpr std::uintmax_t kLargest = 16U << 20U;
/// Number and Time.
constexpr std::size_t kFirstFigure = 2;

/// The fields of a line; quoted ones without their quotation marks.
std::vector<std::string> FieldsOf(std::string_view sLine) {
  std::vector<std::string> fields(1);
  bool bQuoted = false;
  for (const char c : sLine) {
    if (c == '"') {
      bQuoted = !bQuoted;
    } else if (c == ',' && !bQuoted) {
      fields.emplace_back();
    } else {
      fields.back() += c;
    }
  }
  return fields;
}

double NumberOf(std::string_view sField) {
  double dNumber = 0;
  const auto oResult = std::from_chars(sField.data(), sField.data() + sField.size(), dNumber);
  const bool bWhole = oResult.ec == std::errc() && oResult.ptr == sField.data() + sField.size();
  return bWhole && std::isfinite(dNumber) ? dNumber : kNotKnown;
}

/// The lines of one day's file; none if an evaluation has several.
class DayFile {
 public:
  explicit DayFile(const std::string& sText) {
    std::string_view sRest = sText;
    std::string sNumber;
    for (auto iEnd = sRest.find('\n'); iEnd != sRest.npos; iEnd = sRest.find('\n')) {
      auto fields = FieldsOf(sRest.substr(0, iEnd));
      sRest.remove_prefix(iEnd + 1);
      if (Columns.empty()) {
        Columns = std::move(fields);
        if (Columns.size() <= kFirstFigure || Columns[0] != "Number" || Columns[1] != "Time") return;
        continue;
      }
      const auto iTime = fields.size() == Columns.size() ? MomentOf(fields[1]) : std::nullopt;
      if (!iTime) continue;
      if (fields[0] == sNumber) {
        Lines.clear();
        return;
      }
      sNumber = fields[0];
      Lines.emplace_back(*iTime, std::move(fields));
    }
  }

  std::vector<std::string> Columns;
  std::vector<std::pair<std::int64_t, std::vector<std::string>>> Lines;
};

void Append(Protocol& oProtocol, const DayFile& oDay) {
  for (std::size_t i = kFirstFigure; i < oDay.Columns.size(); ++i) {
    const bool bNumbers =
        std::ranges::any_of(oDay.Lines, [&](const auto& o) { return !std::isnan(NumberOf(o.second[i])); });
    if (!bNumbers || std::ranges::find(oProtocol.Figures, oDay.Columns[i]) != oProtocol.Figures.end()) continue;
    // A figure that the days before did not have.
    std::vector<double> values;
    const std::size_t iOld = oProtocol.Figures.size();
    for (std::size_t iTime = 0; iTime < oProtocol.Times.size(); ++iTime) {
      const auto it = oProtocol.Values.begin() + static_cast<std::ptrdiff_t>(iTime * iOld);
      values.insert(values.end(), it, it + static_cast<std::ptrdiff_t>(iOld));
      values.push_back(kNotKnown);
    }
    oProtocol.Values = std::move(values);
    oProtocol.Figures.push_back(oDay.Columns[i]);
  }
  std::vector<std::size_t> columns;
  for (const std::string& sFigure : oProtocol.Figures) {
    columns.push_back(static_cast<std::size_t>(std::ranges::find(oDay.Columns, sFigure) - oDay.Columns.begin()));
  }
  for (const auto& [iTime, fields] : oDay.Lines) {
    if (!oProtocol.Times.empty() && iTime <= oProtocol.Times.back()) continue;  // the clock was set back
    oProtocol.Times.push_back(iTime);
    for (const std::size_t i : columns) oProtocol.Values.push_back(i < fields.size() ? NumberOf(fields[i]) : kNotKnown);
  }
}

}  // namespace

std::vector<Protocol> ReadProtocols(const std::string& sPath, const std::vector<std::string>& days) {
  std::map<std::string, Protocol> protocols;
  for (const std::string& sDay : days) {
    std::error_code oError;
    for (fs::directory_iterator i(sPath + "/" + sDay, oError), iEnd; !oError && i != iEnd; i.increment(oError)) {
      const std::string sName = i->path().stem().string();
      const bool bRegular = i->symlink_status(oError).type() == fs::file_type::regular;
      if (!bRegular || i->path().extension() != ProtocolFile::Ending || sName == "state") continue;
      try {
        const DayFile oDay(ReadFile(i->path().string(), kLargest));
        Protocol& oProtocol = protocols[sName];
        oProtocol.Name = sName;
        Append(oProtocol, oDay);
      } catch (const ReadFileError&) {
        // The others are good without it.
      }
    }
  }
  std::vector<Protocol> read;
  for (auto& [sName, oProtocol] : protocols) {
    if (!oProtocol.Figures.empty()) read.push_back(std::move(oProtocol));
  }
  return read;
}

}  // namespace ZELWbr3::Instances
