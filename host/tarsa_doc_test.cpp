#include "host/tarsa_doc.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/tarsa_app.h"
#include "host/zk_archive.h"
#include "host/zk_point_geometry.h"

namespace {

using Log = std::vector<std::string>;
using Objects = std::vector<const CTarsaObject*>;

const ZK_Xform kShift = ZK_Xform::Translation(1, 0, 0);
const ZK_UUID kTagId = ZK_UuidFromString("2F7C1B9E-4D3A-4E85-A6B1-9C0D8E7F6A52");

// User data copied with its object; the kernel multiplies each transform into m_userdata_xform.
class Tag : public ZK_UserData {
 public:
  Tag() {
    m_userdata_uuid = kTagId;
    m_userdata_copycount = 1;
  }
  ZK_Object* __DeepCopy() const override { return new Tag(*this); }
};

const ZK_UserData* TagOf(const CTarsaObject* object) { return object->GetGeometryUserData(kTagId); }

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
    doc_ = TarsaApp().NewDocument();
    watcher_.Register();
    watcher_.Enable(true);
  }
  void TearDown() override {
    watcher_.UnRegister();
    if (doc_) TarsaApp().CloseDocument(doc_->RuntimeSerialNumber());
  }

  // A free unit box whose corners start at x.
  static CTarsaObject* MakeBox(double x) {
    return new CTarsaObject(new ZK_Box({x, 0, 0}, {x + 1, 1, 1}));
  }
  CTarsaObject* Add(CTarsaObject* object, bool reference = false) {
    EXPECT_TRUE(doc_->AddObject(object, reference));
    return object;
  }
  CTarsaObject* AddBox(double x = 0) { return Add(MakeBox(x)); }
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
  // The x of a box's corner: corner 0 has the smallest x, corner 6 the largest.
  static double X(const CTarsaObject* object, size_t corner = 0) {
    return ZK_PointGeometry::Cast(object->Geometry())->Points()[corner].x;
  }
  void ClearLog() {
    watcher_.log.clear();
    watcher_.objects.clear();
  }

  CTarsaDoc* doc_ = nullptr;
  Recorder watcher_;
};

TEST_F(TarsaDocTest, GivesEveryObjectAnIdOfItsOwnAndFindsItUntilDeleted) {
  CTarsaObject* first = AddBox();
  EXPECT_FALSE(ZK_UuidIsNil(first->ModelObjectId()));
  CTarsaObjectAttributes taken;
  taken.m_uuid = first->ModelObjectId();
  CTarsaObject* twin = Add(new CTarsaObject(new ZK_Box(), taken));
  EXPECT_NE(twin->ModelObjectId(), first->ModelObjectId());
  EXPECT_EQ(Find(first), first);
  EXPECT_EQ(Find(twin), twin);
  EXPECT_FALSE(doc_->AddObject(twin));
  ASSERT_TRUE(Delete(first));
  EXPECT_EQ(Find(first), nullptr);
  EXPECT_FALSE(Delete(first));
}

TEST_F(TarsaDocTest, ReplacementTakesTheIdAndIsAnnouncedAsReplaceDeleteAdd) {
  CTarsaObject* box = AddBox();
  SetMode(box, TarsaObjectMode::locked);
  auto* fresh = new CTarsaObject(new ZK_Box({5, 5, 5}, {6, 6, 6}));
  Objects visited_in_delete{box};
  const CTarsaObject* found_in_delete = box;
  CTarsaObject* found_in_add = nullptr;
  watcher_.hook = [&](const std::string& what, CTarsaObject*) {
    if (what == "delete") {
      visited_in_delete = Walk();
      found_in_delete = Find(box);
    }
    if (what == "add") found_in_add = Find(box);
  };
  ClearLog();
  ASSERT_TRUE(doc_->ReplaceObject(CTarsaObjRef(box), fresh));
  EXPECT_EQ(watcher_.log, (Log{"replace", "delete", "add"}));
  EXPECT_EQ(watcher_.objects, (Objects{box, box, fresh}));
  EXPECT_EQ(watcher_.replacement, fresh);
  EXPECT_TRUE(visited_in_delete.empty());
  EXPECT_EQ(found_in_delete, nullptr);
  EXPECT_EQ(found_in_add, fresh);
  EXPECT_EQ(fresh->ObjectState(), CTarsaObject::locked_object);
}

