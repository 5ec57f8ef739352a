// Restoring a stance that every object carries, against the host's own work on the same objects.
#include <benchmark/benchmark.h>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "bench/timed.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "operations/dynamic_access.h"

namespace {

constexpr int kStances = 1000;
constexpr int kEntries = 3;

// Runs `restore` after every object was moved; checks once, untimed, that it put them back. The
// objects carry `entries` stances each, or no record with 0.
template <class Restore>
void RestoreMoved(benchmark::State& state, Restore&& restore, int entries = kEntries) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, entries);
  model.MoveAll();
  restore(model);
  if (!model.AtStart()) state.SkipWithError("the restore left the objects where they were");
  for (auto _ : state) {
    state.PauseTiming();
    model.MoveAll();
    CTarsaStandIn::ClearUndo(model.Doc());
    state.ResumeTiming();
    Timed([&] { restore(model); });
  }
}

void BM_RestoreMovedByHostAccess(benchmark::State& state) {
  CKorvoDynamicAccess access;
  RestoreMoved(state, [&](BenchModel& model) { access.RestoreStance(model.Doc(), model.All()); });
}
BENCHMARK(BM_RestoreMovedByHostAccess)->Apply(ModelSizes);

void BM_RestoreMovedByCommand(benchmark::State& state) {
  RestoreMoved(state, [](BenchModel&) {
    CTarsaStandIn::CommandLine().RunScript(L"-_Stance _Restore \"All\" _Enter", 0);
  });
}
BENCHMARK(BM_RestoreMovedByCommand)->Apply(ModelSizes);

// The host moving every object back, after the same untimed move as the restores: the host's
// own cost of what a restore of moved objects must do, from the same allocator state.
void BM_TransformEveryObject(benchmark::State& state) {
  RestoreMoved(state, [](BenchModel& model) {
    TransformEveryObject(model.Doc(), ZK_Xform::Translation(-1, 0, 0));
  });
}
BENCHMARK(BM_TransformEveryObject)->Apply(ModelSizes);

// The same on objects that carry no record, the plug-in unloaded: the host's work alone, without
// the records it transforms and copies along with each object or the event watcher's part.
void BM_TransformBareObjects(benchmark::State& state) {
  const HostAlone host_alone;
  RestoreMoved(
      state,
      [](BenchModel& model) { TransformEveryObject(model.Doc(), ZK_Xform::Translation(-1, 0, 0)); },
      0);
}
BENCHMARK(BM_TransformBareObjects)->Apply(ModelSizes);

void BM_RestoreUnmoved(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  CKorvoDynamicAccess access;
  for (auto _ : state) Timed([&] { access.RestoreStance(model.Doc(), model.All()); });
  if (!model.AtStart()) state.SkipWithError("an unmoved object moved");
}
BENCHMARK(BM_RestoreUnmoved)->Apply(ModelSizes);

void BM_ReadEveryEntry(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  for (auto _ : state) Timed([&] { benchmark::DoNotOptimize(ReadEveryEntry(model.Doc())); });
}
BENCHMARK(BM_ReadEveryEntry)->Apply(ModelSizes);

KORVO_RATIO_ROW(
    "Restore, every object moved, host access / the host alone moving them without records",
    "BM_RestoreMovedByHostAccess", "BM_TransformBareObjects", 1.50);
KORVO_RATIO_ROW(
    "Restore, every object moved, Stance command / the host alone moving them without records",
    "BM_RestoreMovedByCommand", "BM_TransformBareObjects", 1.50);
KORVO_RATIO_ROW("Restore, every object moved, host access / the host moving them, records and all",
                "BM_RestoreMovedByHostAccess", "BM_TransformEveryObject", 1.10);
KORVO_RATIO_ROW(
    "Restore, every object moved, Stance command / the host moving them, records and all",
    "BM_RestoreMovedByCommand", "BM_TransformEveryObject", 1.10);
KORVO_RATIO_ROW("Restore, nothing moved / a visit reading each record", "BM_RestoreUnmoved",
                "BM_ReadEveryEntry", 1.30);

}  // namespace
