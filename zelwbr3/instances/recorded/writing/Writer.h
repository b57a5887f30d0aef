#pragma once

#include "zelwbr3/base/Calendar.h"
#include "zelwbr3/instances/recorded/format/Path.h"
#include "zelwbr3/instances/recorded/format/Values.h"
#include "zelwbr3/instances/recorded/writing/RecordOptions.h"

#include <cmath>
#include <map>
#include <new>

namespace ZELWbr3::Recorded {

/// Collects what an instance answers. The members of the interfaces add
/// themselves (Member::fnWrite) to the object that is being written.
///
/// Every call of the instance goes through Read or Do, which keep count of
/// what raised and what failed by the member's path.
class Writer {
 public:
  /// The order of the members is kept.
  using Output = nlohmann::ordered_json;

  Writer(ZELLib3::Database& oDatabase, const RecordOptions& oOptions) : m_oDatabase(oDatabase), m_oOptions(oOptions) {}

  const RecordOptions& Options() const { return m_oOptions; }

  /// The file's content, and notes on what it cannot say.
  Output Recording();
  const std::vector<std::string>& Notes() const { return m_oNotes; }
  void Note(const std::string& sNote) { m_oNotes.push_back(sNote); }

  /// What a member answers; nothing when it raises.
  template <class F>
  auto Read(const std::string& sName, F fnRead) -> std::optional<decltype(fnRead())> {
    Tally& oTally = m_oTallies[Join(m_sPath, sName)];
    ++oTally.lCalls;
    try {
      return fnRead();
    } catch (const std::bad_alloc&) {
      throw;
    } catch (const ZELLib3::InstanceError& oError) {
      ++oTally.lRaised;
      KeepError(m_oRaised, oError.ErrorObject());
    } catch (const std::exception& oError) {
      ++oTally.lRaised;
      KeepError(m_oRaised, {0, oError.what()});
    }
    return std::nullopt;
  }

  /// Calls an operation; false when it fails or raises.
  template <class F>
  bool Do(const std::string& sName, F fnCall) {
    const std::optional<bool> bDone = Read(sName, fnCall);
    if (bDone == false) Failed(sName);
    return bDone.value_or(false);
  }
  /// An operation answered that it failed.
  void Failed(const std::string& sName);

  /// Adds a key to the object that is being written. A value that a recording
  /// cannot hold is left out.
  template <class T>
  void Put(const std::string& sName, const T& oValue) {
    std::optional<Output> oOutput = ToOutput(oValue, Join(m_sPath, sName));
    if (oOutput) (*m_pTarget)[sName] = std::move(*oOutput);
  }

  void PutOutput(const std::string& sName, Output oOutput) { (*m_pTarget)[sName] = std::move(oOutput); }

  /// An object of the instance below a path; entries of a collection have
  /// their interface's name for one.
  template <class I>
  Output Object(I& oObject, const std::string& sPath) {
    Output oOutput = Output::object();
    Output* const pOuter = std::exchange(m_pTarget, &oOutput);
    std::string sOuter = std::exchange(m_sPath, sPath);
    for (const Member& oMember : InterfaceOf<I>().oMembers) {
      if (oMember.fnWrite) oMember.fnWrite(&oObject, *this);
    }
    m_pTarget = pOuter;
    m_sPath = std::move(sOuter);
    return InForm(std::move(oOutput), InterfaceOf<I>().eForm);
  }

 private:
  struct Tally {
    std::size_t lCalls = 0;
    std::size_t lRaised = 0;
    std::size_t lFailed = 0;
  };

  template <class T>
  std::optional<Output> ToOutput(const T& oValue, const std::string& sPath) {
    if constexpr (std::is_same_v<T, Long> || std::is_same_v<T, Integer>) {
      return static_cast<int>(oValue);
    } else if constexpr (std::is_same_v<T, double>) {
      return std::isfinite(oValue) ? std::optional<Output>(oValue) : std::nullopt;
    } else if constexpr (std::is_same_v<T, ZELWbr3::Date>) {
      const std::string sText = Calendar::ISOText(oValue);
      return Calendar::ParseISO(sText) ? std::optional<Output>(sText) : std::nullopt;
    } else if constexpr (IsList<T>) {
      Output oList = Output::array();
      for (const auto& oEntry : oValue) oList.push_back(ToOutput(oEntry, sPath).value_or(Output(-1)));
      return oList;
    } else if constexpr (IsObject<T>) {
      return oValue ? Object(*oValue, sPath) : Output(nullptr);
    } else if constexpr (std::is_class_v<T> && !std::is_same_v<T, std::string>) {
      T oCopy = oValue;
      return Object(oCopy, sPath);
    } else {
      return Output(oValue);
    }
  }

  static Output InForm(Output oObject, Interface::Form eForm);
  ZELLib3::Error LastError();
  static void KeepError(std::optional<ZELLib3::Error>& oKept, ZELLib3::Error oError) {
    if (!oKept) oKept = std::move(oError);
  }

  ZELLib3::Database& m_oDatabase;
  const RecordOptions& m_oOptions;
  std::vector<std::string> m_oNotes;
  std::map<std::string, Tally> m_oTallies;
  std::optional<ZELLib3::Error> m_oRaised;  // the first that was raised
  std::optional<ZELLib3::Error> m_oFailed;  // LastError after the first failure
  Output* m_pTarget = nullptr;
  std::string m_sPath;
};

}  // namespace ZELWbr3::Recorded
