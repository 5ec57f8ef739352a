// Telling where the model stands against its stances, against a visit that reads every entry
// once: the check of every stance reads each entry once in one visit, and the check of one
// stance reads each record once.
#include <benchmark/benchmark.h>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "bench/timed.h"
#include "drift/stance_drift.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStances = 1000;
constexpr int kEntries = 3;

void BM_CheckEveryStance(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  const CKorvoDocData& table = *KorvoPlugIn().DocData(model.Doc().RuntimeSerialNumber());
  if (!MeasureEveryStance(model.Doc(), table)[0].Matches()) {
    state.SkipWithError("the model should match every stance");
  }
  for (auto _ : state) {
    Timed([&] { benchmark::DoNotOptimize(MeasureEveryStance(model.Doc(), table)); });
  }
}
BENCHMARK(BM_CheckEveryStance)->Apply(ModelSizes);

void BM_CheckOneStance(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  if (MeasureStance(model.Doc(), model.All()).size() != static_cast<size_t>(state.range(0))) {
    state.SkipWithError("every object is a member of All");
  }
  for (auto _ : state) {
    Timed([&] { benchmark::DoNotOptimize(MeasureStance(model.Doc(), model.All())); });
  }
}
BENCHMARK(BM_CheckOneStance)->Apply(ModelSizes);

KORVO_RATIO_ROW("StanceCheck of every stance / a visit reading every entry", "BM_CheckEveryStance",
                "BM_ReadEveryEntry", 1.50);
KORVO_RATIO_ROW("StanceCheck of one stance / a visit reading each record", "BM_CheckOneStance",
                "BM_ReadEveryEntry", 1.30);

}  // namespace
