#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace ZELWbr3::Postgres {

/// Where a server is, in libpq's own words: a URI ("postgresql://user@host/db") or
/// a list of settings ("host=/tmp dbname=db"). What it leaves out comes from the
/// environment, service files and password files, as with every program of libpq.
class Address {
 public:
  using Settings = std::map<std::string, std::string>;

  /// Raises ZELLib3::InstanceError, without the password, when libpq does not
  /// understand the text.
  explicit Address(std::string_view sText);

  /// The text without the password: for titles, messages and recordings.
  const std::string& Shown() const { return m_sShown; }
  /// What the text says, by libpq's keywords.
  const Settings& Given() const { return m_oGiven; }
  /// The value given, or of the environment variable that stands for it.
  std::string Value(const std::string& sKeyword) const;
  /// The password given, or what the host has asked the user for. Empty if
  /// neither.
  const std::string& Password() const { return m_sPassword; }
  void Password(std::string sPassword) { m_sPassword = std::move(sPassword); }
  /// A message of libpq with the password, should it stand there, made
  /// unreadable.
  std::string Hide(std::string sMessage) const;

  /// One address for each of the hosts given, in their order: a host that does
  /// not answer is then given up in time for the next one.
  std::vector<Settings> EachHost() const;

 private:
  std::string m_sShown;
  Settings m_oGiven;
  std::string m_sPassword;
};

}  // namespace ZELWbr3::Postgres
