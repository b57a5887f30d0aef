#pragma once

namespace ZELWbr3 {

/// Ends a task of a page that was left: while the task pumped messages, the page
/// was hidden, cleaned up, given another instance or, if the task works on the
/// document, reloaded.
///
/// Thrown by the verbs of DataPage that may pump messages, and caught where the
/// task entered the page; it never reaches a host. Deliberately not a
/// std::exception, so that no error handling catches it.
struct PageLeft {};

}  // namespace ZELWbr3
