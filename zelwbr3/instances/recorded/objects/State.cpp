#include "zelwbr3/instances/recorded/objects/State.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/recorded/format/Values.h"

namespace ZELWbr3::Recorded {

State::State(Json oChecked, CallObserver fnTold) : oRoot(std::move(oChecked)), fnObserver(std::move(fnTold)) {
  if (oRoot.contains("fails")) oFails = oRoot["fails"].get<decltype(oFails)>();
  if (oRoot.contains("raises")) oRaises = oRoot["raises"].get<decltype(oRaises)>();
  if (oRoot.contains("LastError")) {
    oRecordedError = FromJson<std::optional<ZELLib3::Error>>(oRoot["LastError"]).value_or(ZELLib3::Error{});
  }
  oLastError = oRecordedError;

  // The state operations have something to write to.
  Json& oDatabase = oRoot["Database"];
  if (oDatabase.is_null()) oDatabase = Json::object();
  if (oDatabase["StateInfo"].is_null()) oDatabase["StateInfo"] = Json::object();

  constexpr auto sItems = "/Parameters/Items";
  if (const nlohmann::json_pointer<std::string> oItems(sItems); oDatabase.contains(oItems)) {
    std::size_t lItem = 0;
    for (const Json& oParameter : oDatabase[oItems]) {
      oParameters.try_emplace(Text::Trim(oParameter.value("Name", "")), lItem++);
    }
  }
}

void State::FailedBecause(const std::string& sReason) {
  const bool bRecorded = oRecordedError.ErrorCode != 0 || !oRecordedError.ErrorText.empty();
  oLastError = bRecorded ? oRecordedError : ZELLib3::Error{0, sReason};
}

}  // namespace ZELWbr3::Recorded
