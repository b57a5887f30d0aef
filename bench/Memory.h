#pragma once

namespace ZELWbr3::Bench {

/// The memory in MB of this program and of the browser's processes for its pages:
/// proportional set sizes, so that what they share counts once.
double MegabytesUsed();

}  // namespace ZELWbr3::Bench
