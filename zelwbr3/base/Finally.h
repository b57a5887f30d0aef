#pragma once

namespace ZELWbr3 {

/// Runs oWork and then oEnd, even if oWork throws; its exception is rethrown. If
/// oEnd throws as well, that exception replaces it.
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
