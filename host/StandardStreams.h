#pragma once

#include <fcntl.h>
#include <unistd.h>

namespace ZELWbr3::Host {

/// Occupies the descriptors of closed standard streams. Otherwise the next files
/// opened would get them, and with them whatever is printed. Printing to a
/// stream that was closed still fails.
inline void ReserveStandardStreams() {
  for (int lStream = STDIN_FILENO; lStream <= STDERR_FILENO; ++lStream) {
    // open returns the lowest free descriptor, which is this one.
    if (fcntl(lStream, F_GETFD) < 0) (void)!open("/dev/null", O_RDONLY);
  }
}

}  // namespace ZELWbr3::Host
