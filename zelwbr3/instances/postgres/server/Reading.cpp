#include "zelwbr3/instances/postgres/server/Reading.h"

#include "zelwbr3/ZELLib3/Codes.h"

namespace ZELWbr3::Postgres {

namespace {

/// Neither offline nor online.
constexpr int kBetween = 1;
/// SQLSTATE of a server that starts or stops.
constexpr char kCannotConnectNow[] = "57P03";

std::string StandbyText(const Figures& oFigures) {
  const Figures::Receiver& oOwn = oFigures.Own;
  std::string sText = oOwn.IsPaused               ? "replay paused"
                      : oOwn.State == "streaming" ? "streaming"
                                                  : "no connection to its primary";
  if (oOwn.SecondsBehind >= 1)
    sText += ", " + std::to_string(static_cast<std::int64_t>(oOwn.SecondsBehind)) + " s behind";
  return "Online (standby, " + sText + ")";
}

}  // namespace

Reading Reading::Of(Postgres::Figures oFigures) {
  Reading oReading;
  oReading.IsConnected = true;
  oReading.Status = oFigures.IsAdmin ? ZELLib3::Status::Admin : ZELLib3::Status::Online;
  oReading.StateText = oFigures.IsAdmin     ? "Admin (superusers only)"
                       : oFigures.IsStandby ? StandbyText(oFigures)
                                            : "Online";
  oReading.Figures = std::make_shared<const Postgres::Figures>(std::move(oFigures));
  return oReading;
}

Reading Reading::WithoutFigures(const ServerError& oWhy) {
  return {ZELLib3::Status::Online, true, "Online (figures cannot be read: " + oWhy.Said() + ")", nullptr,
          oWhy.ErrorObject()};
}

Reading Reading::NotConnected(const ServerError& oWhy, const LocalServer* pLocal) {
  Reading oReading;
  oReading.Why = oWhy.ErrorObject();
  const std::optional<PostmasterFile> oPostmaster = pLocal != nullptr ? pLocal->Postmaster() : std::nullopt;
  const bool bProcess = pLocal != nullptr && pLocal->Process().has_value();
  const std::string sPhase = bProcess && oPostmaster ? oPostmaster->Status : std::string();
  if (oWhy.SQLState() == kCannotConnectNow || sPhase == "starting" || sPhase == "stopping") {
    oReading.Status = kBetween;
    oReading.StateText = sPhase == "starting" ? "Starting" : sPhase == "stopping" ? "Stopping" : oWhy.Said();
  } else if (dynamic_cast<const LoginWaits*>(&oWhy) != nullptr) {
    oReading.StateText = "Not connected (figures cannot be read: " + oWhy.Said() + ")";
  } else if (!oWhy.SQLState().empty()) {
    oReading.StateText = "Not connected (the server runs)";
  } else if (pLocal != nullptr && pLocal->IsReadable() && !bProcess) {
    const bool bCrashed = pLocal->ControlData("Database cluster state") == "in production";
    oReading.Status = ZELLib3::Status::Offline;
    oReading.StateText = bCrashed ? "Offline (crashed, recovers at start)" : "Offline";
  } else {
    oReading.StateText = "Not connected";
  }
  return oReading;
}

}  // namespace ZELWbr3::Postgres
