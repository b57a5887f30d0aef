#pragma once

#include "zelwbr3/ZELLib3/RowSource.h"
#include "zelwbr3/base/Export.h"

namespace ZELLib3 {

/// The rows of one table. Owner and Name are set before Open.
class ZELWBR3_EXPORT SQLTable : public RowSource {
 public:
  std::string Owner() const { return m_sOwner; }
  void Owner(const std::string& sOwner) { m_sOwner = sOwner; }
  std::string Name() const { return m_sName; }
  void Name(const std::string& sName) { m_sName = sName; }

 private:
  std::string m_sOwner;
  std::string m_sName;
};

}  // namespace ZELLib3
