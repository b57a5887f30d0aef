#include "bench/Lists.h"

#include "bench/BenchWindow.h"
#include "bench/Figures.h"
#include "bench/Processes.h"
#include "bench/Rows.h"

#include <algorithm>

namespace ZELWbr3::Bench {
namespace {

/// Texts of rows: a number, and texts that are all different.
std::vector<std::string> MakeMixedTexts(int iRows) {
  std::vector<std::string> texts;
  texts.reserve(static_cast<std::size_t>(iRows) * Columns);
  for (long i = 0; i < iRows; ++i) {
    texts.push_back(std::to_string(i * 7919 % 1000003));
    for (long iColumn = 1; iColumn < Columns; ++iColumn) {
      texts.push_back("value " + std::to_string((i * Columns + iColumn) * 31 % 6000011));
    }
  }
  return texts;
}

/// Does something in a list and measures until its rows have changed and are
/// painted; also the longest time that the page's own loop was held meanwhile.
constexpr const char* Measured = R"(((table, act) => {
  const root = document.documentElement;
  root.removeAttribute('data-took');
  const start = performance.now();
  let last = start;
  let held = 0;
  let done = false;
  const tick = () => {
    held = Math.max(held, performance.now() - last);
    last = performance.now();
    if (!done) setTimeout(tick);
  };
  new MutationObserver((_, observer) => {
    observer.disconnect();
    requestAnimationFrame(() => setTimeout(() => {
      done = true;
      tick();
      root.setAttribute('data-took', (performance.now() - start) + ' ' + held);
    }));
  }).observe(document.getElementById(table).tBodies[0], { childList: true });
  act();
  tick();
}))";

/// A wheel is turned so often, once a frame.
constexpr int WheelFrames = 60;

/// Turns it, and keeps the median of the frames' times.
constexpr const char* TurnWheel = R"((() => {
  const root = document.documentElement;
  root.removeAttribute('data-took');
  const frames = [];
  let last = 0;
  const turn = (now) => {
    if (last > 0) frames.push(performance.now() - last);
    last = performance.now();
    if (frames.length === 60) return root.setAttribute('data-took', frames.sort((a, b) => a - b)[30]);
    scrollBy(0, 120);
    requestAnimationFrame(turn);
  };
  requestAnimationFrame(turn);
})())";

std::string WaitUntilTook(BenchWindow& oWindow, int iFrame) {
  return oWindow.WaitForResult(iFrame, "document.documentElement.getAttribute('data-took') ?? ''");
}

std::string Measuring(const std::string& sTable, const std::string& sScript) {
  return std::string(Measured) + "('" + sTable + "', () => {" + sScript + "})";
}

void AddAndConfirm(BenchWindow& oWindow, PageRows& oPage, const std::vector<std::string>& texts) {
  AddRows(*oPage.Document(), texts);
  oWindow.Real(1).Flush();
  oWindow.WaitFor([&] { return oWindow.Real(1).Settled(); });
}

/// What a frame takes while a list is scrolled.
struct WheelTimes {
  std::vector<double> Frames;
  std::vector<double> Works;

  void Measure(BenchWindow& oWindow) {
    oWindow.Script(1, "scrollTo(0, 3000)");
    oWindow.WaitUntilPainted(1);
    const double dBefore = BrowserMilliseconds();
    oWindow.Script(1, TurnWheel);
    Frames.push_back(std::stod(WaitUntilTook(oWindow, 1)));
    Works.push_back((BrowserMilliseconds() - dBefore) / WheelFrames);
  }
};

/// How soon rows are seen and how they scroll, with 5,000 elements beside it.
void MeasureFirstRows(BenchWindow& oWindow, PageRows& oList, Figures& oFigures) {
  const auto oReal = std::make_shared<PageRows>("Elements");
  oWindow.Control().Show(oReal, 1);
  const auto texts = MakeTexts(100000);
  const auto fewTexts = MakeTexts(5000);
  std::vector<double> firsts;
  std::vector<double> reals;
  WheelTimes oWheel;
  WheelTimes oRealWheel;
  for (int i = 0; i < 3; ++i) {
    oReal->Show();
    reals.push_back(Milliseconds([&] {
      AddAndConfirm(oWindow, *oReal, fewTexts);
      oWindow.WaitUntilPainted(1);
    }));
    oRealWheel.Measure(oWindow);
    oList.Show();
    oWindow.Script(1, Measuring("tabRows", ""));
    AddAndConfirm(oWindow, oList, texts);
    firsts.push_back(std::stod(WaitUntilTook(oWindow, 1)));
    oWheel.Measure(oWindow);
  }
  oFigures.Add("first_rows_ms", Median(firsts),
               "ms until the first of 100,000 rows are painted, while all are written");
  oFigures.Add("first_rows_ratio", Median(firsts) / Median(reals), "of that and 5,000 rows that are all elements");
  oFigures.Add("wheel_frame_ms", Median(oWheel.Frames), "ms a frame while the list is scrolled");
  oFigures.Add("wheel_frame_ratio", Median(oWheel.Frames) / Median(oRealWheel.Frames),
               "of that and 5,000 rows that are all elements");
  oFigures.Add("wheel_work_ms", Median(oWheel.Works), "ms a frame that processors work for the browser meanwhile");
  oFigures.Add("wheel_work_ratio", Median(oWheel.Works) / Median(oRealWheel.Works),
               "of that and 5,000 rows that are all elements");
}

}  // namespace

