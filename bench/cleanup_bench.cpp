// The clean-ups: the removal of stances that no object carries, and the end-of-open handler's
// removal of entries whose stance the table does not know and of the stances left unused, against
// one pass over every entry.
#include <benchmark/benchmark.h>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "bench/timed.h"
#include "data/stance_table.h"
#include "events/event_watcher.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStances = 1000;

// Ten entries per object, and one stance that nothing carries, so that the visit cannot stop
// early and every entry is looked at.
void BM_RemoveUnusedStances(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, 10);
  CKorvoDocData& table = *KorvoPlugIn().DocData(model.Doc().RuntimeSerialNumber());
  for (auto _ : state) {
    state.PauseTiming();
    ZK_UUID unused;
    ZK_CreateUuid(unused);
    table.Add(unused, L"Unused");
    state.ResumeTiming();
    Timed([&] { table.RemoveUnusedStances(); });
  }
  if (table.FindByName(L"Unused") || table.Count() != kStances) {
    state.SkipWithError("the clean-up removed the wrong stances");
  }
}
BENCHMARK(BM_RemoveUnusedStances)->Apply(ModelSizes);

void BM_ReadEveryEntryOfTen(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, 10);
  for (auto _ : state) Timed([&] { benchmark::DoNotOptimize(ReadEveryEntry(model.Doc())); });
}
BENCHMARK(BM_ReadEveryEntryOfTen)->Apply(ModelSizes);

// The event watcher's real end-of-open handler, as after an open that read the document's own
// table. Every entry's stance is known and used, so that each round does the whole work and
// changes nothing.
void BM_EndOfOpenCleanUp(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, 3);
  CKorvoEventWatcher& watcher = *KorvoPlugIn().EventWatcher();
  for (auto _ : state) {
    watcher.m_cleanup_requested = true;
    Timed([&] { watcher.OnEndOpenDocument(model.Doc(), L"model.tsm", false, false); });
  }
  if (ReadEveryEntry(model.Doc()) != 3 * state.range(0) ||
      KorvoPlugIn().DocData(model.Doc().RuntimeSerialNumber())->Count() != kStances) {
    state.SkipWithError("entries or stances were lost");
  }
}
BENCHMARK(BM_EndOfOpenCleanUp)->Apply(ModelSizes);

void BM_ReadEveryEntryOfThree(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, 3);
  for (auto _ : state) Timed([&] { benchmark::DoNotOptimize(ReadEveryEntry(model.Doc())); });
}
BENCHMARK(BM_ReadEveryEntryOfThree)->Apply(ModelSizes);

KORVO_RATIO_ROW("RemoveUnusedStances, 10 entries per object / one pass over every entry",
                "BM_RemoveUnusedStances", "BM_ReadEveryEntryOfTen", 1.50);
KORVO_RATIO_ROW("End-of-open clean-up, the real handler / one pass over every entry",
                "BM_EndOfOpenCleanUp", "BM_ReadEveryEntryOfThree", 2.00);

}  // namespace
