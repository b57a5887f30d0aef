#pragma once

#include "zelwbr3/ZELLib3/Error.h"
#include "zelwbr3/instances/postgres/local/LocalServer.h"
#include "zelwbr3/instances/postgres/server/Figures.h"

#include <memory>
#include <string>

namespace ZELWbr3::Postgres {

/// What a look at the server finds.
struct Reading {
  ZELLib3::Long Status = 0;  ///< as StateInfo::Status
  bool IsConnected = false;
  std::string StateText;
  /// Null when figures cannot be read, which StateText then explains.
  std::shared_ptr<const Postgres::Figures> Figures;
  /// Why there is no connection, or there are no figures.
  ZELLib3::Error Why{};

  static Reading Of(Postgres::Figures oFigures);
  /// Of a server that is connected but does not tell its figures.
  static Reading WithoutFigures(const ServerError& oWhy);
  /// pLocal is null for a server of another machine, or when nobody knows where
  /// its files are.
  static Reading NotConnected(const ServerError& oWhy, const LocalServer* pLocal);
};

}  // namespace ZELWbr3::Postgres
