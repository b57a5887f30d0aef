// Figures of the core alone: the cost of a row, a lookup and a page without a
// browser.

#include "bench/Rows.h"
#include "zelwbr3/headless/HTMLParser.h"
#include "zelwbr3/headless/HeadlessPlatform.h"
#include "zelwbr3/instances/recorded/OpenRecording.h"
#include "zelwbr3/shell/Browser.h"
#include "zelwbr3/shell/Pages.h"

#include <benchmark/benchmark.h>

namespace {

using namespace ZELWbr3;

std::shared_ptr<Document> EmptyTable() { return Headless::LoadPageFile(ZELWBR3_SOURCE_DIR "/bench/pages/Rows.htm"); }

void FillRows(benchmark::State& oState) {
  const auto texts = Bench::MakeTexts(static_cast<int>(oState.range(0)));
  for (auto _ : oState) {
    oState.PauseTiming();
    const auto oDocument = EmptyTable();
    oState.ResumeTiming();
    Bench::AddRows(*oDocument, texts);
  }
  oState.SetItemsProcessed(oState.iterations() * oState.range(0));
}
BENCHMARK(FillRows)->Arg(1000)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

/// In a document whose rows all have the template's id.
void LookUpByID(benchmark::State& oState) {
  const auto oDocument = EmptyTable();
  Bench::AddRows(*oDocument, Bench::MakeTexts(static_cast<int>(oState.range(0))));
  for (auto _ : oState) {
    benchmark::DoNotOptimize(oDocument->all().item("tabRows"));
    benchmark::DoNotOptimize(oDocument->all().item("rowTemplate"));
  }
}
BENCHMARK(LookUpByID)->Arg(0)->Arg(100000);

void ShowMain(benchmark::State& oState) {
  Headless::HeadlessPlatform oPlatform;
  Browser oBrowser(oPlatform);
  oBrowser.HTMLPath(ZELWBR3_SOURCE_DIR "/html");
  const auto oDatabase = Recorded::OpenRecording(ZELWBR3_SOURCE_DIR "/tests/recordings/demo.json");
  for (auto _ : oState) oBrowser.PageMain()->Show(oDatabase);
}
BENCHMARK(ShowMain)->Unit(benchmark::kMicrosecond);

}  // namespace

BENCHMARK_MAIN();
