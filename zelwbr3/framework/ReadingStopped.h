#pragma once

#include <exception>

namespace ZELWbr3 {

/// Ends a task of a page that the user has stopped with Escape while the instance
/// was read. Like PageLeft, it is thrown and caught within DataPage, and not a
/// std::exception, so that no error handling catches it.
struct ReadingStopped {
  /// What to tell the user; null for nothing.
  std::exception_ptr Failure;
};

}  // namespace ZELWbr3
