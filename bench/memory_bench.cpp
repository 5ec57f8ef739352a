// Memory rows: what a placement record takes against the bytes of its data, and what N stances
// saved one by one on one object hold at their peak, undo included, against the bytes of the
// stances' data. A memory benchmark runs its scenario once and reports bytes in the counter
// "bytes", which the table divides as it divides times.
//
// Memory is the heap in use as glibc counts it (mallinfo2's uordblks: every block handed out,
// with the allocator's own header and rounding), read before and after a phase in the same
// process; a peak is the largest value read after each step of the phase.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "data/placement_record.h"
#include "data/stance_table.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "operations/dynamic_access.h"
#include "operations/every_object_iterator.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kRecordEntries = 3;

size_t HeapInUse() { return mallinfo2().uordblks; }

void ReportBytes(benchmark::State& state, double bytes) { state.counters["bytes"] = bytes; }

// The data a record with `entries` entries must hold: an id and a transform per entry, the
// accumulated and the last transform.
double RecordDataBytes(int entries) {
  return entries * double(sizeof(ZK_UUID) + sizeof(ZK_Xform)) + 2 * double(sizeof(ZK_Xform));
}

// N records of three entries each, made as saves make them (an entry added at a time) and as
// the event watcher leaves them (the last transform taken out), each saved at another placement.
void BM_RecordMemory(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  std::vector<ZK_UUID> ids(kRecordEntries);
  for (ZK_UUID& id : ids) ZK_CreateUuid(id);
  for (auto _ : state) {
    std::vector<std::unique_ptr<CKorvoUserData>> records(static_cast<size_t>(count));
    const size_t before = HeapInUse();
    for (int i = 0; i < count; ++i) {
      auto record = std::make_unique<CKorvoUserData>();
      for (int e = 0; e < kRecordEntries; ++e) {
        record->Transform(ZK_Xform::Rotation(0.1 * (e + 1), {0, 0, 1}, {double(i), 1, 2}));
        record->Add(ids[static_cast<size_t>(e)], record->m_accumulated_xform);
      }
      record->m_last_xform.Identity();
      records[static_cast<size_t>(i)] = std::move(record);
    }
    ReportBytes(state, double(HeapInUse() - before) / count);
    if (records.back()->m_entries.GetSize() != kRecordEntries) state.SkipWithError("not made");
  }
}
BENCHMARK(BM_RecordMemory)->Apply(ModelSizes)->Iterations(1);

void BM_RecordData(benchmark::State& state) {
  for (auto _ : state) ReportBytes(state, RecordDataBytes(kRecordEntries));
}
BENCHMARK(BM_RecordData)->Apply(ModelSizes)->Iterations(1);

KORVO_RATIO_ROW("Memory per 3-entry record / the bytes of its data", "BM_RecordMemory",
                "BM_RecordData", 1.25);

std::wstring StanceName(int i) { return L"Stance " + std::to_wstring(i); }

// N stances saved one by one on one box through the host interface, each save an undo step of
// its own as a command makes it: the heap's peak above what it held before the first save.
void BM_SavedOneByOnePeak(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    CTarsaDoc& doc = *CTarsaStandIn::NewDocument();
    doc.AddObject(new CTarsaObject(new ZK_Box({0, 0, 0}, {1, 1, 1})));
    const auto the_box = [&doc] { return CKorvoEveryObjectIterator(doc).First(); };
    ZK_SimpleArray<const CTarsaObject*> box;
    CKorvoDynamicAccess access;
    const size_t before = HeapInUse();
    size_t peak = before;
    for (int i = 0; i < count; ++i) {
      box.Empty();
      box.Append(the_box());
      const unsigned int step = doc.BeginUndoRecord(L"Stance");
      access.SaveStance(doc, StanceName(i).c_str(), box);
      doc.EndUndoRecord(step);
      peak = std::max(peak, HeapInUse());
    }
    ReportBytes(state, double(peak - before));
    const CKorvoUserData* record = CKorvoUserData::Of(the_box());
    if (record == nullptr || record->m_entries.GetSize() != count) state.SkipWithError("not saved");
  }
}
BENCHMARK(BM_SavedOneByOnePeak)->Arg(1000)->Arg(10000)->Iterations(1);

// The data of those stances: each an id and a name in the table, and an entry in the record.
void BM_SavedOneByOneData(benchmark::State& state) {
  const int count = static_cast<int>(state.range(0));
  for (auto _ : state) {
    double bytes = 0;
    for (int i = 0; i < count; ++i) {
      bytes += double(sizeof(ZK_UUID) + StanceName(i).size() * sizeof(wchar_t)) +
               double(sizeof(ZK_UUID) + sizeof(ZK_Xform));
    }
    ReportBytes(state, bytes);
  }
}
BENCHMARK(BM_SavedOneByOneData)->Arg(1000)->Arg(10000)->Iterations(1);

KORVO_RATIO_ROW("Peak memory, N stances saved one by one on one box / the bytes of their data",
                "BM_SavedOneByOnePeak", "BM_SavedOneByOneData", 10.0);

}  // namespace