TEST_F(TarsaDocTest, MovingOrCopyingTransformsACopyAndItsUserDataButNotTheOriginal) {
  CTarsaObject* box = MakeBox(0);
  box->AttachGeometryUserData(new Tag());
  Add(box);
  CTarsaObject* moved = Move(box, 2);
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(X(moved), 2);
  EXPECT_EQ(X(moved, 6), 3);
  EXPECT_EQ(X(box), 0);
  ASSERT_NE(TagOf(moved), nullptr);
  EXPECT_EQ(TagOf(moved)->m_userdata_xform, ZK_Xform::Translation(2, 0, 0));
  EXPECT_TRUE(TagOf(box)->m_userdata_xform.IsIdentity());

  ClearLog();
  CTarsaObject* copy = doc_->TransformObject(CTarsaObjRef(moved), kShift, false);
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(watcher_.log, (Log{"add"}));
  EXPECT_NE(copy->ModelObjectId(), moved->ModelObjectId());
  EXPECT_EQ(Walk(), (Objects{moved, copy}));
  EXPECT_EQ(X(moved), 2);
  EXPECT_EQ(X(copy), 3);
}

TEST_F(TarsaDocTest, IteratorFiltersByStateCategoryLightsAndVisibility) {
  CTarsaObject* normal = AddBox();
  CTarsaObject* locked = AddBox();
  CTarsaObject* hidden = AddBox();
  SetMode(locked, TarsaObjectMode::locked);
  SetMode(hidden, TarsaObjectMode::hidden);
  Delete(AddBox());
  CTarsaObject* reference = Move(Add(MakeBox(0), true), 1);
  ASSERT_EQ(doc_->LightTable().AddLight(ZK_Light()), 0);
  const CTarsaObject* light = doc_->LightTable()[0];

  EXPECT_EQ(Walk(CTarsaObjectIterator(*doc_, 7)), (Objects{normal, locked}));
  CTarsaObjectIterator unfiltered(*doc_, 7);
  unfiltered.EnableVisibleFilter(false);
  EXPECT_EQ(Walk(unfiltered), (Objects{normal, locked, hidden}));
  EXPECT_EQ(Walk(CTarsaObjectIterator(*doc_, 7, CTarsaObject::reference_object)),
            (Objects{reference}));
  CTarsaObjectIterator with_lights(*doc_, CTarsaObject::normal_object);
  with_lights.IncludeLights();
  EXPECT_EQ(Walk(with_lights), (Objects{normal, light}));
}

TEST_F(TarsaDocTest, WalkSkipsObjectsAddedOrReplacedAfterItStarted) {
  const Objects boxes{AddBox(0), AddBox(1), AddBox(2)};
  Objects visited;
  CTarsaObjectIterator it(*doc_);
  for (CTarsaObject* object = it.First(); object; object = it.Next()) {
    visited.push_back(object);
    ASSERT_NE(Move(object, 10), nullptr);
    AddBox(-1);
    if (visited.size() == 1) Move(Find(boxes[2]), 10);  // a slot the walk has not reached
  }
  EXPECT_EQ(visited, (Objects{boxes[0], boxes[1]}));
  EXPECT_EQ(Walk().size(), 5u);
  for (const CTarsaObject* box : boxes) EXPECT_EQ(X(Find(box)), X(box) + 10);
}

