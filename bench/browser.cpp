// Figures on the real browser, side by side with script inside the page. Each is
// the median of several runs in one process. The ratios are what counts, because
// both sides run on the same machine at the same time.

#include "bench/BenchWindow.h"
#include "bench/Figures.h"
#include "bench/Lists.h"
#include "bench/MemoryDatabase.h"
#include "bench/Processes.h"
#include "bench/Rows.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/pages/charts/PageCharts.h"
#include "zelwbr3/shell/Pages.h"

#include <CLI/CLI.hpp>

#include <malloc.h>
#include <algorithm>
#include <chrono>
#include <cstdio>

#include <wx/app.h>
#include <wx/evtloop.h>
#include <wx/utils.h>

namespace {

using namespace ZELWbr3;
using namespace ZELWbr3::Bench;

double HeapBytes() {
  const auto oInfo = mallinfo2();
  return static_cast<double>(oInfo.uordblks + oInfo.hblkhd);
}

void MeasureShow(BenchWindow& oWindow, Figures& oFigures) {
  const auto oDatabase = Recorded::OpenRecording(ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json");
  const std::string sURL = "file://" ZELWBR3_SOURCE_DIR "/html/Main.htm";
  Browser& oBrowser = oWindow.Control();
  oBrowser.HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  oBrowser.PageMain()->Show(oDatabase);
  // In a window of its own, which leaves the control's document alone.
  BenchWindow oBare;
  oBare.Control().HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  oBare.Control().PageMain()->Show(oDatabase);

  std::vector<double> shows;
  std::vector<double> bares;
  std::vector<double> refreshes;
  int iPages = 0;
  const ScopedConnection oCompleted = oBrowser.PageComplete.Connect([&](const auto&) { ++iPages; });
  std::vector<double> paintedShows;
  std::vector<double> paintedBares;
  for (int i = 0; i < 41; ++i) {
    bares.push_back(Milliseconds([&] { oBare.LoadBare(0, sURL); }));
    oBare.WaitUntilPainted(0);
    shows.push_back(Milliseconds([&] { oBrowser.PageMain()->Show(oDatabase); }));
    oWindow.WaitUntilPainted(0);
    refreshes.push_back(Milliseconds([&] {
      iPages = 0;
      oBrowser.PageMain()->Command(DataPage::CommandRefresh);
      oWindow.WaitFor([&] { return iPages == 1 && oWindow.Real(0).Settled(); });
    }));
    oWindow.WaitUntilPainted(0);
    paintedBares.push_back(Milliseconds([&] {
      oBare.LoadBare(0, sURL);
      oBare.WaitUntilPainted(0);
    }));
    paintedShows.push_back(Milliseconds([&] {
      oBrowser.PageMain()->Show(oDatabase);
      oWindow.WaitUntilPainted(0);
    }));
  }
  oFigures.Add("show_ms", Median(shows), "ms to show Main again, filled");
  oFigures.Add("bare_ms", Median(bares), "ms of a bare navigation to the same file");
  oFigures.Add("show_ratio", Median(shows) / Median(bares), "of the two");
  oFigures.Add("refresh_ms", Median(refreshes), "ms to refresh Main until the browser has confirmed it");
  oFigures.Add("refresh_ratio", Median(refreshes) / Median(bares), "to the bare navigation");
  oFigures.Add("show_painted_ms", Median(paintedShows), "ms to show Main again, until painted");
  oFigures.Add("bare_painted_ms", Median(paintedBares), "ms of a bare navigation, until painted");
  oFigures.Add("show_painted_ratio", Median(paintedShows) / Median(paintedBares), "of the two");
}

/// Draws a chart of 20,000 points as the page Charts does, or with the library alone,
/// and leaves the milliseconds until it was painted in an attribute of the root.
constexpr const char* DrawChart = R"(((mine) => {
  const root = document.documentElement;
  root.removeAttribute('data-took');
  const script = document.createElement('script');
  script.textContent = `{
    const block = document.getElementById('lstSeries');
    const count = 20000;
    if (!block.dataset.times) {
      block.dataset.chosen = 'SERIESX';
      block.dataset.times = '1700000000000' + ' 5000'.repeat(count - 1);
      const series = document.createElement('a');
      Object.assign(series.dataset, { label: 'Figure', unit: '', counter: 'false', place: 'x' });
      series.id = 'SERIESX';
      series.dataset.values = Array.from({ length: count }, (_, i) => Math.round(1e6 + 9e5 * Math.sin(i / 300) + (i * 7919) % 9973)).join(' ');
      block.append(series);
    }
    const place = document.getElementById('divChart');
    const times = Array.from({ length: count }, (_, i) => 1700000000 + 5 * i);
    const values = document.getElementById('SERIESX').dataset.values.split(' ').map(Number);
    globalThis.alone?.destroy();
    globalThis.alone = undefined;
    const start = performance.now();
    if (${mine}) document.dispatchEvent(new Event('zelwbr3reset'));
    else globalThis.alone = new uPlot({ width: place.clientWidth, height: 560, series: [{}, { stroke: 'blue' }] }, [times, values], place);
    requestAnimationFrame(() => setTimeout(() => document.documentElement.setAttribute('data-took', performance.now() - start)));
  }`;
  document.body.append(script);
  script.remove();
}))";

