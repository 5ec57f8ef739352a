#include "host/tarsa/tarsa_doc.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <vector>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_point_geometry.h"

namespace {

using Log = std::vector<std::string>;
using Objects = std::vector<const CTarsaObject*>;

const ZK_Xform kShift = ZK_Xform::Translation(1, 0, 0);

// What the document did with a plug-in's undo records; `on_undo` runs inside each Undo.
struct UndoCounts {
  int undone = 0;
  int destroyed = 0;
  std::function<void()> on_undo;
};

struct CountingUndo : CTarsaUndoEventHandler {
  explicit CountingUndo(UndoCounts& counts) : counts_(counts) {}
  ~CountingUndo() override { ++counts_.destroyed; }
  void Undo(const CTarsaDoc&, const wchar_t*, bool, unsigned int) override {
    ++counts_.undone;
    if (counts_.on_undo) counts_.on_undo();
  }
  UndoCounts& counts_;
};

// Logs the notifications it hears, with the object each one names; `hook` runs inside each.
class Recorder : public CTarsaEventWatcher {
 public:
  void OnAddObject(CTarsaDoc&, CTarsaObject& object) override { Note("add", &object); }
  void OnDeleteObject(CTarsaDoc&, CTarsaObject& object) override { Note("delete", &object); }
  void OnUnDeleteObject(CTarsaDoc&, CTarsaObject& object) override { Note("undelete", &object); }
  void OnReplaceObject(CTarsaDoc&, CTarsaObject& old_object, CTarsaObject& new_object) override {
    replacement = &new_object;
    Note("replace", &old_object);
  }
  void LightTableEvent(table_event event, CTarsaDoc&, int) override {
    if (event == modified) Note("light-modified", nullptr);
  }
  void UndoEvent(undo_event event, unsigned int, const CTarsaCommand*) override {
    static const char* const kNames[] = {"undo-begin", "undo-end", "redo-begin", "redo-end"};
    if (event >= begin_undo && event <= end_redo) Note(kNames[event - begin_undo], nullptr);
  }

  void Clear() {
    log.clear();
    objects.clear();
  }

  Log log;
  Objects objects;
  const CTarsaObject* replacement = nullptr;
  std::function<void(const std::string&, CTarsaObject*)> hook;

 private:
  void Note(const std::string& what, CTarsaObject* object) {
    log.push_back(what);
    objects.push_back(object);
    if (hook) hook(what, object);
  }
};

class TarsaDocTest : public testing::Test {
 protected:
  void SetUp() override {
    doc_ = CTarsaStandIn::NewDocument();
    watcher_.Register();
    watcher_.Enable(true);
  }
  void TearDown() override {
    watcher_.UnRegister();
    if (doc_) CTarsaStandIn::CloseDocument(doc_->RuntimeSerialNumber());
  }

  CTarsaObject* Add(CTarsaObject* object, bool reference = false) {
    EXPECT_TRUE(doc_->AddObject(object, reference));
    return object;
  }
  CTarsaObject* AddBox() { return Add(new CTarsaObject(new ZK_Box())); }  // x from 0 to 1
  CTarsaObject* Move(const CTarsaObject* object, double dx) {
    return doc_->TransformObject(CTarsaObjRef(object), ZK_Xform::Translation(dx, 0, 0));
  }
  bool Delete(const CTarsaObject* object) { return doc_->DeleteObject(CTarsaObjRef(object)); }
  void SetMode(const CTarsaObject* object, TarsaObjectMode mode) {
    CTarsaObjectAttributes attributes = object->Attributes();
    attributes.m_mode = mode;
    EXPECT_TRUE(doc_->ModifyObjectAttributes(CTarsaObjRef(object), attributes));
  }
  template <class Edit>
  void InStep(Edit&& edit) {
    const unsigned int serial = doc_->BeginUndoRecord(L"edit");
    edit();
    EXPECT_TRUE(doc_->EndUndoRecord(serial));
  }
  Objects Walk(CTarsaObjectIterator it) {
    Objects seen;
    for (CTarsaObject* object = it.First(); object; object = it.Next()) seen.push_back(object);
    return seen;
  }
  Objects Walk() { return Walk(CTarsaObjectIterator(*doc_)); }
  CTarsaObject* Find(const CTarsaObject* object) const {
    return doc_->LookupObject(object->ModelObjectId());
  }
  static double X(const CTarsaObject* object) {
    return ZK_PointGeometry::Cast(object->Geometry())->Points()[0].x;
  }

