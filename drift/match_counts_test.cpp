// The counts of matched stances that the event watcher keeps, against a full measure, through
// what the randomized sequences never do: lights, hidden, locked and built objects, the
// plug-in's own replacements undone and redone, a watcher switched off and on, a reference file.

#include "drift/match_counts.h"

#include <functional>
#include <utility>

#include "drift/stance_drift.h"
#include "events/event_watcher.h"
#include "testing/stance_document_test.h"

namespace {

using MatchCountsTest = StanceDocumentTest;

TEST_F(MatchCountsTest, KeptCountsAgreeWithAFullMeasureAfterEveryChange) {
  CKorvoEventWatcher& watcher = *KorvoPlugIn().EventWatcher();
  const ZK_UUID box = AddBox();
  const ZK_UUID hidden = AddBox(TarsaObjectMode::hidden);
  const ZK_UUID locked = AddBox(TarsaObjectMode::locked);
  const ZK_UUID built = AddBuilt();
  const ZK_UUID light = AddLight();
  const ZK_UUID all = Save(L"All", {box, hidden, locked, built, light});
  const ZK_UUID lights = Save(L"Lights", {light});
  const std::string reference = ModelPath();
  SaveModel(reference);
  watcher.MatchCounts(*doc_);  // kept from here on

  const ZK_Xform aside = ZK_Xform::Translation(0, 5, 0);
  struct Change {
    const char* what;
    std::function<void()> change;
    bool all_matches, lights_match;
  };
  const Change changes[] = {
      {"the light moved", [&] { Move(light, aside); }, false, false},
      {"All restored", [&] { Step([&] { access_.RestoreStance(*doc_, all); }); }, true, true},
      {"hidden and locked members moved", [&] { Move(hidden, aside), Move(locked, aside); }, false,
       true},
      {"All restored again", [&] { Step([&] { access_.RestoreStance(*doc_, all); }); }, true, true},
      {"that restore undone", [&] { CTarsaStandIn::Undo(*doc_); }, false, true},
      {"and redone", [&] { CTarsaStandIn::Redo(*doc_); }, true, true},
      {"the built member moved, rebuilt with its history",
       [&] { doc_->TransformObject(CTarsaObjRef(Object(built)), aside, true, true, true); }, true,
       true},
      {"the light moved and Lights updated",
       [&] { Move(light, aside), access_.UpdateStance(*doc_, lights); }, false, true},
      {"All restored, the light with it", [&] { Step([&] { access_.RestoreStance(*doc_, all); }); },
       true, false},
      {"a member moved while the watcher was off",
       [&] { watcher.Enable(false), Move(box, aside), watcher.Enable(true); }, false, false},
      {"a copy of the model attached as a reference, its members at their placements",
       [&] { ReadModel(reference, true); }, false, false},
      {"the reference taken away", [&] { CTarsaStandIn::Undo(*doc_); }, false, false},
  };
  for (const Change& step : changes) {
    SCOPED_TRACE(step.what);
    step.change();
    const auto expected = std::make_pair(step.all_matches, step.lights_match);
    const CKorvoMatchCounts& kept = watcher.MatchCounts(*doc_);
    EXPECT_EQ(std::make_pair(kept.Matches(all), kept.Matches(lights)), expected);
    const std::vector<KorvoStanceSummary> measured = MeasureEveryStance(*doc_, Table());
    EXPECT_EQ(std::make_pair(measured.at(0).Matches(), measured.at(1).Matches()), expected);
  }
}

}  // namespace
