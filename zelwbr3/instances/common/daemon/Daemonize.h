#pragma once

#include <functional>

namespace ZELWbr3::Instances {

/// Called by work in the background, once, when it is under way. Raises
/// std::runtime_error when the caller has ended.
using Started = std::function<void()>;

/// Goes on with oWork in a process of its own: in its own session, with
/// all files of the calling process closed. oWork answers its exit code.
///
/// In the calling process this returns 0 when the work is under way, and raises
/// std::runtime_error with the text of what oWork raised before that. In the
/// new one it returns oWork's exit code; an exception that oWork raises later
/// ends it with 1. To be called before anything is opened, while there is
/// one thread only, and with no standard stream closed.
int Daemonize(const std::function<int(const Started& oStarted)>& oWork);

}  // namespace ZELWbr3::Instances
