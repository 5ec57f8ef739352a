// Model files: opening with and without the plug-in, merging a model's stances, and writing and
// reading a file against copying its bytes.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <memory>
#include <unordered_map>
#include <vector>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "data/placement_record.h"
#include "data/stance_table.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "operations/every_object_iterator.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStances = 1000;
constexpr int kEntries = 3;

// A model of `objects` points saved to a file, removed when the benchmark ends.
class ModelFile {
 public:
  explicit ModelFile(int objects) {
    BenchModel model(objects, kStances, kEntries);
    m_path = model.SaveAs(("model_" + std::to_string(objects)).c_str());
  }
  ~ModelFile() { std::remove(m_path.c_str()); }
  const std::string& Path() const { return m_path; }

 private:
  std::string m_path;
};

int StanceCount(CTarsaDoc& doc) {
  return KorvoPlugIn().DocData(doc.RuntimeSerialNumber())->Count();
}

// Opens the file as a new document each round; the plug-in loaded or not.
void Open(benchmark::State& state, bool plug_in_loaded) {
  const ModelFile file(static_cast<int>(state.range(0)));
  std::wstring error;
  CTarsaDoc* doc = CTarsaStandIn::OpenDocument(file.Path(), error);
  if (doc == nullptr || StanceCount(*doc) != kStances) {
    state.SkipWithError("the model did not open with its stances");
  }
  if (doc) CloseBenchDocument(doc->RuntimeSerialNumber());
  if (!plug_in_loaded) CTarsaStandIn::UnloadPlugIn(KorvoPlugIn());
  for (auto _ : state) {
    doc = CTarsaStandIn::OpenDocument(file.Path(), error);
    state.PauseTiming();
    CloseBenchDocument(doc->RuntimeSerialNumber());
    state.ResumeTiming();
  }
  LoadStancePlugIn();
}

void BM_OpenWithPlugIn(benchmark::State& state) { Open(state, true); }
BENCHMARK(BM_OpenWithPlugIn)->Apply(ModelSizes);

void BM_OpenWithoutPlugIn(benchmark::State& state) { Open(state, false); }
BENCHMARK(BM_OpenWithoutPlugIn)->Apply(ModelSizes);

// Merges the file into a new document that has the file's stance names already (taken: a
// thousand objects carry them) or not:
// the number of stances the document has afterwards, the document closed.
int Import(const std::string& path, bool names_taken) {
  BenchModel target(names_taken ? kStances : 0, names_taken ? kStances : 0, 2);
  std::wstring error;
  TsReadModelFile(target.Doc(), path, true, false, error);
  return StanceCount(target.Doc());
}

void Import(benchmark::State& state, bool names_taken) {
  const ModelFile file(static_cast<int>(state.range(0)));
  if (Import(file.Path(), names_taken) != (names_taken ? 2 : 1) * kStances) {
    state.SkipWithError("not every stance was imported");
  }
  for (auto _ : state) {
    state.PauseTiming();
    auto target =
        std::make_unique<BenchModel>(names_taken ? kStances : 0, names_taken ? kStances : 0, 2);
    state.ResumeTiming();
    std::wstring error;
    TsReadModelFile(target->Doc(), file.Path(), true, false, error);
    state.PauseTiming();
    target.reset();
    state.ResumeTiming();
  }
}

void BM_ImportNamesFree(benchmark::State& state) { Import(state, false); }
BENCHMARK(BM_ImportNamesFree)->Apply(ModelSizes);

void BM_ImportNamesTaken(benchmark::State& state) { Import(state, true); }
BENCHMARK(BM_ImportNamesTaken)->Apply(ModelSizes);

// The least an import can do: read the objects without the plug-in, then give every entry a new
// id once, through a map built once.
void BM_MergeAndRekeyEveryEntry(benchmark::State& state) {
  const ModelFile file(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    state.PauseTiming();
    CTarsaDoc* doc = CTarsaStandIn::NewDocument();
    CTarsaStandIn::UnloadPlugIn(KorvoPlugIn());
    state.ResumeTiming();
    std::wstring error;
    TsReadModelFile(*doc, file.Path(), true, false, error);
    std::unordered_map<ZK_UUID, ZK_UUID, ZK_UuidHash> new_ids;
    CKorvoEveryObjectIterator it(*doc);
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      CKorvoUserData* record = CKorvoUserData::Of(object);
      for (int e = 0; record && e < record->m_entries.GetSize(); ++e) {
        ZK_UUID& id = record->EditableEntry(e).m_id;
        auto found = new_ids.find(id);
        if (found == new_ids.end()) {
          ZK_UUID fresh;
          ZK_CreateUuid(fresh);
          found = new_ids.emplace(id, fresh).first;
        }
        id = found->second;
      }
    }
    state.PauseTiming();
    LoadStancePlugIn();
    CloseBenchDocument(doc->RuntimeSerialNumber());
    state.ResumeTiming();
  }
}
BENCHMARK(BM_MergeAndRekeyEveryEntry)->Apply(ModelSizes);

void BM_WriteAndReadFile(benchmark::State& state) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, kEntries);
  std::wstring error;
  CTarsaDoc* doc = CTarsaStandIn::OpenDocument(model.SaveAs("write_read"), error);
  if (doc == nullptr || ReadEveryEntry(*doc) != kEntries * state.range(0)) {
    state.SkipWithError("the file did not open with every entry");
  }
  if (doc) CloseBenchDocument(doc->RuntimeSerialNumber());
  for (auto _ : state) {
    doc = CTarsaStandIn::OpenDocument(model.SaveAs("write_read"), error);
    state.PauseTiming();
    CloseBenchDocument(doc->RuntimeSerialNumber());
    state.ResumeTiming();
  }
  std::remove(model.SaveAs("write_read").c_str());
}
BENCHMARK(BM_WriteAndReadFile)->Apply(ModelSizes);

// Copying the bytes of the same file in memory.
void BM_CopyFileBytes(benchmark::State& state) {
  const ModelFile file(static_cast<int>(state.range(0)));
  std::ifstream in(file.Path(), std::ios::binary);
  const std::vector<char> bytes((std::istreambuf_iterator<char>(in)),
                                std::istreambuf_iterator<char>());
  std::vector<char> copy(bytes.size());
  for (auto _ : state) {
    std::memcpy(copy.data(), bytes.data(), bytes.size());
    benchmark::ClobberMemory();
  }
}
BENCHMARK(BM_CopyFileBytes)->Apply(ModelSizes);

KORVO_RATIO_ROW("Import of 1,000 stances, names free / reading and re-keying every entry",
                "BM_ImportNamesFree", "BM_MergeAndRekeyEveryEntry", 2.00);
KORVO_RATIO_ROW("Import of 1,000 stances, names taken / reading and re-keying every entry",
                "BM_ImportNamesTaken", "BM_MergeAndRekeyEveryEntry", 2.00);
KORVO_RATIO_ROW("Opening a model, plug-in loaded / not loaded", "BM_OpenWithPlugIn",
                "BM_OpenWithoutPlugIn", 1.30);
KORVO_RATIO_ROW("Model file write + read / a copy of the same bytes", "BM_WriteAndReadFile",
                "BM_CopyFileBytes", 5.00);

}  // namespace
