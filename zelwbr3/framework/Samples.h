#pragma once

#include "zelwbr3/base/Export.h"

#include <cstdint>
#include <deque>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace ZELLib3 {
class Database;
}

namespace ZELWbr3 {

/// What has been read of one instance over time: each page that shows figures adds
/// them when it has read them. The last day is kept while the instance is open, at
/// most one reading in five seconds; the newest one always.
class ZELWBR3_EXPORT Samples {
 public:
  /// Readings that are kept of a group: a day's.
  static constexpr std::size_t Most = 24 * 60 * 60 / 5;
  /// Milliseconds between two readings that are kept.
  static constexpr std::int64_t Distance = 5000;
  static constexpr double NotKnown = std::numeric_limits<double>::quiet_NaN();

  /// What is read at one moment: a level, or a counter since the instance was started.
  struct Figure {
    std::string ID;     ///< within its group
    std::string Label;  ///< for people
    std::string Unit;   ///< such as "%"; empty for a number
    bool IsCounter = false;
    double Value = NotKnown;
    std::string Place;  ///< where a page shows it, for the page's script
  };

  /// Figures that are read together.
  class Group {
   public:
    std::span<const Figure> Figures() const { return m_figures; }
    std::size_t Count() const { return m_times.size(); }
    /// Milliseconds since 1970; 0 is the oldest reading.
    std::int64_t Time(std::size_t iReading) const { return m_times[iReading]; }
    double Value(std::size_t iReading, std::size_t iFigure) const {
      return m_values[iReading * m_figures.size() + iFigure];
    }
    /// What a figure grew by in a second since the oldest reading that is not older
    /// than that many milliseconds; no value if it is not known for at least a tenth
    /// of that time.
    std::optional<double> Rate(const std::string& sID, std::int64_t iWithin) const;

   private:
    friend class Samples;
    std::vector<Figure> m_figures;
    std::deque<std::int64_t> m_times;
    std::deque<double> m_values;
  };

  /// Those of an instance; kept as long as it is.
  static std::shared_ptr<Samples> Of(const std::shared_ptr<ZELLib3::Database>& oDatabase);

  /// Adds what has been read now. Other figures than before begin the group anew.
  void Add(const std::string& sGroup, std::vector<Figure> figures);
  void Add(const std::string& sGroup, std::vector<Figure> figures, std::int64_t iTime);
  /// Null if nothing was read of it.
  const Group* Of(const std::string& sGroup) const;

 private:
  std::map<std::string, Group> m_groups;
};

}  // namespace ZELWbr3
