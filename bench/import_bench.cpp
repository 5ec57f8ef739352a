// Merging a large model's stances, and removing stances no object carries, on documents of the
// host stand-in. Run: build/default/bench/import_bench

#include <benchmark/benchmark.h>

#include <cstdio>
#include <string>

#include "events/event_watcher.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "operations/dynamic_access.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStancesPerObject = 3;

// A model of `objects` points in `stances` stances, each point in three of them, saved to a file.
std::string MakeModel(int objects, int stances) {
  const std::string path =
      "/tmp/korvo_import_bench_" + std::to_string(objects) + "_" + std::to_string(stances) + ".tsm";
  CTarsaDoc* doc = CTarsaStandIn::NewDocument();
  std::vector<ZK_SimpleArray<const CTarsaObject*>> members(static_cast<size_t>(stances));
  for (int i = 0; i < objects; ++i) {
    auto* object = new CTarsaObject(new ZK_Point({double(i), 0, 0}));
    doc->AddObject(object);
    for (int k = 0; k < kStancesPerObject; ++k)
      members[static_cast<size_t>((i + k) % stances)].Append(object);
  }
  CKorvoDynamicAccess access;
  for (int s = 0; s < stances; ++s) {
    ZK_SimpleArray<const CTarsaObject*> none;
    access.SaveStance(*doc, (L"Pose " + std::to_wstring(s)).c_str(), none);
  }
  // Entries go on directly: saving through the host interface would rewrite each object once per
  // stance, which is not what is measured here.
  CKorvoDocData* table = KorvoPlugIn().DocData(doc->RuntimeSerialNumber());
  for (int s = 0; s < stances; ++s) {
    for (int i = 0; i < members[static_cast<size_t>(s)].Count(); ++i) {
      CTarsaObject* object = doc->LookupObject(members[static_cast<size_t>(s)][i]->ModelObjectId());
      auto* record = CKorvoUserData::Of(object);
      if (record == nullptr) {
        record = new CKorvoUserData();
        object->AttachGeometryUserData(record);
      }
      record->Add(table->m_entries[s]->m_id, ZK_Xform());
    }
  }
  std::wstring error;
  TsWriteModelFile(*doc, path, error);
  CTarsaStandIn::CloseDocument(doc->RuntimeSerialNumber());
  return path;
}

void BM_ImportStances(benchmark::State& state) {
  CTarsaStandIn::LoadPlugIn(KorvoPlugIn());
  const std::string path =
      MakeModel(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  for (auto _ : state) {
    CTarsaDoc* doc = CTarsaStandIn::NewDocument();
    const unsigned int step = doc->BeginUndoRecord(L"Import");
    std::wstring error;
    TsReadModelFile(*doc, path, true, false, error);
    doc->EndUndoRecord(step);
    state.PauseTiming();
    if (KorvoPlugIn().DocData(doc->RuntimeSerialNumber())->Count() != state.range(1)) {
      state.SkipWithError("not every stance was imported");
    }
    CTarsaStandIn::CloseDocument(doc->RuntimeSerialNumber());
    state.ResumeTiming();
  }
  std::remove(path.c_str());
}
BENCHMARK(BM_ImportStances)
    ->Args({10000, 100})
    ->Args({100000, 1000})
    ->Unit(benchmark::kMillisecond);

void BM_RemoveUnusedStances(benchmark::State& state) {
  CTarsaStandIn::LoadPlugIn(KorvoPlugIn());
  const std::string path =
      MakeModel(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  std::wstring error;
  CTarsaDoc* doc = CTarsaStandIn::OpenDocument(path, error);
  CKorvoDocData* table = KorvoPlugIn().DocData(doc->RuntimeSerialNumber());
  for (auto _ : state) {
    // One stance that nothing carries makes the visit go through every object.
    state.PauseTiming();
    ZK_UUID unused;
    ZK_CreateUuid(unused);
    table->Add(unused, L"Unused");
    state.ResumeTiming();
    table->RemoveUnusedStances();
  }
  CTarsaStandIn::CloseDocument(doc->RuntimeSerialNumber());
  std::remove(path.c_str());
}
BENCHMARK(BM_RemoveUnusedStances)->Args({100000, 1000})->Unit(benchmark::kMillisecond);

// Opening a model as the document, with the clean-up of entries and stances at its end.
void BM_OpenDocument(benchmark::State& state) {
  CTarsaStandIn::LoadPlugIn(KorvoPlugIn());
  const std::string path =
      MakeModel(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
  for (auto _ : state) {
    std::wstring error;
    CTarsaDoc* doc = CTarsaStandIn::OpenDocument(path, error);
    state.PauseTiming();
    CTarsaStandIn::CloseDocument(doc->RuntimeSerialNumber());
    state.ResumeTiming();
  }
  std::remove(path.c_str());
}
BENCHMARK(BM_OpenDocument)->Args({100000, 1000})->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
