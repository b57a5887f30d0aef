#pragma once

namespace ZELWbr3::Bench {

/// The memory in MB of this program and of the browser's processes for its pages:
/// proportional set sizes, so that what they share counts once.
double MegabytesUsed();

/// The milliseconds that processors have worked for the browser's processes for our
/// pages so far, all threads of those that still run.
double BrowserMilliseconds();

}  // namespace ZELWbr3::Bench
