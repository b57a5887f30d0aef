#pragma once

#include "zelwbr3/ZELLib3/Database.h"
#include "zelwbr3/framework/ZELHTMLForm.h"

/// The warning strip of the pages that show the instance's areas.
namespace ZELWbr3::modTopWarning {

/// Warns about a full area while the instance runs, with a link to the command
/// that helps; hides the strip otherwise.
void Show(ZELHTMLForm& oForm, ZELLib3::Database& oDatabase);

}  // namespace ZELWbr3::modTopWarning
