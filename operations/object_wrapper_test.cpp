#include "operations/object_wrapper.h"

#include <tuple>

#include "events/event_watcher.h"
#include "testing/stance_document_test.h"

namespace {

const ZK_UUID kStance = ZK_UuidFromString("0A1B2C3D-4E5F-4061-8273-8495A6B7C8D9");

class ObjectWrapperTest : public StanceDocumentTest {
 protected:
  // Gives an object without a record an entry for kStance holding `stored`, committed into the
  // document: the wrapper's one working copy becomes the object.
  void Store(const ZK_UUID& id, const ZK_Xform& stored) {
    CKorvoObjectWrapper wrapper(Object(id));
    EXPECT_EQ(wrapper.GetRecord(), nullptr);
    CKorvoUserData* record = wrapper.GetEditableRecord();
    EXPECT_EQ(wrapper.GetEditableRecord(), record);
    record->Add(kStance, stored);
    EXPECT_TRUE(wrapper.Commit());
    EXPECT_EQ(wrapper.m_working_copy, nullptr);
    EXPECT_EQ(wrapper.m_object, Object(id));
  }
  bool Apply(const ZK_UUID& id) { return CKorvoObjectWrapper(Object(id)).ApplyStance(kStance); }
};

// Notes whether the plug-in's watcher was enabled while the host replaced an object.
class ReplacementSpy : public CTarsaEventWatcher {
 public:
  void OnReplaceObject(CTarsaDoc&, CTarsaObject&, CTarsaObject&) override {
    plug_in_watcher_enabled = KorvoPlugIn().EventWatcher()->IsEnabled();
  }
  bool plug_in_watcher_enabled = true;
};

// A box moved by `moved` and restored to `saved`: within 0.001 in every element it stays where it
// is (the very object); otherwise it lands exactly on the saved placement, with the bottom row of
// the move 0, 0, 0, 1 whatever noise the saved transform carries there, and the move taken out of
// its last transform once, never again. Each commit pauses the watcher and leaves it as it was. A
// committed light is the replacement in the light table; one outside the table or the document
// can neither be committed nor moved back to a stance, and its working copy goes.
TEST_F(ObjectWrapperTest, ARestoreLandsExactlyOnTheSavedPlacementOrLeavesTheObjectAlone) {
  CKorvoEventWatcher& watcher = *KorvoPlugIn().EventWatcher();
  ReplacementSpy spy;
  spy.Register();
  spy.Enable(true);
  watcher.Register();
  ZK_Xform noisy = ZK_Xform::Translation(3, 0, 0);
  const double noise[] = {1e-17, -1e-17, 2e-17, 1 + 1e-15};  // its bottom row
  for (int j = 0; j < 4; ++j) noisy(3, j) = noise[j];
  const std::tuple<ZK_Xform, ZK_Xform, ZK_Xform, bool> cases[] = {
      {ZK_Xform(), ZK_Xform::Translation(0.000999, 0, 0), ZK_Xform(), false},
      {ZK_Xform(), ZK_Xform::Translation(0.001, 0, 0), ZK_Xform::Translation(0.001, 0, 0), true},
      {ZK_Xform(), noisy, ZK_Xform::Translation(3, 0, 0), true},
      {ZK_Xform::Translation(5, -2, 7), ZK_Xform::Translation(1, 2, 3),
       ZK_Xform::Translation(1, 2, 3), true},
  };
  bool enabled = false;
  for (const auto& [moved, saved, lands, replaced] : cases) {
    watcher.Enable(enabled = !enabled);
    const ZK_UUID box = AddBox();
    Store(box, saved);
    EXPECT_FALSE(spy.plug_in_watcher_enabled);
    EXPECT_EQ(watcher.IsEnabled(), enabled);
    if (!moved.IsIdentity()) Move(box, moved);
    const CTarsaObject* before = Object(box);
    EXPECT_TRUE(Apply(box));
    EXPECT_EQ(Object(box) != before, replaced);
    EXPECT_EQ(RecordOf(box)->m_accumulated_xform, lands);
    EXPECT_TRUE(RecordOf(box)->m_last_xform.IsIdentity());
  }
  // Without an entry for the stance, or a record, or an object, nothing is restored or replaced.
  const ZK_UUID box = AddBox();
  Store(box, ZK_Xform::Translation(1, 0, 0));
  CKorvoObjectWrapper(Object(box)).GetEditableRecord()->Remove(kStance);
  const CTarsaObject* before = Object(box);
  EXPECT_FALSE(Apply(box) || Apply(AddBox()) || CKorvoObjectWrapper(nullptr).ApplyStance(kStance));
  EXPECT_EQ(Object(box), before);
  watcher.UnRegister();

  const ZK_UUID light = AddLight();
  before = Object(light);
  Store(light, ZK_Xform());
  EXPECT_NE(Object(light), before);
  EXPECT_TRUE(RecordOf(light)->HasEntry(kStance));
  EXPECT_EQ(CTarsaLight::Cast(Object(light))->Light().m_light_index, 0);
  ZK_Light kernel_light;  // the move back starts with the commit
  CTarsaLight loose(kernel_light);
  CKorvoObjectWrapper outside(&loose);
  outside.GetEditableRecord()->Add(kStance, ZK_Xform::Translation(1, 0, 0));
  EXPECT_FALSE(outside.ApplyStance(kStance));
  EXPECT_EQ(outside.m_working_copy, nullptr);
  EXPECT_EQ(doc_->LightTable().LightCount(), 1);

  CTarsaStandIn::CloseDocument(serial_);  // with no document at all, the working copy goes too
  ASSERT_NE(outside.GetEditableRecord(), nullptr);
  EXPECT_FALSE(outside.Commit());
  EXPECT_EQ(outside.m_working_copy, nullptr);
}

}  // namespace