void MeasureChart(BenchWindow& oWindow, Figures& oFigures) {
  Browser& oBrowser = oWindow.Control();
  oBrowser.HTMLPath(ZELWBR3_PAGES);
  const auto oPage = std::make_shared<PageCharts>();
  oPage->Database(std::make_shared<ZELLib3::Database>());
  oBrowser.Show(oPage, 2);
  const auto Draw = [&](bool bMine) {
    oWindow.Script(2, std::string(DrawChart) + (bMine ? "(true)" : "(false)"));
    std::string sTook;
    oWindow.WaitFor([&] {
      sTook = oWindow.Script(2, "document.documentElement.getAttribute('data-took') ?? ''");
      return !sTook.empty();
    });
    return std::stod(sTook);
  };
  std::vector<double> ours;
  std::vector<double> alone;
  for (int i = 0; i < 15; ++i) {
    alone.push_back(Draw(false));
    ours.push_back(Draw(true));
  }
  oFigures.Add("chart_20k_ms", Median(ours), "ms to open a chart of 20,000 points, until painted");
  oFigures.Add("chart_20k_library_ms", Median(alone), "ms of the library alone");
  oFigures.Add("chart_20k_ratio", Median(ours) / Median(alone), "of the two");
}

/// Our time for the rows: from the first clone to the last acknowledgement.
double FillTime(BenchWindow& oWindow, const std::shared_ptr<PageRows>& oPage, const std::vector<std::string>& texts) {
  oPage->Show();
  auto& oReal = oWindow.Real(1);
  return Milliseconds([&] {
    AddRows(*oPage->Document(), texts);
    oReal.Flush();
    oWindow.WaitFor([&] { return oReal.Settled(); });
  });
}

double ScriptTime(BenchWindow& oWindow, const std::shared_ptr<PageRows>& oPage, const std::vector<std::string>& texts) {
  oPage->Show();
  oWindow.Script(1, KeepTexts(texts));
  return std::stod(oWindow.Script(1, BuildRows));
}

