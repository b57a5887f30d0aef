#include "zelwbr3/instances/postgres/analyzer/ServerEvaluations.h"

#include "zelwbr3/instances/common/daemon/Figures.h"
#include "zelwbr3/instances/postgres/analyzer/Bottlenecks.h"

namespace ZELWbr3::Postgres {

namespace {

using Line = std::vector<std::string>;

std::string Text(std::int64_t lValue) { return std::to_string(lValue); }

}  // namespace

void ServerEvaluations::Begin(std::shared_ptr<Server> oServer) {
  m_oServer = std::move(oServer);
  m_oInterval.reset();
}

std::vector<Instances::FigureGroup> ServerEvaluations::Groups(const std::shared_ptr<ServerEvaluations>& oEvaluations) {
  std::vector<Instances::FigureGroup> groups;
  for (Instances::FigureGroup& oGroup : Instances::CommonGroups()) {
    if (oGroup.Name != "sessions") groups.push_back(std::move(oGroup));
  }
  const auto Add = [&](const char* sName, Line columns, Lines (ServerEvaluations::*fnRead)()) {
    groups.push_back({sName, std::move(columns),
                      [oEvaluations, fnRead](const Instances::Evaluation&) { return ((*oEvaluations).*fnRead)(); }});
  };
  Add("sessions", {"Used", "Max", "Active", "IdleInTransaction", "Waiting", "OldestTransaction"},
      &ServerEvaluations::Sessions);
  Add("load", {"Commits", "Rollbacks", "Inserted", "Updated", "Deleted", "Returned", "Deadlocks", "TempBytes"},
      &ServerEvaluations::Load);
  Add("io", {"HitRate", "Read", "ReadTime", "Written", "CheckpointsByTime", "CheckpointsByVolume", "LogBytes"},
      &ServerEvaluations::IO);
  Add("standby", {"Name", "State", "LagBytes", "LagSeconds"}, &ServerEvaluations::Standby);
  Add("bottlenecks", {"Level", "Name", "Text", "Value"}, &ServerEvaluations::Bottlenecks);
  return groups;
}

const Interval& ServerEvaluations::SinceLast() {
  if (!m_oInterval) {
    Counters oNow = Counters::Read(*m_oServer);
    m_oInterval = m_oLast ? Interval(*m_oLast, oNow) : Interval();
    m_oLast = std::move(oNow);
  }
  return *m_oInterval;
}

ServerEvaluations::Lines ServerEvaluations::Sessions() {
  const auto oFigures = m_oServer->ReadFigures();
  if (!oFigures) return {};
  Line line = {Text(oFigures->Sessions), Text(oFigures->MaxSessions)};
  const auto o = m_oServer->Ask("evaluated.sessions", "reading sessions");
  for (const char* sColumn : {"active", "idle_in_transaction", "waiting", "oldest"}) {
    line.push_back(o ? Text(o->Number(0, sColumn)) : std::string());
  }
  return {line};
}

ServerEvaluations::Lines ServerEvaluations::Load() {
  const Interval& oInterval = SinceLast();
  Line line;
  for (const char* sCounter :
       {"commits", "rollbacks", "inserted", "updated", "deleted", "returned", "deadlocks", "temp_bytes"}) {
    line.push_back(oInterval.Has(sCounter) ? NumberText(oInterval.Rate(sCounter)) : std::string());
  }
  return {line};
}

/// Read and Written are pages; ReadTime is milliseconds, 0 unless the server
/// measures it. Checkpoints are those since the evaluation before.
ServerEvaluations::Lines ServerEvaluations::IO() {
  const Interval& oInterval = SinceLast();
  const auto Rate = [&](const char* s) { return oInterval.Has(s) ? NumberText(oInterval.Rate(s)) : std::string(); };
  const auto Count = [&](const char* s) { return oInterval.Has(s) ? NumberText(oInterval.Count(s)) : std::string(); };
  return {{oInterval.Has("hit") ? NumberText(oInterval.HitPercent()) : "", Rate("read"), Rate("read_time"),
           Rate("written"), Count("by_time"), Count("by_volume"), Rate("log_bytes")}};
}

/// What the user may not know is empty.
ServerEvaluations::Lines ServerEvaluations::Standby() {
  const auto oFigures = m_oServer->ReadFigures();
  if (!oFigures) return {};
  Lines lines;
  const auto Add = [&](const std::string& sName, const std::string& sState, const std::optional<std::int64_t>& oBytes,
                       double dSeconds) {
    lines.push_back({sName, sState, oBytes ? Text(*oBytes) : std::string(), NumberText(dSeconds)});
  };
  for (const Figures::Node& oNode : oFigures->Nodes) {
    Add(oNode.Name, oNode.IsLost ? "lost" : oNode.State, oNode.Behind, oNode.SecondsBehind);
  }
  if (oFigures->IsStandby) {
    const Figures::Receiver& oOwn = oFigures->Own;
    Add(m_oServer->InstanceName(), oOwn.IsPaused ? "paused" : oOwn.State, oOwn.Behind, oOwn.SecondsBehind);
  }
  return lines;
}

ServerEvaluations::Lines ServerEvaluations::Bottlenecks() {
  Lines lines;
  for (const Bottleneck& o : Bottleneck::Find(*m_oServer, SinceLast())) {
    lines.push_back({std::to_string(o.Level), o.Name, o.Text, NumberText(o.Value)});
  }
  return lines;
}

}  // namespace ZELWbr3::Postgres
