// The clean-ups: the removal of stances that no object carries, and the end-of-open removal of
// entries whose stance the table does not know, against one pass over every entry.
#include <benchmark/benchmark.h>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "data/placement_record.h"
#include "data/stance_table.h"
#include "operations/every_object_iterator.h"
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
    table.RemoveUnusedStances();
  }
  if (table.FindByName(L"Unused") || table.Count() != kStances) {
    state.SkipWithError("the clean-up removed the wrong stances");
  }
}
BENCHMARK(BM_RemoveUnusedStances)->Apply(ModelSizes);

void BM_ReadEveryEntryOfTen(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, 10);
  for (auto _ : state) benchmark::DoNotOptimize(ReadEveryEntry(model.Doc()));
}
BENCHMARK(BM_ReadEveryEntryOfTen)->Apply(ModelSizes);

// What the end of an open does to every record, against the table's ids gathered once. Every
// entry's stance is known, so that each round does the whole work and changes nothing.
void BM_EndOfOpenCleanUp(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, 3);
  const CKorvoDocData& table = *KorvoPlugIn().DocData(model.Doc().RuntimeSerialNumber());
  for (auto _ : state) {
    const CKorvoStanceIdSet known = table.Ids();
    CKorvoEveryObjectIterator it(model.Doc());
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      if (CKorvoUserData* record = CKorvoUserData::Of(object)) {
        record->RemoveEntriesWithoutStance(known);
      }
    }
  }
  if (ReadEveryEntry(model.Doc()) != 3 * state.range(0)) state.SkipWithError("entries were lost");
}
BENCHMARK(BM_EndOfOpenCleanUp)->Apply(ModelSizes);

void BM_ReadEveryEntryOfThree(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, 3);
  for (auto _ : state) benchmark::DoNotOptimize(ReadEveryEntry(model.Doc()));
}
BENCHMARK(BM_ReadEveryEntryOfThree)->Apply(ModelSizes);

KORVO_RATIO_ROW("RemoveUnusedStances, 10 entries per object / one pass over every entry",
                "BM_RemoveUnusedStances", "BM_ReadEveryEntryOfTen", 1.50);
KORVO_RATIO_ROW("End-of-open clean-up / one pass over every entry", "BM_EndOfOpenCleanUp",
                "BM_ReadEveryEntryOfThree", 2.00);

}  // namespace