void MeasureRows(BenchWindow& oWindow, Figures& oFigures) {
  // Without what the browser has to tidy up after the script's elements.
  BenchWindow oOurs;
  const auto oPage = std::make_shared<PageRows>();
  const auto oList = std::make_shared<PageRows>("List");
  for (auto& [oIn, oShown] : {std::pair(&oWindow, oPage), std::pair(&oOurs, oList)}) {
    oIn->Control().HTMLPath(ZELWBR3_SOURCE_DIR "/bench/pages");
    oIn->Control().Show(oShown, 1);
  }

  struct Size {
    const char* Name;
    int Rows;
    int Runs;
  };
  std::vector<double> perRow;
  for (const Size& oSize : {Size{"10k", 10000, 15}, Size{"100k", 100000, 5}}) {
    const auto texts = MakeTexts(oSize.Rows);
    std::vector<double> ours;
    std::vector<double> scripts;
    for (int i = 0; i < oSize.Runs; ++i) {
      scripts.push_back(ScriptTime(oWindow, oPage, texts));
      ours.push_back(FillTime(oOurs, oList, texts));
    }
    const std::string sName = std::string("rows_") + oSize.Name;
    perRow.push_back(1000 * Median(ours) / oSize.Rows);
    oFigures.Add(sName + "_us", perRow.back(), "us a row of 6 cells, by C++ until confirmed");
    oFigures.Add(sName + "_script_us", 1000 * Median(scripts) / oSize.Rows, "us a row by script in the page");
    oFigures.Add(sName + "_ratio", Median(ours) / Median(scripts), "of the two");
  }
  oFigures.Add("rows_growth", perRow[1] / perRow[0], "our time a row at 100,000 rows / at 10,000");

  oList->Show();
  const auto texts = MakeTexts(100000);
  double dTexts = 0;
  for (const std::string& sText : texts) dTexts += static_cast<double>(sText.size());
  const double dBefore = HeapBytes() + dTexts;
  AddRows(*oList->Document(), texts);
  oOurs.Real(1).Flush();
  oOurs.WaitFor([&] { return oOurs.Real(1).Settled(); });
  oFigures.Add("replica_bytes_per_row", (HeapBytes() - dBefore) / 100000, "bytes of C++ heap a row beside its texts");
}

/// A script that builds rows like those of a tab of the parameters page.
constexpr const char* BuildParameters = R"((() => {
  const count = 5000;
  const parameters = [];
  for (let i = 1; i <= count; ++i) parameters.push(['PARAMETER_' + i, 'value ' + i, 'What parameter ' + i + ' is good for']);
  const start = performance.now();
  const section = document.getElementById('tabExtended').tBodies[0];
  const template = section.querySelector('#rowTemplate') ?? section.rows[section.rows.length - 1];
  for (const [name, value, description] of parameters) {
    const row = template.cloneNode(true);
    section.appendChild(row);
    row.style.display = '';
    row.cells[0].id = 'PHIST' + name;
    row.cells[1].className = 'zelTblCellParExt';
    row.cells[1].textContent = name;
    row.cells[1].id = 'PARAM' + name;
    row.cells[2].textContent = value;
    row.cells[3].textContent = description;
  }
  return performance.now() - start;
})())";

/// A script that prepares the values of a view's rows.
constexpr const char* KeepView = R"(((count) => {
  globalThis.view = [];
  for (let i = 0; i < count; ++i) view.push([0, 1, 2, 3, 4, 5].map((column) => 'value ' + (100000 + i * 6 + column)));
}))";

/// A script that builds rows from them, below the headings made by the page.
constexpr const char* BuildView = R"((() => {
  const section = document.getElementById('tabSysInfo').tBodies[0];
  const template = section.rows[1];
  for (const texts of view) {
    const row = template.cloneNode(true);
    section.appendChild(row);
    row.style.display = '';
    texts.forEach((text, column) => { row.cells[column].textContent = text; });
  }
})())";

void MeasureParameters(BenchWindow& oWindow, Figures& oFigures) {
  Browser& oBrowser = oWindow.Control();
  oBrowser.HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  const auto oDatabase = std::make_shared<MemoryDatabase>();
  constexpr int FillExtended = 3;
  std::vector<double> ours;
  std::vector<double> scripts;
  for (int i = 0; i < 9; ++i) {
    const auto oPage = std::make_shared<ZELWbr3::PageParameters>();
    oPage->Database(oDatabase);
    oBrowser.Show(oPage, 1);
    scripts.push_back(std::stod(oWindow.Script(1, BuildParameters)));
    oBrowser.Show(oPage, 1);
    ours.push_back(Milliseconds([&] {
      oPage->Command(FillExtended);
      oWindow.Real(1).Flush();
      oWindow.WaitFor([&] { return oWindow.Real(1).Settled(); });
    }));
  }
  oFigures.Add("parameters_ms", Median(ours), "ms to fill a tab with 5,000 parameters");
  oFigures.Add("parameters_ratio", Median(ours) / Median(scripts), "of that and script in the page");
}

