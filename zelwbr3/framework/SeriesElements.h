#pragma once

#include "zelwbr3/dom/Document.h"
#include "zelwbr3/framework/Samples.h"

#include <cstddef>
#include <functional>

namespace ZELWbr3::SeriesElements {

/// Writes the last readings of a group into the page, where its file has the hidden
/// block "lstSeries" with the template "rowSeries": the times into data-times, and
/// for each figure a copy with data-label, data-unit, data-counter, data-place and
/// data-values, by which the page's script draws curves. Times are milliseconds,
/// the first since 1970, the others since the one before; "-" is a value that is
/// not known. Of one reading there is nothing to draw.
void Fill(Document& oDocument, const Samples::Group& oGroup, std::size_t iMost,
          const std::function<bool(const Samples::Figure&)>& oIsWanted = {});

}  // namespace ZELWbr3::SeriesElements
