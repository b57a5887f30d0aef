#pragma once

// The version of the library that a program is compiled with. The build reads it
// from here, and so do the packages. docs/versioning.md says what a change of each
// number means.
#define ZELWBR3_VERSION_MAJOR 0
#define ZELWBR3_VERSION_MINOR 2
#define ZELWBR3_VERSION_PATCH 0
#define ZELWBR3_VERSION "0.2.0"
