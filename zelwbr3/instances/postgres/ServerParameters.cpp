#include "zelwbr3/instances/postgres/ServerParameters.h"

#include "zelwbr3/base/Text.h"
#include "zelwbr3/instances/common/Passwords.h"

#include <algorithm>
#include <array>
#include <map>

namespace ZELWbr3::Postgres {

namespace {

using Entry = Instances::ParameterList::Entry;
using Group = Instances::ParameterList::Group;

constexpr char kAsked[] = "reading the parameters";

/// By the beginning of the category; the rest is Extended.
struct Category {
  const char* Beginning;
  Group InGroup;
};
constexpr Category kCategories[] = {{"Preset", Group::Info},
                                    {"Connections", Group::General},
                                    {"File Locations", Group::General},
                                    {"Resource Usage / Memory", Group::General},
                                    {"Write-Ahead Log", Group::General},
                                    {"Replication", Group::General},
                                    {"Autovacuum", Group::General},
                                    {"Vacuuming / Automatic", Group::General},
                                    {"Reporting", Group::Support},
                                    {"Statistics", Group::Support},
                                    {"Developer", Group::Support},
                                    {"Customized", Group::Support},
                                    {"Error Handling", Group::Support}};

Group GroupOf(const std::string& sCategory) {
  const auto it = std::ranges::find_if(kCategories, [&](const auto& o) { return sCategory.starts_with(o.Beginning); });
  return it == std::end(kCategories) ? Group::Extended : it->InGroup;
}

/// When a change takes effect, by the parameter's context.
std::string ChangeText(const std::string& sContext) {
  if (sContext == "internal") return "cannot be changed";
  if (sContext == "postmaster") return "changed at a restart";
  if (sContext == "sighup") return "changed when the configuration is read again";
  if (sContext == "backend" || sContext == "superuser-backend") return "changed for new sessions";
  return "changed by each session for itself";
}

std::string RangeText(const Result& o, int i) {
  if (!o.IsNull(i, "enumvals")) return "One of " + o.Text(i, "enumvals") + ".";
  if (o.IsNull(i, "min_val")) return {};
  const std::string sUnit = o.IsNull(i, "unit") ? std::string() : " (in " + o.Text(i, "unit") + ")";
  return "From " + o.Text(i, "min_val") + " to " + o.Text(i, "max_val") + sUnit + ".";
}

/// The file and line that set the value; empty when nobody may know.
std::string FileText(const Result& o, int i) {
  if (o.IsNull(i, "sourcefile")) return {};
  return o.Text(i, "sourcefile") + ", line " + o.Text(i, "sourceline");
}

std::string Explanation(const Result& o, int i) {
  std::string sText;
  const auto Add = [&](const std::string& sSentence) {
    if (!sSentence.empty()) sText += (sText.empty() ? "" : " ") + sSentence;
  };
  Add(Text::Trim(o.Text(i, "extra_desc")));
  const std::string sDefault =
      o.IsNull(i, "boot_val") || o.Text(i, "boot_val").empty() ? "none" : o.Text(i, "boot_val");
  Add("Default: " + sDefault + "; " + ChangeText(o.Text(i, "context")) + ".");
  Add(RangeText(o, i));
  const std::string sFile = FileText(o, i);
  Add("Source: " + o.Text(i, "source") + (sFile.empty() ? "" : ", " + sFile) + ".");
  return sText;
}

/// A value that others must not read, nor the store keep.
bool IsSecret(const std::string& sName) { return sName.ends_with("conninfo") || sName == "ssl_passphrase_command"; }

/// What a restart would bring, by the parameter's name.
std::map<std::string, std::string> Pending(Server& oServer) {
  std::map<std::string, std::string> pending;
  if (const auto o = oServer.Ask("parameters.pending", kAsked)) {
    for (int i = 0; i < o->Rows(); ++i) pending[o->Text(i, "name")] = o->Text(i, "setting");
  }
  return pending;
}

}  // namespace

std::optional<std::vector<Entry>> ServerParameters::ReadEntries() {
  std::vector<Entry> entries;
  const bool bRead = m_oServer->Attempt([&](Connection&) {
    entries.clear();
    const Result o = *m_oServer->Ask("parameters", kAsked);
    std::optional<std::map<std::string, std::string>> oPending;
    entries.reserve(static_cast<std::size_t>(o.Rows()));
    for (int i = 0; i < o.Rows(); ++i) {
      Entry oEntry{o.Text(i, "name"), o.Text(i, "shown"), o.Text(i, "short_desc"), Explanation(o, i),
                   GroupOf(o.Text(i, "category"))};
      // A standby's primary_conninfo may hold the password of its user.
      if (IsSecret(oEntry.Name)) oEntry.Value = Instances::WithoutPasswords(oEntry.Value);
      oEntry.NewValue = oEntry.Value;
      if (o.Flag(i, "pending_restart")) {
        if (!oPending) oPending = Pending(*m_oServer);
        const auto it = oPending->find(oEntry.Name);
        oEntry.NewValue =
            it == oPending->end() || IsSecret(oEntry.Name) ? "(changed; takes effect at the next restart)" : it->second;
      }
      oEntry.NewValueOnline = oEntry.NewValue;
      oEntry.IsObserved = o.Text(i, "context") != "internal" && !IsSecret(oEntry.Name);
      oEntry.Source = FileText(o, i);
      entries.push_back(std::move(oEntry));
    }
  });
  if (!bRead) return std::nullopt;
  return entries;
}

}  // namespace ZELWbr3::Postgres
