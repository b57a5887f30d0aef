#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/base/Export.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace ZELLib3 {

/// The database analyzer of the instance.
class ZELWBR3_EXPORT Analyzer {
 public:
  /// The protocol files of one day.
  struct ProtocolSet {
    ZELWbr3::Date Date;
    std::vector<std::string> Texts;
  };

  /// Figures of one kind as the evaluations have found them, oldest first.
  struct Protocol {
    std::string Name;                  ///< such as "data"
    std::vector<std::string> Figures;  ///< such as "Used"
    std::vector<std::int64_t> Times;   ///< milliseconds since 1970
    std::vector<double> Values;        ///< of each time, in the order of Figures; NaN if not known
  };

  /// How Start runs the analyzer; the defaults are the analyzer's own.
  struct StartOptions {
    std::string Config;      ///< configuration file; empty = default
    Long Number;             ///< evaluations until it ends; 0 = endless
    Long Interval;           ///< seconds between two evaluations; 0 = default
    bool Delete = false;     ///< delete today's protocol files first
    bool Reconnect = false;  ///< after a restart of the instance
  };

  virtual ~Analyzer() = default;

  /// 1 started, 2 stopped, 0 none; any other unknown.
  virtual Long State() const { return 0; }
  virtual std::string Info() const { return {}; }
  virtual std::string ConfigFile() const { return {}; }
  virtual std::string ProtocolDir() const { return {}; }
  /// Seconds.
  virtual Long Interval() const { return 0; }
  virtual std::string Reconnect() const { return {}; }
  virtual std::string ProcessID() const { return {}; }
  virtual std::string SessionID() const { return {}; }
  virtual std::string StartTime() const { return {}; }
  virtual bool HasError() const { return false; }
  virtual std::string ErrorText() const { return {}; }
  /// Newest first; no value if they cannot be read (LastError says why).
  virtual std::optional<std::vector<ProtocolSet>> ProtocolSets() { return std::vector<ProtocolSet>{}; }
  /// What the protocol sets of the last days hold, today's included, of the kinds with
  /// one line for an evaluation. Raises InstanceError.
  virtual std::vector<Protocol> Protocols(Long) { return {}; }

  virtual bool Start(const StartOptions&) { return false; }
  virtual bool Stop() { return false; }
  /// Deletes the sets up to and including a day, given as "YYYYMMDD".
  virtual bool DeleteProtocols(const std::string&) { return false; }
};

}  // namespace ZELLib3
