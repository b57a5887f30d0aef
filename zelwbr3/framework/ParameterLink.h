#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/framework/PageSite.h"

#include <memory>
#include <string>

namespace ZELWbr3 {

/// A parameter's name as a link, which modCells::FillParamCell writes: the id
/// "PARAM" and the name.
class ParameterLink {
 public:
  /// Keeps the parameter when the id is such a link; false for other ids, and for
  /// a cell without a name, which is no link.
  bool IsClicked(const std::string& sID);
  /// Shows the page of the parameter kept.
  void Open(PageSite& oBrowser, const std::shared_ptr<ZELLib3::Database>& oDatabase) const;

 private:
  std::string m_sName;
};

}  // namespace ZELWbr3
