// Model files: opening with the plug-in against the host opening the same file without it,
// merging a file's stances against a minimal re-key of their entries, and writing and reading a
// model against the least any save and open of the same bytes and objects must do.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <memory>
#include <unordered_map>
#include <vector>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "bench/timed.h"
#include "data/placement_record.h"
#include "data/stance_table.h"
#include "events/event_watcher.h"
#include "host/tarsa/standin/tarsa_model_file.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_testing.h"
#include "host/zefkit/zk_archive.h"
#include "operations/every_object_iterator.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStances = 1000;
constexpr int kEntries = 3;

// A model of `objects` points saved to a file, removed when the benchmark ends; the objects carry
// `entries` stances each, or no record with 0.
class ModelFile {
 public:
  explicit ModelFile(int objects, int entries = kEntries) {
    BenchModel model(objects, kStances, entries);
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

// Opens the file as a new document each round: with the plug-in loaded, or as the host alone
// opens it, the plug-in unloaded and the record class unknown, so that the records are kept as
// the bytes they are and never parsed.
void Open(benchmark::State& state, bool plug_in_loaded) {
  const ModelFile file(static_cast<int>(state.range(0)));
  std::wstring error;
  CTarsaDoc* doc = CTarsaStandIn::OpenDocument(file.Path(), error);
  if (doc == nullptr || StanceCount(*doc) != kStances) {
    state.SkipWithError("the model did not open with its stances");
  }
  if (doc) CloseBenchDocument(doc->RuntimeSerialNumber());
  std::unique_ptr<ZK_TestHideClass> record_class_unknown;
  if (!plug_in_loaded) {
    CTarsaStandIn::UnloadPlugIn(KorvoPlugIn());
    record_class_unknown.reset(new ZK_TestHideClass(*CKorvoUserData::ClassIdOfRecord()));
    doc = CTarsaStandIn::OpenDocument(file.Path(), error);
    if (doc == nullptr || ReadEveryEntry(*doc) != 0) state.SkipWithError("a record was read");
    if (doc) CloseBenchDocument(doc->RuntimeSerialNumber());
  }
  for (auto _ : state) {
    Timed([&] { doc = CTarsaStandIn::OpenDocument(file.Path(), error); });
    state.PauseTiming();
    CloseBenchDocument(doc->RuntimeSerialNumber());
    state.ResumeTiming();
  }
  record_class_unknown.reset();
  LoadStancePlugIn();
}

void BM_OpenWithPlugIn(benchmark::State& state) { Open(state, true); }
BENCHMARK(BM_OpenWithPlugIn)->Apply(ModelSizes);

void BM_OpenRecordsUnknown(benchmark::State& state) { Open(state, false); }
BENCHMARK(BM_OpenRecordsUnknown)->Apply(ModelSizes);

// A document as the host leaves it for the merge of an imported file's stances: the file's
// objects added during an open that merges, each carrying `kEntries` of the file's stances, and
// the file's stance block in an archive. The target holds 1,000 objects in 1,000 stances of the
// file's names (taken), or nothing (free).
class MergeState {
 public:
  MergeState(const BenchModel& source, bool names_taken)
      : m_target(names_taken ? kStances : 0, names_taken ? kStances : 0, 2) {
    const ZK_SimpleArray<const CTarsaObject*> objects = source.Objects();
    CTarsaDoc& doc = m_target.Doc();
    Watcher().OnBeginOpenDocument(doc, L"model.tsm", true, false);
    for (int i = 0; i < objects.Count(); ++i) doc.AddObject(objects[i]->Duplicate());
    KorvoPlugIn().DocData(source.Doc().RuntimeSerialNumber())->Write(m_block);
  }
  ~MergeState() { Watcher().OnEndOpenDocument(m_target.Doc(), L"model.tsm", true, false); }

  static CKorvoEventWatcher& Watcher() { return *KorvoPlugIn().EventWatcher(); }
  CTarsaDoc& Doc() { return m_target.Doc(); }
  // The block to read, from its start.
  ZK_BinaryMemoryArchive Block() const { return ZK_BinaryMemoryArchive(m_block.Bytes()); }
  const ZK_SimpleArray<ZK_UUID>& Added() const { return Watcher().m_open_stack.Top()->m_added_ids; }

 private:
  BenchModel m_target;
  ZK_BinaryMemoryArchive m_block;
};

// Runs `merge` on a new merge state each round: only `merge` is timed.
template <class Merge>
void MergeEachRound(benchmark::State& state, bool names_taken, Merge&& merge) {
  const BenchModel source(static_cast<int>(state.range(0)), kStances, kEntries);
  for (auto _ : state) {
    state.PauseTiming();
    auto merging = std::make_unique<MergeState>(source, names_taken);
    state.ResumeTiming();
    Timed([&] { merge(*merging); });
    state.PauseTiming();
    const int stances = StanceCount(merging->Doc());
    if (stances != (names_taken ? 2 : 1) * kStances) {
      state.SkipWithError("stances were lost");
      break;  // the timer stays paused: resuming it after an error stops the program
    }
    merging.reset();
    state.ResumeTiming();
  }
}

// The plug-in's merge of the file's stances alone, as the host calls it while reading the file.
void ImportStances(benchmark::State& state, bool names_taken) {
  MergeEachRound(state, names_taken, [](MergeState& merging) {
    ZK_BinaryMemoryArchive block = merging.Block();
    MergeState::Watcher().ImportStances(merging.Doc(), block);
  });
}

void BM_ImportNamesFree(benchmark::State& state) { ImportStances(state, false); }
BENCHMARK(BM_ImportNamesFree)->Apply(ModelSizes);

void BM_ImportNamesTaken(benchmark::State& state) { ImportStances(state, true); }
BENCHMARK(BM_ImportNamesTaken)->Apply(ModelSizes);

// The least a merge can do: give every entry of the file's objects a new id once, through a map
// built once, and add the stances, named as in the file, to the table.
void BM_RekeyEveryEntry(benchmark::State& state) {
  MergeEachRound(state, false, [](MergeState& merging) {
    CKorvoDocData imported;
    ZK_BinaryMemoryArchive block = merging.Block();
    imported.Read(block);
    CKorvoDocData& table = *KorvoPlugIn().DocData(merging.Doc().RuntimeSerialNumber());
    std::unordered_map<ZK_UUID, ZK_UUID, ZK_UuidHash> new_ids;
    for (INT_PTR i = 0; i < imported.m_entries.GetSize(); ++i) {
      ZK_UUID fresh;
      ZK_CreateUuid(fresh);
      new_ids.emplace(imported.m_entries[i]->m_id, fresh);
      table.AddFree(fresh, imported.m_entries[i]->m_name);
    }
    const ZK_SimpleArray<ZK_UUID>& added = merging.Added();
    for (int i = 0; i < added.Count(); ++i) {
      CKorvoUserData* record = CKorvoUserData::Of(merging.Doc().LookupObject(added[i]));
      for (int e = 0; record && e < record->m_entries.GetSize(); ++e) {
        ZK_UUID& id = record->EditableEntry(e).m_id;
        const auto found = new_ids.find(id);
        if (found != new_ids.end()) id = found->second;
      }
    }
  });
}
BENCHMARK(BM_RekeyEveryEntry)->Apply(ModelSizes);

// Saves the model to a file and opens it again, each round; the objects carry `entries` stances
// each, or no record with 0.
void WriteAndRead(benchmark::State& state, int entries) {
  BenchModel model(static_cast<int>(state.range(0)), kStances, entries);
  std::wstring error;
  CTarsaDoc* doc = CTarsaStandIn::OpenDocument(model.SaveAs("write_read"), error);
  if (doc == nullptr || ReadEveryEntry(*doc) != entries * state.range(0)) {
    state.SkipWithError("the file did not open with every entry");
  }
  if (doc) CloseBenchDocument(doc->RuntimeSerialNumber());
  for (auto _ : state) {
    Timed([&] { doc = CTarsaStandIn::OpenDocument(model.SaveAs("write_read"), error); });
    state.PauseTiming();
    CloseBenchDocument(doc->RuntimeSerialNumber());
    state.ResumeTiming();
  }
  std::remove(model.SaveAs("write_read").c_str());
}

void BM_WriteAndReadFile(benchmark::State& state) { WriteAndRead(state, kEntries); }
BENCHMARK(BM_WriteAndReadFile)->Apply(ModelSizes);

void BM_WriteAndReadBareFile(benchmark::State& state) { WriteAndRead(state, 0); }
BENCHMARK(BM_WriteAndReadBareFile)->Apply(ModelSizes);

// The floor of a save and an open: the same file's bytes written as a save writes them (into a
// new file beside the target, flushed to the disk, renamed over it, the folder flushed) and read
// back, and the same document built in memory by the host alone (the plug-in unloaded, so that
// its event watcher does not take in each object added).
void BM_WriteReadAndBuild(benchmark::State& state) {
  const int objects = static_cast<int>(state.range(0));
  const ModelFile file(objects);
  const HostAlone host_alone;
  std::vector<unsigned char> bytes;
  {
    std::ifstream stream(file.Path(), std::ios::binary);
    bytes.assign(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
  }
  // In pieces of 64 KiB, each framed as a chunk (four bytes more), through the save's archive.
  std::vector<std::vector<unsigned char>> pieces;
  for (size_t at = 0; at < bytes.size(); at += 64 * 1024) {
    const size_t end = std::min(at + 64 * 1024, bytes.size());
    pieces.emplace_back(bytes.begin() + static_cast<std::ptrdiff_t>(at),
                        bytes.begin() + static_cast<std::ptrdiff_t>(end));
  }
  const std::string target = file.Path() + ".floor";
  const std::string folder = target.substr(0, target.rfind('/') + 1);
  for (auto _ : state) {
    std::unique_ptr<ZK_BinaryFileArchive> in;
    std::unique_ptr<BenchModel> built;
    Timed([&] {
      std::string temporary = target + ".XXXXXX";
      const int fd = mkstemp(&temporary[0]);
      {
        ZK_BinaryFileArchive out(fd);
        for (const std::vector<unsigned char>& piece : pieces) out.WriteChunk(piece);
        out.Close();
      }
      std::rename(temporary.c_str(), target.c_str());
      close(fd);
      const int folder_fd = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
      fsync(folder_fd);
      close(folder_fd);
      in.reset(new ZK_BinaryFileArchive(target, ZK_ArchiveMode::read));
      built.reset(new BenchModel(objects, kStances, kEntries));
    });
    state.PauseTiming();
    if (!in->IsOpen() || in->BytesLeft() < bytes.size()) {
      state.SkipWithError("not read back");
      break;  // the timer stays paused: resuming it after an error stops the program
    }
    built.reset();
    state.ResumeTiming();
  }
  std::remove(target.c_str());
}
BENCHMARK(BM_WriteReadAndBuild)->Apply(ModelSizes);

KORVO_RATIO_ROW("Merge of 1,000 imported stances, names free / a minimal re-key of the entries",
                "BM_ImportNamesFree", "BM_RekeyEveryEntry", 2.00);
KORVO_RATIO_ROW("Merge of 1,000 imported stances, names taken / a minimal re-key of the entries",
                "BM_ImportNamesTaken", "BM_RekeyEveryEntry", 2.00);
KORVO_RATIO_ROW("Opening a model, plug-in loaded / the host opening it, record class unknown",
                "BM_OpenWithPlugIn", "BM_OpenRecordsUnknown", 1.30);
KORVO_RATIO_ROW(
    "Model file write + read / its bytes written and read back, the document built by the host "
    "alone",
    "BM_WriteAndReadFile", "BM_WriteReadAndBuild", 1.50);
KORVO_RATIO_ROW("Model file write + read, objects with records / without records",
                "BM_WriteAndReadFile", "BM_WriteAndReadBareFile", 2.00);

}  // namespace