Took UntilRowsPainted(BenchWindow& oWindow, int iFrame, const std::string& sTable, const std::string& sScript) {
  oWindow.Script(iFrame, Measuring(sTable, sScript));
  const std::string sTook = WaitUntilTook(oWindow, iFrame);
  return {std::stod(sTook), std::stod(sTook.substr(sTook.find(' ')))};
}

void MeasureLists(BenchWindow& oOther, Figures& oFigures) {
  const auto oList = std::make_shared<PageRows>("List");
  oOther.Control().HTMLPath(ZELWBR3_SOURCE_DIR "/bench/pages");
  oOther.Control().Show(oList, 1);
  MeasureFirstRows(oOther, *oList, oFigures);

  // Without what the browser still has to tidy up after those elements.
  BenchWindow oWindow;
  const auto oPage = std::make_shared<PageRows>("List");
  oWindow.Control().HTMLPath(ZELWBR3_SOURCE_DIR "/bench/pages");
  oWindow.Control().Show(oPage, 1);
  double dHeld = 0;
  const auto Act = [&](const std::string& sScript) {
    const Took oTook = UntilRowsPainted(oWindow, 1, "tabRows", sScript);
    dHeld = std::max(dHeld, oTook.Held);
    return oTook.Time;
  };
  const auto Filter = [&](const std::string& sText) {
    return Act("const o = document.querySelector('.zelListFilter'); o.value = '" + sText +
               "'; o.dispatchEvent(new Event('input'));");
  };
  const auto Sort = [&](int iColumn) {
    return Act("document.querySelectorAll('.zelListSort')[" + std::to_string(iColumn) + "].click();");
  };
  const auto AddFigures = [&](const std::string& sRows, int iRuns) {
    std::vector<double> filters;
    std::vector<double> sorts;
    for (int i = 0; i < iRuns; ++i) {
      filters.push_back(Filter("value 10" + std::to_string(i) + "05"));
      Filter("");
      sorts.push_back(Sort(0));
      Sort(0);
      Sort(0);
    }
    oFigures.Add("filter_" + sRows + "_ms", Median(filters), "ms to filter a list, until painted");
    oFigures.Add("sort_" + sRows + "_ms", Median(sorts), "ms to sort it by a column of numbers, until painted");
  };
  const auto Fill = [&](int iRows) {
    oPage->Show();
    AddAndConfirm(oWindow, *oPage, MakeMixedTexts(iRows));
    oWindow.WaitUntilPainted(1);
  };
  Fill(100'000);
  AddFigures("100k", 5);
  Fill(1'000'000);
  UntilRowsPainted(oWindow, 1, "tabRows", "scrollTo(0, 1000);");
  std::vector<double> jumps;
  for (int i = 1; i <= 25; ++i) {
    const std::string sPart = std::to_string(i * 7919 % 1000) + " / 1000";
    jumps.push_back(Act("scrollTo(0, document.documentElement.scrollHeight * " + sPart + ");"));
  }
  oFigures.Add("jump_1m_ms", Median(jumps), "ms to jump anywhere in 1,000,000 rows, until painted");
  std::ranges::sort(jumps);
  oFigures.Add("jump_1m_p90_ms", jumps[22], "ms of the slowest tenth of that");
  AddFigures("1m", 3);
  std::vector<double> sorts;
  for (int iColumn = 1; iColumn <= 3; ++iColumn) sorts.push_back(Sort(iColumn));
  oFigures.Add("sort_text_1m_ms", Median(sorts), "ms to sort 1,000,000 rows by a column of texts, until painted");
  oFigures.Add("page_held_ms", dHeld, "ms at most that the page's own loop was held by all that");
}

}  // namespace ZELWbr3::Bench