/// A message loop that measures how long a message may have to wait: the longest
/// time between two moments when nothing was left to handle.
class TimedLoop : public wxEventLoop {
 public:
  void Begin() {
    m_dLongest = 0;
    m_oLast = Clock::now();
  }
  double Longest() const { return m_dLongest; }

  /// Waiting for a message is no delay of one, so the wait is taken apart from the
  /// handling.
  bool Dispatch() override {
    while (!Pending()) {
      // The toolkit's loop, once asked, no longer wakes up for what the program has queued.
      if (wxTheApp->HasPendingEvents()) {
        wxTheApp->ProcessPendingEvents();
        return true;
      }
      wxMilliSleep(1);
    }
    return wxEventLoop::Dispatch();
  }

  bool Pending() const override {
    const bool bPending = wxEventLoop::Pending();
    if (!bPending) {
      const auto oNow = Clock::now();
      m_dLongest = std::max(m_dLongest, std::chrono::duration<double, std::milli>(oNow - m_oLast).count());
      m_oLast = oNow;
    }
    return bPending;
  }

 private:
  using Clock = std::chrono::steady_clock;
  // Mutable because the toolkit's Pending is const.
  mutable Clock::time_point m_oLast;
  mutable double m_dLongest = 0;
};

/// Reads all rows of a view, as many as the page has.
class ReadAll {
 public:
  explicit ReadAll(BenchWindow& oWindow) : m_oWindow(oWindow), m_oActivator(&m_oLoop) {}

  /// Milliseconds until the page has confirmed the rows.
  double Ours(int iRows) {
    const auto oView = std::make_shared<MemoryView>(iRows);
    Show(oView);
    m_oLoop.Begin();
    const double dTime = Milliseconds([&] {
      constexpr int ReadAllCommand = 3;
      m_oWindow.Control().PageSysInfo()->Command(ReadAllCommand);
      Freezes.push_back(m_oLoop.Longest());
      m_oWindow.Real(Frame).Flush();
      m_oWindow.WaitFor([&] { return m_oWindow.Real(Frame).Settled(); });
    });
    Fills.push_back(Median(oView->Fills));
    return dTime;
  }

  /// Milliseconds of a script in the page.
  double Script(int iRows) {
    Show(std::make_shared<MemoryView>(iRows));
    m_oWindow.Script(Frame, std::string(KeepView) + "(" + std::to_string(iRows) + ")");
    return Milliseconds([&] { m_oWindow.Script(Frame, BuildView); });
  }

  static constexpr int Frame = 2;
  std::vector<double> Freezes;
  std::vector<double> Fills;

 private:
  void Show(const std::shared_ptr<MemoryView>& oView) {
    m_oWindow.Control().PageSysInfo()->Show(std::make_shared<MemoryDatabase>(), oView);
  }

  BenchWindow& m_oWindow;
  TimedLoop m_oLoop;
  wxEventLoopActivator m_oActivator;
};

void MeasureReadAll(BenchWindow& oWindow, Figures& oFigures) {
  constexpr int Rows = 100'000;
  ReadAll oReadAll(oWindow);
  std::vector<double> ours;
  std::vector<double> scripts;
  for (int i = 0; i < 5; ++i) {
    scripts.push_back(oReadAll.Script(Rows));
    ours.push_back(oReadAll.Ours(Rows));
  }
  oFigures.Add("readall_100k_ms", Median(ours), "ms to read all of 100,000 rows into a view, until confirmed");
  oFigures.Add("readall_100k_ratio", Median(ours) / Median(scripts), "of that and script in the page");
  const double dFreeze = Median(oReadAll.Freezes);
  const double dFill = Median(oReadAll.Fills);
  oFigures.Add("longest_freeze_ms", dFreeze, "ms at most between two turns of the message loop while it reads");
  oFigures.Add("block_fill_ms", dFill, "ms to fill in one block of 5,000 rows");
  oFigures.Add("longest_freeze_ratio", dFreeze / dFill, "of that and the median of one block's fill");
}

