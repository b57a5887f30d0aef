#pragma once

namespace ZELWbr3 {

/// Runs oWork, and oEnd after it whether or not it threw; what it threw goes on
/// then. If oEnd throws as well, that goes on instead.
template <typename Work, typename End>
void Finally(const Work& oWork, const End& oEnd) {
  try {
    oWork();
  } catch (...) {
    oEnd();
    throw;
  }
  oEnd();
}

}  // namespace ZELWbr3
