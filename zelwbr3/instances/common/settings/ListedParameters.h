#pragma once

#include "zelwbr3/ZELLib3/Parameters.h"
#include "zelwbr3/instances/common/settings/ParameterList.h"

namespace ZELWbr3::Instances {

/// The parameters of the list; none while they cannot be read.
class ListedParameters : public ZELLib3::Parameters {
 public:
  explicit ListedParameters(std::shared_ptr<ParameterList> oList) : m_oList(std::move(oList)) {}

  ZELLib3::Long Count() const override;
  std::shared_ptr<ZELLib3::Parameter> Item(ZELLib3::Long iIndex) const override;
  std::shared_ptr<ZELLib3::Parameter> Item(const std::string& sName) const override { return m_oList->Item(sName); }
  bool Load() override { return m_oList->Load(); }

 private:
  std::shared_ptr<ParameterList> m_oList;
};

}  // namespace ZELWbr3::Instances
