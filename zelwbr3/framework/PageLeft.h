#pragma once

namespace ZELWbr3 {

/// Ends a task of a page that has been left: while the task pumped messages the
/// page was hidden, cleaned up, given another instance or, where the task works
/// on the document, loaded anew.
///
/// Thrown by the verbs of DataPage that may pump, and caught where the task
/// entered the page; it never reaches a host. Deliberately no std::exception:
/// nobody who handles failures takes it for one.
struct PageLeft {};

}  // namespace ZELWbr3
