#pragma once

#include <string>

namespace ZELWbr3::Host {

/// Opens another window of zelview with an instance, or with the start page for none.
/// It is another program: one that waits for its instance keeps no other. False if it
/// cannot be started.
bool OpenWindow(const std::string& sInstance = {});

}  // namespace ZELWbr3::Host
