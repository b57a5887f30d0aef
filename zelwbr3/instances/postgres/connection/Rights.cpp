#include "zelwbr3/instances/postgres/connection/Rights.h"

#include "zelwbr3/instances/postgres/connection/Connection.h"
#include "zelwbr3/instances/postgres/connection/Queries.h"

namespace ZELWbr3::Postgres {

Rights Rights::Of(Connection& oConnection, const std::string& sServer) {
  const std::string sAsked = "asking who the server is";
  if (oConnection.Version() < OldestVersion) {
    const int iMajor = oConnection.Version() / 10000;
    throw ServerError({}, sServer, sAsked,
                      "PostgreSQL " + std::to_string(iMajor) + "." + std::to_string(oConnection.Version() / 100 % 100) +
                          " is too old; 10 and later can be shown");
  }
  const Result o = oConnection.Execute(Queries::SQL("identity"), sAsked);
  if (o.Rows() != 1) throw ServerError({}, sServer, sAsked, "the user has been dropped");
  Rights oRights;
  oRights.Version = static_cast<int>(o.Number(0, "version_num"));
  oRights.VersionText = o.Text(0, "version_text");
  oRights.Platform = o.Text(0, "platform");
  oRights.PageSize = static_cast<int>(o.Number(0, "page_size"));
  oRights.ClusterName = o.Text(0, "cluster_name");
  oRights.Port = static_cast<int>(o.Number(0, "port"));
  oRights.StartedOn = o.Number(0, "started");
  oRights.ConnectedOn = o.Number(0, "backend_start");
  oRights.DataDirectory = o.Text(0, "data_directory");
  oRights.SystemIdentifier = o.Text(0, "system_identifier");
  oRights.IsSuper = o.Flag(0, "is_super");
  oRights.ReadsStats = o.Flag(0, "reads_stats");
  oRights.ReadsSettings = o.Flag(0, "reads_settings");
  oRights.ListsWal = o.Flag(0, "lists_wal");
  const Result oExtensions = oConnection.Execute(Queries::SQL("extensions"), sAsked);
  for (int i = 0; i < oExtensions.Rows(); ++i) {
    oRights.Extensions[oExtensions.Text(i, "extname")] = oExtensions.Text(i, "schema");
  }
  return oRights;
}

}  // namespace ZELWbr3::Postgres
