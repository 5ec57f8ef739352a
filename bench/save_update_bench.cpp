// Saving and updating a stance of every object, through the host interface and through the
// Stance command's Save flow with the objects pre-selected, against the host rewriting them.
#include <benchmark/benchmark.h>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "bench/timed.h"
#include "data/placement_record.h"
#include "data/stance_table.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "operations/dynamic_access.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStances = 1000;
constexpr int kEntries = 3;

CKorvoDocData& Table(const BenchModel& model) {
  return *KorvoPlugIn().DocData(model.Doc().RuntimeSerialNumber());
}

// Takes a saved stance out again, entries included, so that every round saves the same.
void Forget(BenchModel& model, const wchar_t* name) {
  const CKorvoDocData::USER_DATA* saved = Table(model).FindByName(name);
  if (saved == nullptr) return;
  const ZK_UUID id = saved->m_id;
  Table(model).Remove(id);
  const ZK_SimpleArray<const CTarsaObject*> objects = model.Objects();
  for (int i = 0; i < objects.Count(); ++i) {
    if (CKorvoUserData* record = CKorvoUserData::Of(objects[i])) record->Remove(id);
  }
  CTarsaStandIn::ClearUndo(model.Doc());
}

// Checks, untimed, that the last save gave every object an entry.
void CheckSaved(benchmark::State& state, BenchModel& model, const wchar_t* name) {
  const CKorvoDocData::USER_DATA* saved = Table(model).FindByName(name);
  const ZK_SimpleArray<const CTarsaObject*> objects = model.Objects();
  for (int i = 0; i < objects.Count(); ++i) {
    const CKorvoUserData* record = CKorvoUserData::Of(objects[i]);
    if (saved == nullptr || record == nullptr || !record->HasEntry(saved->m_id)) {
      state.SkipWithError("not every object was saved");
      return;
    }
  }
}

void BM_SaveByHostAccess(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  CKorvoDynamicAccess access;
  for (auto _ : state) {
    state.PauseTiming();
    Forget(model, L"Saved");
    const ZK_SimpleArray<const CTarsaObject*> objects = model.Objects();
    state.ResumeTiming();
    Timed([&] { access.SaveStance(model.Doc(), L"Saved", objects); });
  }
  CheckSaved(state, model, L"Saved");
}
BENCHMARK(BM_SaveByHostAccess)->Apply(ModelSizes);

void BM_UpdateByHostAccess(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  CKorvoDynamicAccess access;
  for (auto _ : state) {
    Timed([&] { access.UpdateStance(model.Doc(), model.All()); });
    state.PauseTiming();
    CTarsaStandIn::ClearUndo(model.Doc());
    state.ResumeTiming();
  }
}
BENCHMARK(BM_UpdateByHostAccess)->Apply(ModelSizes);

void BM_SaveFlowPreSelected(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  for (auto _ : state) {
    state.PauseTiming();
    Forget(model, L"Saved");
    const ZK_SimpleArray<const CTarsaObject*> objects = model.Objects();
    for (int i = 0; i < objects.Count(); ++i) objects[i]->Select(true);
    state.ResumeTiming();
    Timed([&] { CTarsaStandIn::CommandLine().RunScript(L"-_Stance _Save \"Saved\" _Enter", 0); });
  }
  CheckSaved(state, model, L"Saved");
}
BENCHMARK(BM_SaveFlowPreSelected)->Apply(ModelSizes);

// The host rewriting every object once, as a save or an update must: objects that carry
// `entries` stances each, or no record with 0.
void DuplicateAndReplaceEveryObject(benchmark::State& state, int entries) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, entries);
  for (auto _ : state) {
    state.PauseTiming();
    CTarsaStandIn::ClearUndo(model.Doc());
    const ZK_SimpleArray<const CTarsaObject*> objects = model.Objects();
    state.ResumeTiming();
    Timed([&] { DuplicateAndReplace(model.Doc(), objects); });
  }
}

void BM_DuplicateAndReplace(benchmark::State& state) {
  DuplicateAndReplaceEveryObject(state, kEntries);
}
BENCHMARK(BM_DuplicateAndReplace)->Apply(ModelSizes);

// The plug-in unloaded: the host's work alone, without its event watcher's part.
void BM_DuplicateAndReplaceBare(benchmark::State& state) {
  const HostAlone host_alone;
  DuplicateAndReplaceEveryObject(state, 0);
}
BENCHMARK(BM_DuplicateAndReplaceBare)->Apply(ModelSizes);

KORVO_RATIO_ROW("Save of N objects, host access / the host alone rewriting them without records",
                "BM_SaveByHostAccess", "BM_DuplicateAndReplaceBare", 1.50);
KORVO_RATIO_ROW("Update of N objects, host access / the host alone rewriting them without records",
                "BM_UpdateByHostAccess", "BM_DuplicateAndReplaceBare", 1.50);
KORVO_RATIO_ROW(
    "Stance command's Save, N pre-selected / the host alone rewriting them without records",
    "BM_SaveFlowPreSelected", "BM_DuplicateAndReplaceBare", 1.50);
KORVO_RATIO_ROW("Save of N objects, host access / the host rewriting them, records and all",
                "BM_SaveByHostAccess", "BM_DuplicateAndReplace", 1.10);
KORVO_RATIO_ROW("Update of N objects, host access / the host rewriting them, records and all",
                "BM_UpdateByHostAccess", "BM_DuplicateAndReplace", 1.10);
KORVO_RATIO_ROW("Stance command's Save, N pre-selected / the host rewriting them, records and all",
                "BM_SaveFlowPreSelected", "BM_DuplicateAndReplace", 1.20);

}  // namespace
