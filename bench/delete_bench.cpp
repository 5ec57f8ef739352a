// Deleting every stance object of a model in one Delete command, against the host deleting the
// same objects with no plug-in loaded: within a command the plug-in looks at what it must and
// removes the stances no object carries once, at the command's end.
#include <benchmark/benchmark.h>

#include <memory>

#include "bench/bench_model.h"
#include "bench/ratio_table.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "plugin/korvo_plugin.h"

namespace {

constexpr int kStances = 1000;

// Each round selects every object of a new model, then runs the user's Delete on the selection.
void DeleteEveryObject(benchmark::State& state, bool plug_in_loaded) {
  if (!plug_in_loaded) CTarsaStandIn::UnloadPlugIn(KorvoPlugIn());
  const int objects = static_cast<int>(state.range(0));
  for (auto _ : state) {
    state.PauseTiming();
    std::unique_ptr<BenchModel> model(new BenchModel(objects, kStances, 3));
    const ZK_SimpleArray<const CTarsaObject*> selected = model->Objects();
    for (int i = 0; i < selected.Count(); ++i) selected[i]->Select();
    state.ResumeTiming();
    CTarsaStandIn::CommandLine().RunCommand(L"-_Delete");
    state.PauseTiming();
    const int stances = KorvoPlugIn().DocData(model->Doc().RuntimeSerialNumber())->Count();
    if (model->Objects().Count() != 0 || stances != (plug_in_loaded ? 0 : kStances)) {
      state.SkipWithError("the objects or their stances outlived the deletion");
    }
    model.reset();
    state.ResumeTiming();
  }
  LoadStancePlugIn();
}

void BM_DeleteStanceObjects(benchmark::State& state) { DeleteEveryObject(state, true); }
BENCHMARK(BM_DeleteStanceObjects)->Apply(ModelSizes);

void BM_DeleteWithoutPlugIn(benchmark::State& state) { DeleteEveryObject(state, false); }
BENCHMARK(BM_DeleteWithoutPlugIn)->Apply(ModelSizes);

KORVO_RATIO_ROW("Delete of every stance object in one command / the host's own deletion",
                "BM_DeleteStanceObjects", "BM_DeleteWithoutPlugIn", 2.00);

}  // namespace
