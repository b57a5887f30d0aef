#pragma once

/// Marks what a shared library shows; everything else in it is hidden. A static
/// library is not affected.
#if defined(__GNUC__)
#define ZELWBR3_EXPORT __attribute__((visibility("default")))
#else
#define ZELWBR3_EXPORT
#endif
