// Deleting every stance object of a model, in one Delete command or one at a time outside a
// command, against the host deleting the same objects with no plug-in loaded: the plug-in looks
// at what it must and removes the stances no object carries once, at the command's end or at the
// end of the undo step.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "bench/timed.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStances = 1000;

// Each round builds a new model, then deletes every object of it: through the user's Delete on
// the selection of them all, or one at a time outside any command, in one undo step (a script's,
// another plug-in's).
void DeleteEveryObject(benchmark::State& state, bool plug_in_loaded, bool one_at_a_time) {
  if (!plug_in_loaded) CTarsaStandIn::UnloadPlugIn(KorvoPlugIn());
  const int objects = static_cast<int>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    std::unique_ptr<BenchModel> model(new BenchModel(objects, kStances, 3));
    CTarsaDoc& doc = model->Doc();
    const ZK_SimpleArray<const CTarsaObject*> selected = model->Objects();
    for (int i = 0; !one_at_a_time && i < selected.Count(); ++i) selected[i]->Select();
    state.ResumeTiming();
    Timed([&] {
      if (!one_at_a_time) {
        CTarsaStandIn::CommandLine().RunCommand(L"-_Delete");
        return;
      }
      const unsigned int step = doc.BeginUndoRecord(L"Script");
      for (int i = 0; i < selected.Count(); ++i) doc.DeleteObject(CTarsaObjRef(selected[i]));
      doc.EndUndoRecord(step);
    });
    state.PauseTiming();
    const int stances = KorvoPlugIn().DocData(doc.RuntimeSerialNumber())->Count();
    if (model->Objects().Count() != 0 || stances != (plug_in_loaded ? 0 : kStances)) {
      state.SkipWithError("the objects or their stances outlived the deletion");
      break;  // the timer stays paused: resuming it after an error stops the program
    }
    model.reset();
    state.ResumeTiming();
  }
  LoadStancePlugIn();
}

void BM_DeleteStanceObjects(benchmark::State& state) { DeleteEveryObject(state, true, false); }
BENCHMARK(BM_DeleteStanceObjects)->Apply(ModelSizes);

void BM_DeleteWithoutPlugIn(benchmark::State& state) { DeleteEveryObject(state, false, false); }
BENCHMARK(BM_DeleteWithoutPlugIn)->Apply(ModelSizes);

void BM_DeleteOneAtATime(benchmark::State& state) { DeleteEveryObject(state, true, true); }
BENCHMARK(BM_DeleteOneAtATime)->Apply(ModelSizes);

void BM_DeleteOneAtATimeWithoutPlugIn(benchmark::State& state) {
  DeleteEveryObject(state, false, true);
}
BENCHMARK(BM_DeleteOneAtATimeWithoutPlugIn)->Apply(ModelSizes);

KORVO_RATIO_ROW("Delete of every stance object in one command / the host's own deletion",
                "BM_DeleteStanceObjects", "BM_DeleteWithoutPlugIn", 2.00);
KORVO_RATIO_ROW("Deletion of N stance objects one at a time, outside a command / the host's own",
                "BM_DeleteOneAtATime", "BM_DeleteOneAtATimeWithoutPlugIn", 2.00);

}  // namespace
