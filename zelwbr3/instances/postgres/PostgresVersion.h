#pragma once

#include "zelwbr3/ZELLib3/Version.h"

#include <string>
#include <utility>

namespace ZELWbr3::Postgres {

/// The version of the server, and the version of the pages' vocabulary that it can
/// fill: all rows of it.
class PostgresVersion : public ZELLib3::Version {
 public:
  explicit PostgresVersion(std::string sText) : m_sText(std::move(sText)) {}

  /// Such as "PostgreSQL 15.3".
  std::string Text() const override { return m_sText; }
  ZELLib3::Long Major() const override { return 7; }
  ZELLib3::Long Minor() const override { return 6; }
  ZELLib3::Long Number() const override { return 0x07060010; }
  ZELLib3::Long Release() const override { return 0x07060010; }
  ZELLib3::Long BuildVersion() const override { return 0x07060010; }

 private:
  std::string m_sText;
};

}  // namespace ZELWbr3::Postgres