TEST_F(TarsaDocTest, ModifyLightReplacesTheLightAtItsIndexWithItsUserData) {
  CTarsaLightTable& lights = doc_->LightTable();
  EXPECT_EQ(lights.AddLight(ZK_Light()), 0);
  EXPECT_EQ(lights.AddLight(ZK_Light()), 1);
  const CTarsaLight* before = lights[1];
  ZK_Light brighter;
  brighter.m_intensity = 3;
  brighter.AttachUserData(new Tag());
  ClearLog();
  ASSERT_TRUE(lights.ModifyLight(brighter, 1));
  EXPECT_EQ(watcher_.log, (Log{"replace", "delete", "add", "light-modified"}));
  const CTarsaLight* after = CTarsaLight::Cast(Find(before));
  ASSERT_NE(after, nullptr);
  EXPECT_EQ(lights[1], after);
  EXPECT_EQ(after->Light().m_intensity, 3);
  EXPECT_EQ(after->Light().m_light_index, 1);
  EXPECT_NE(TagOf(after), nullptr);
  EXPECT_FALSE(lights.ModifyLight(brighter, -1));
  EXPECT_FALSE(lights.ModifyLight(brighter, 2));
}

TEST_F(TarsaDocTest, HiddenOrLockedObjectsAreNotSelectedAndMoveOnlyWhenIgnoringModes) {
  const Objects boxes{AddBox(), AddBox(), AddBox(), AddBox(), AddBox()};
  SetMode(boxes[1], TarsaObjectMode::hidden);
  SetMode(boxes[2], TarsaObjectMode::locked);
  int selected = 0;
  for (const CTarsaObject* box : boxes) selected += box->Select();
  EXPECT_EQ(selected, 3);
  Delete(boxes[4]);
  EXPECT_EQ(doc_->UnselectAll(), 2);
  EXPECT_EQ(doc_->UnselectAll(), 0);

  EXPECT_EQ(Move(boxes[1], 1), nullptr);
  EXPECT_EQ(Move(boxes[2], 1), nullptr);
  EXPECT_FALSE(Delete(boxes[2]));
  CTarsaObject* moved = doc_->TransformObject(CTarsaObjRef(boxes[2]), kShift, true, true);
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(moved->ObjectState(), CTarsaObject::locked_object);
}

TEST_F(TarsaDocTest, UndoPutsBackAStepOfAddMoveAndDeleteAndRedoAppliesItAgain) {
  CTarsaObject* kept = AddBox(0);
  CTarsaObject* doomed = AddBox(5);
  CTarsaObject* added = nullptr;
  CTarsaObject* moved = nullptr;
  InStep([&] {
    added = AddBox(9);
    moved = Move(kept, 2);
    Delete(doomed);
  });
  int heard_in_redo = 0;
  watcher_.hook = [&](const std::string&, CTarsaObject*) { heard_in_redo += doc_->RedoActive(); };
  ClearLog();
  ASSERT_TRUE(doc_->Undo());
  EXPECT_EQ(watcher_.log,
            (Log{"undo-begin", "undelete", "replace", "delete", "add", "delete", "undo-end"}));
  EXPECT_EQ(Walk(), (Objects{kept, doomed}));
  EXPECT_EQ(Find(added), nullptr);
  EXPECT_EQ(heard_in_redo, 0);

  // A redone addition comes back as an undeletion, never as a new object.
  ClearLog();
  ASSERT_TRUE(doc_->Redo());
  EXPECT_EQ(watcher_.log,
            (Log{"redo-begin", "undelete", "replace", "delete", "add", "delete", "redo-end"}));
  EXPECT_EQ(watcher_.objects[1], added);
  EXPECT_EQ(heard_in_redo, 7);
  EXPECT_FALSE(doc_->RedoActive());
  EXPECT_EQ(Walk(), (Objects{moved, added}));
  EXPECT_EQ(Find(kept), moved);
}

