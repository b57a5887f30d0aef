#pragma once

#include <string>

namespace ZELWbr3::Bench {

class BenchWindow;
class Figures;

struct Took {
  /// Milliseconds until painted.
  double Time;
  /// The longest time in milliseconds that the page's own loop was held meanwhile.
  double Held;
};

/// Runs a script in the page of a frame that changes the rows of a table.
Took UntilRowsPainted(BenchWindow& oWindow, int iFrame, const std::string& sTable, const std::string& sScript);

/// Figures of a list on the screen.
void MeasureLists(BenchWindow& oWindow, Figures& oFigures);

}  // namespace ZELWbr3::Bench
