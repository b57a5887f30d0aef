#pragma once

#include <string_view>

namespace ZELWbr3::Web {

// The files of the shell, which are built into the library. In the page, @FILES@ is
// the folder of the others, @FIRST@ the address of the first frame, @INSTANCE@ the
// instance's number, @NAME@ its name, @INSTANCES@ the list of all if there are
// several, and @ZONE@ says what times are shown.
extern const std::string_view ShellPage;
extern const std::string_view ShellScript;
extern const std::string_view ShellStyle;
extern const std::string_view InstancesScript;

}  // namespace ZELWbr3::Web