// Refused custom undo records (outside a step, during an undo) are destroyed at once.
TEST_F(TarsaDocTest, CustomUndoRunsOnEachUndoNotOnRedoAndDiesWithItsStep) {
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
  ASSERT_TRUE(doc_->Undo());
  EXPECT_FALSE(accepted);
  EXPECT_EQ(refused.destroyed, 2);
  watcher_.hook = nullptr;
  doc_->Redo();
  EXPECT_EQ(counts.undone, 1);
  doc_->Undo();
  EXPECT_EQ(counts.undone, 2);
  EXPECT_EQ(counts.destroyed, 0);
  InStep([&] { AddBox(); });
  EXPECT_EQ(counts.destroyed, 1);

  InStep([&] { EXPECT_TRUE(doc_->AddCustomUndoEvent(new CountingUndo(kept))); });
  TarsaApp().CloseDocument(doc_->RuntimeSerialNumber());
  doc_ = nullptr;
  EXPECT_EQ(kept.destroyed, 1);
  EXPECT_EQ(kept.undone, 0);
}

TEST_F(TarsaDocTest, CustomUndoAddedOnAReplacementIsUndoneBeforeIt) {
  CTarsaObject* box = AddBox();
  CTarsaObject* moved = nullptr;
  const CTarsaObject* in_place_at_undo = nullptr;
  UndoCounts counts;
  counts.on_undo = [&] { in_place_at_undo = Find(box); };
  watcher_.hook = [&](const std::string& what, CTarsaObject*) {
    if (what == "replace") doc_->AddCustomUndoEvent(new CountingUndo(counts));
  };
  InStep([&] { moved = Move(box, 1); });
  ASSERT_TRUE(doc_->Undo());
  EXPECT_EQ(counts.undone, 1);
  EXPECT_EQ(in_place_at_undo, moved);
}

TEST_F(TarsaDocTest, KeepsNoEmptyStepAndNestedStepsMakeOne) {
  InStep([] {});
  EXPECT_EQ(doc_->UndoStepCount(), 0);
  const unsigned int outer = doc_->BeginUndoRecord(L"outer");
  EXPECT_EQ(doc_->BeginUndoRecord(L"inner"), outer);
  AddBox();
  EXPECT_TRUE(doc_->EndUndoRecord(outer));
  EXPECT_FALSE(doc_->Undo());
  AddBox();
  EXPECT_TRUE(doc_->EndUndoRecord(outer));
  EXPECT_EQ(doc_->UndoStepCount(), 1);
  ASSERT_TRUE(doc_->Undo());
  EXPECT_TRUE(Walk().empty());
}

TEST_F(TarsaDocTest, OnlyRegisteredEnabledWatchersHear) {
  Recorder disabled, leaving;
  disabled.Register();
  leaving.Register();
  leaving.Enable(true);
  leaving.hook = [&](const std::string&, CTarsaObject*) { leaving.UnRegister(); };
  AddBox();
  AddBox();
  EXPECT_TRUE(disabled.log.empty());
  EXPECT_EQ(leaving.log, (Log{"add"}));
  EXPECT_EQ(watcher_.log, (Log{"add", "add"}));
}

std::vector<unsigned char> Written(const ZK_PointGeometry& geometry) {
  ZK_BinaryMemoryArchive out;
  EXPECT_TRUE(geometry.Write(out));
  return out.Bytes();
}

TEST(ZkPointGeometry, ReadTakesOnlyAValidNumberOfPoints) {
  ZK_BinaryMemoryArchive one_point(Written(ZK_Polyline({{1, 2, 3}})));
  ZK_Polyline line;
  EXPECT_FALSE(line.Read(one_point));
  EXPECT_TRUE(line.Points().empty());
  ZK_BinaryMemoryArchive seven_points(Written(ZK_Polyline(std::vector<ZK_3dPoint>(7))));
  ZK_Box box({1, 2, 3}, {4, 5, 6});
  EXPECT_FALSE(box.Read(seven_points));
  ZK_BinaryMemoryArchive whole_box(Written(box));
  ZK_Box copy;
  ASSERT_TRUE(copy.Read(whole_box));
  EXPECT_EQ(Written(copy), Written(box));  // the eight corners, coordinate for coordinate
}

}  // namespace