  CTarsaDoc* doc_ = nullptr;
  Recorder watcher_;
};

// Only registered, enabled watchers hear, and only of what was done.
TEST_F(TarsaDocTest, GivesEveryObjectAnIdOfItsOwnAndFindsItUntilDeletedAndWatchersHearIt) {
  Recorder disabled, leaving;
  disabled.Register();
  leaving.Register();
  leaving.Enable(true);
  leaving.hook = [&](const std::string&, CTarsaObject*) { leaving.UnRegister(); };
  CTarsaObject* first = AddBox();
  EXPECT_FALSE(ZK_UuidIsNil(first->ModelObjectId()));
  CTarsaObjectAttributes taken;
  taken.m_uuid = first->ModelObjectId();
  CTarsaObject* twin = Add(new CTarsaObject(new ZK_Box(), taken));
  EXPECT_NE(twin->ModelObjectId(), first->ModelObjectId());
  EXPECT_EQ(Find(twin), twin);
  EXPECT_FALSE(doc_->AddObject(twin));
  ASSERT_TRUE(Delete(first));
  EXPECT_EQ(Find(first), nullptr);
  EXPECT_FALSE(Delete(first));
  EXPECT_EQ(watcher_.log, (Log{"add", "add", "delete"}));
  EXPECT_EQ(leaving.log, (Log{"add"}));
  EXPECT_TRUE(disabled.log.empty());
}

TEST_F(TarsaDocTest, ReplacementTakesTheIdAndIsAnnouncedAsReplaceDeleteAdd) {
  CTarsaObject* box = AddBox();
  SetMode(box, TarsaObjectMode::locked);
  auto* fresh = new CTarsaObject(new ZK_Box({5, 5, 5}, {6, 6, 6}));
  Objects found;  // by the old id, and how many objects a walk visits, at each notification
  std::vector<size_t> visited;
  watcher_.hook = [&](const std::string&, CTarsaObject*) {
    found.push_back(Find(box));
    visited.push_back(Walk().size());
  };
  ASSERT_TRUE(doc_->ReplaceObject(CTarsaObjRef(box), fresh));
  EXPECT_EQ(watcher_.log, (Log{"add", "replace", "delete", "add"}));
  EXPECT_EQ(watcher_.objects, (Objects{box, box, box, fresh}));
  EXPECT_EQ(watcher_.replacement, fresh);
  EXPECT_EQ(found, (Objects{box, nullptr, fresh}));
  EXPECT_EQ(visited, (std::vector<size_t>{1, 0, 1}));
  EXPECT_EQ(fresh->ObjectState(), CTarsaObject::locked_object);
}

// The iterator filters by state, category, lights and visibility. Hidden and locked objects cannot
// be selected, and are moved only when modes are ignored.
TEST_F(TarsaDocTest, ModesAndCategoriesDecideWhatIsWalkedSelectedAndMoved) {
  CTarsaObject* normal = AddBox();
  CTarsaObject* locked = AddBox();
  CTarsaObject* hidden = AddBox();
  CTarsaObject* doomed = AddBox();
  SetMode(locked, TarsaObjectMode::locked);
  SetMode(hidden, TarsaObjectMode::hidden);
  EXPECT_EQ(normal->Select() + locked->Select() + hidden->Select() + doomed->Select(), 2);
  Delete(doomed);
  EXPECT_EQ(doc_->UnselectAll(), 1);
  EXPECT_EQ(doc_->UnselectAll(), 0);
  CTarsaObject* reference = Move(Add(new CTarsaObject(new ZK_Box()), true), 1);
  const CTarsaObject* light = doc_->LightTable()[doc_->LightTable().AddLight(ZK_Light())];

  EXPECT_EQ(Walk(CTarsaObjectIterator(*doc_, 7)), (Objects{normal, locked}));
  CTarsaObjectIterator unfiltered(*doc_, 7);
  unfiltered.EnableVisibleFilter(false);
  EXPECT_EQ(Walk(unfiltered), (Objects{normal, locked, hidden}));
  EXPECT_EQ(Walk(CTarsaObjectIterator(*doc_, 7, CTarsaObject::reference_object)),
            (Objects{reference}));
  CTarsaObjectIterator with_lights(*doc_, CTarsaObject::normal_object);
  with_lights.IncludeLights();
  EXPECT_EQ(Walk(with_lights), (Objects{normal, light}));

  for (const CTarsaObject* refused : {hidden, locked}) EXPECT_EQ(Move(refused, 1), nullptr);
  EXPECT_FALSE(Delete(locked));
  CTarsaObject* moved = doc_->TransformObject(CTarsaObjRef(locked), kShift, true, true);
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(moved->ObjectState(), CTarsaObject::locked_object);
}

// A move puts a transformed copy in the original's place; a copy keeping the original is only
// added. A walk visits neither.
TEST_F(TarsaDocTest, MovesAndCopiesTransformACopyThatAWalkUnderWaySkips) {
  const Objects boxes{AddBox(), AddBox(), AddBox()};
  Objects visited;
  CTarsaObjectIterator it(*doc_);
  for (CTarsaObject* object = it.First(); object; object = it.Next()) {
    visited.push_back(object);
    CTarsaObject* moved = Move(object, 10);
    ASSERT_NE(moved, nullptr);
    watcher_.Clear();
    ASSERT_NE(doc_->TransformObject(CTarsaObjRef(moved), kShift, false), nullptr);
    EXPECT_EQ(watcher_.log, (Log{"add"}));
    if (visited.size() == 1) Move(Find(boxes[2]), 10);  // a slot the walk has not reached
  }
  EXPECT_EQ(visited, (Objects{boxes[0], boxes[1]}));
  EXPECT_EQ(Walk().size(), 5u);
  for (const CTarsaObject* box : boxes) EXPECT_EQ(X(Find(box)), X(box) + 10);
}

TEST_F(TarsaDocTest, ModifyLightReplacesTheLightAtItsIndex) {
  CTarsaLightTable& lights = doc_->LightTable();
  EXPECT_EQ(lights.AddLight(ZK_Light()), 0);
  EXPECT_EQ(lights.AddLight(ZK_Light()), 1);
  const CTarsaLight* before = lights[1];
  ZK_Light brighter;
  brighter.m_intensity = 3;
  ASSERT_TRUE(lights.ModifyLight(brighter, 1));
  EXPECT_EQ(watcher_.log, (Log{"add", "add", "replace", "delete", "add", "light-modified"}));
  const CTarsaLight* after = CTarsaLight::Cast(Find(before));
  ASSERT_NE(after, nullptr);
  EXPECT_EQ(after->Light().m_intensity, 3);
  EXPECT_EQ(after->Light().m_light_index, 1);
  for (const int outside : {-1, 2}) EXPECT_FALSE(lights.ModifyLight(brighter, outside)) << outside;
}

// A custom undo record that a plug-in adds as the move replaces its object is undone before the
// move.
TEST_F(TarsaDocTest, UndoPutsBackAStepOfAddMoveAndDeleteAndRedoAppliesItAgain) {
  CTarsaObject* kept = AddBox();
  CTarsaObject* doomed = AddBox();
  UndoCounts custom;
  const CTarsaObject* in_place_at_undo = nullptr;
  custom.on_undo = [&] { in_place_at_undo = Find(kept); };
  watcher_.hook = [&](const std::string& what, CTarsaObject*) {
    if (what == "replace") doc_->AddCustomUndoEvent(new CountingUndo(custom));
  };
  const unsigned int outer = doc_->BeginUndoRecord(L"outer");
  EXPECT_EQ(doc_->BeginUndoRecord(L"inner"), outer);  // nested steps make one
  CTarsaObject* added = AddBox();
  CTarsaObject* moved = Move(kept, 2);
  EXPECT_TRUE(doc_->EndUndoRecord(outer));  // ends the inner step only
  Delete(doomed);
  EXPECT_TRUE(doc_->EndUndoRecord(outer));
  InStep([&] {
    EXPECT_FALSE(CTarsaStandIn::Undo(*doc_));
  });  // refused while recording; an empty step is dropped
  int heard_in_redo = 0;
  watcher_.hook = [&](const std::string&, CTarsaObject*) { heard_in_redo += doc_->RedoActive(); };
  watcher_.Clear();
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_EQ(watcher_.log,
            (Log{"undo-begin", "undelete", "replace", "delete", "add", "delete", "undo-end"}));
  EXPECT_EQ(Walk(), (Objects{kept, doomed}));
  EXPECT_EQ(heard_in_redo, 0);
  EXPECT_EQ(custom.undone, 1);
  EXPECT_EQ(in_place_at_undo, moved);

  // A redone addition comes back as an undeletion, never as a new object.
  watcher_.Clear();
  ASSERT_TRUE(CTarsaStandIn::Redo(*doc_));
  EXPECT_EQ(watcher_.log,
            (Log{"redo-begin", "undelete", "replace", "delete", "add", "delete", "redo-end"}));
  EXPECT_EQ(watcher_.objects[1], added);
  EXPECT_EQ(heard_in_redo, 7);
  EXPECT_FALSE(doc_->RedoActive());
  EXPECT_EQ(Walk(), (Objects{moved, added}));
}

// Once the history is forgotten nothing can bring a deleted object back, and it goes; the
// objects that remain keep their order and ids.
TEST_F(TarsaDocTest, ClearingUndoDropsDeletedObjectsAndKeepsTheRest) {
  CTarsaObject* kept = AddBox();
  CTarsaObject* doomed = AddBox();
  CTarsaObject* last = AddBox();
  InStep([&] {
    AddBox();
    Delete(doomed);
  });
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  Delete(kept);
  CTarsaStandIn::ClearUndo(*doc_);
  CTarsaObjectIterator everything(*doc_, 15);
  EXPECT_EQ(Walk(everything), (Objects{doomed, last}));
  EXPECT_EQ(Find(last), last);
  CTarsaObject* added = AddBox();
  EXPECT_EQ(Walk(), (Objects{doomed, last, added}));
  ASSERT_NE(Move(last, 1), nullptr);
  EXPECT_EQ(Walk().size(), 3u);
}

// Refused custom undo records (outside a step, during an undo) are destroyed at once.
TEST_F(TarsaDocTest, CustomUndoRunsOnEachUndoAndRedoAndDiesWithItsStep) {
  UndoCounts refused, counts, kept;
  EXPECT_FALSE(doc_->AddCustomUndoEvent(new CountingUndo(refused)));
  EXPECT_EQ(refused.destroyed, 1);
  InStep([&] {
    AddBox();
    EXPECT_TRUE(doc_->AddCustomUndoEvent(new CountingUndo(counts)));
  });
  bool accepted = true;
  watcher_.hook = [&](const std::string& what, CTarsaObject*) {
    if (what == "delete") accepted = doc_->AddCustomUndoEvent(new CountingUndo(refused));
  };
  std::vector<bool> in_redo;  // at each call of the record
  counts.on_undo = [&] { in_redo.push_back(doc_->RedoActive()); };
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_FALSE(accepted);
  EXPECT_EQ(refused.destroyed, 2);
  watcher_.hook = nullptr;
  CTarsaStandIn::Redo(*doc_);
  CTarsaStandIn::Undo(*doc_);
  EXPECT_EQ(in_redo, (std::vector<bool>{false, true, false}));
  EXPECT_EQ(counts.destroyed, 0);
  InStep([&] { AddBox(); });
  EXPECT_EQ(counts.destroyed, 1);

  InStep([&] { EXPECT_TRUE(doc_->AddCustomUndoEvent(new CountingUndo(kept))); });
  CTarsaStandIn::CloseDocument(doc_->RuntimeSerialNumber());
  doc_ = nullptr;
  EXPECT_EQ(kept.destroyed, 1);
  EXPECT_EQ(kept.undone, 0);
}

// Undo keeps what its memory limit allows, counting what each step holds: the oldest steps go
// first, the newest always stays, and the first drop in a document says so, once.
TEST_F(TarsaDocTest, UndoDropsItsOldestStepsBeyondItsMemoryLimitAndSaysSoOnce) {
  struct MegabyteUndo : CountingUndo {
    using CountingUndo::CountingUndo;
    unsigned int SizeOf() const override { return 1u << 20; }
  };
  CTarsaStandIn::SetUndoMemoryLimit(size_t{3} << 20);
  UndoCounts counts[5];
  for (UndoCounts& step : counts) {
    InStep([&] { EXPECT_TRUE(doc_->AddCustomUndoEvent(new MegabyteUndo(step))); });
  }
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), 2);
  EXPECT_EQ(counts[2].destroyed, 1);
  EXPECT_EQ(counts[3].destroyed, 0);
  EXPECT_EQ(CTarsaStandIn::CommandLine().TakeOutput(),
            L"Undo keeps the last steps within 3 MB; older steps can no longer be undone.\n");
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  ASSERT_TRUE(CTarsaStandIn::Undo(*doc_));
  EXPECT_FALSE(CTarsaStandIn::Undo(*doc_));
  EXPECT_EQ(counts[3].undone + counts[4].undone, 2);

  CTarsaStandIn::SetUndoMemoryLimit(0);  // a step larger than the limit is still kept
  InStep([&] { EXPECT_TRUE(doc_->AddCustomUndoEvent(new MegabyteUndo(counts[0]))); });
  InStep([&] { AddBox(); });
  EXPECT_EQ(CTarsaStandIn::UndoStepCount(*doc_), 1);
  EXPECT_EQ(CTarsaStandIn::CommandLine().TakeOutput(), L"");
  CTarsaStandIn::Reset();
  doc_ = nullptr;
}

}  // namespace