/// A million rows, in a window of their own: the memory, and whether a row takes longer the more there are.
void MeasureMillion(Figures& oFigures) {
  constexpr int Rows = 1'000'000;
  BenchWindow oWindow;
  oWindow.Control().HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  ReadAll oReadAll(oWindow);
  std::vector<double> ours = {oReadAll.Ours(Rows)};
  oWindow.WaitUntilPainted(ReadAll::Frame);
  oFigures.Add("rss_1m_mb", MegabytesUsed(), "MB of the program and the browser with 1,000,000 rows read");
  const std::string sHeading = "document.querySelector('.zelListSort').click();";
  UntilRowsPainted(oWindow, ReadAll::Frame, "tabSysInfo", sHeading + sHeading);
  oFigures.Add("rss_1m_sorted_mb", MegabytesUsed(), "MB of the two when they are sorted by a column of texts");
  std::vector<double> few;
  for (int i = 0; i < 3; ++i) few.push_back(oReadAll.Ours(Rows / 10));
  for (int i = 0; i < 2; ++i) ours.push_back(oReadAll.Ours(Rows));
  oFigures.Add("readall_1m_ms", Median(ours), "ms to read all of 1,000,000 rows into a view, until confirmed");
  oFigures.Add("readall_growth", Median(ours) / (10 * Median(few)), "our time a row at 1,000,000 rows / at 100,000");
  oFigures.Add("readall_1m_ratio", Median(ours) / oReadAll.Script(Rows), "of that and script in the page");
}

class BenchApp : public wxApp {
 public:
  std::string JSONFile;
  std::vector<std::string> Only;
  int Result = 0;

  bool Wanted(const std::string& sPart) const { return Only.empty() || std::ranges::find(Only, sPart) != Only.end(); }

  bool OnInit() override {
    SetExitOnFrameDelete(false);
    return true;
  }

  int OnRun() override {
    wxEventLoop oLoop;
    const wxEventLoopActivator oActivator(&oLoop);
    try {
      Figures oFigures;
      if (Wanted("million")) MeasureMillion(oFigures);
      BenchWindow oWindow;
      for (const auto& [sName, oMeasure] : {std::pair("show", &MeasureShow),
                                            {"chart", &MeasureChart},
                                            {"rows", &MeasureRows},
                                            {"lists", &MeasureLists},
                                            {"parameters", &MeasureParameters},
                                            {"readall", &MeasureReadAll}}) {
        if (Wanted(sName)) oMeasure(oWindow, oFigures);
      }
      if (!JSONFile.empty()) oFigures.AddTo(JSONFile);
    } catch (const std::exception& oError) {
      std::fprintf(stderr, "bench: %s\n", oError.what());
      return 1;
    }
    return 0;
  }
};

}  // namespace

wxIMPLEMENT_APP_NO_MAIN(BenchApp);

int main(int argc, char** argv) {
  std::string sFile;
  CLI::App oArguments("Measures the control on the real browser.", "bench-browser");
  oArguments.add_option("--json", sFile, "File for the figures, one JSON object");
  std::vector<std::string> only;
  oArguments.add_option("--only", only, "Measures only these: million, show, chart, rows, lists, parameters, readall");
  CLI11_PARSE(oArguments, argc, argv);

  auto* oApp = new BenchApp;
  oApp->JSONFile = sFile;
  oApp->Only = only;
  wxApp::SetInstance(oApp);
  int iNone = 1;
  return wxEntry(iNone, argv);
}
