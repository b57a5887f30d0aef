#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/base/Export.h"
#include "zelwbr3/framework/PageSite.h"

#include <memory>
#include <string>

namespace ZELWbr3 {

/// A parameter's name as a link, written by modCells::FillParamCell: its id is
/// "PARAM" and the name.
class ZELWBR3_EXPORT ParameterLink {
 public:
  /// Remembers the parameter if the id is such a link. False for other ids, and
  /// for a cell without a name, which is not a link.
  bool IsClicked(const std::string& sID);
  /// Shows the page of the remembered parameter.
  void Open(PageSite& oBrowser, const std::shared_ptr<ZELLib3::Database>& oDatabase) const;

 private:
  std::string m_sName;
};

}  // namespace ZELWbr3
