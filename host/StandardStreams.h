#pragma once

#include <fcntl.h>
#include <unistd.h>

namespace ZELWbr3::Host {

/// Takes the numbers of standard streams that are closed: the next files opened
/// would get them, and with them what is printed. Printing still fails.
inline void ReserveStandardStreams() {
  for (int lStream = STDIN_FILENO; lStream <= STDERR_FILENO; ++lStream) {
    // The lowest free number is this one.
    if (fcntl(lStream, F_GETFD) < 0) (void)!open("/dev/null", O_RDONLY);
  }
}

}  // namespace ZELWbr3::Host
