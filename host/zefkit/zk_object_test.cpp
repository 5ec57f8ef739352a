#include "host/zefkit/zk_object.h"

#include <gtest/gtest.h>

#include <memory>

#include "host/zefkit/standin/zk_testing.h"
#include "host/zefkit/zk_light.h"

namespace {

const ZK_UUID kNoteId = ZK_UuidFromString("F40488F7-064B-40F6-B2CE-668F9E5326DB");
const ZK_UUID kOtherId = ZK_UuidFromString("ADC7C0C5-5B39-42A9-81F0-C185954BE68C");

// User data that counts its live instances.
class Note : public ZK_UserData {
 public:
  static int live;
  explicit Note(const ZK_UUID& id = kNoteId, int copycount = 1) {
    m_userdata_uuid = id;
    m_userdata_copycount = copycount;
    ++live;
  }
  Note(const Note& source) : ZK_UserData(source) { ++live; }
  ~Note() override { --live; }
  const ZK_ClassId* ClassId() const override;
  ZK_Object* __DeepCopy() const override { return new Note(*this); }
};

int Note::live = 0;
ZK_Object* CreateNote() { return new Note(); }
const ZK_ClassId g_note_class("ObjectTestNote", "ZK_UserData", CreateNote,
                              "7BC9D600-F715-4B58-A792-6C07A54ACA8C");
const ZK_ClassId* Note::ClassId() const { return &g_note_class; }

// Every test ends with no note alive: user data dies with its owner, copies included.
class ZkUserData : public testing::Test {
 protected:
  void TearDown() override {
    owned_.reset();
    EXPECT_EQ(Note::live, 0) << "a note outlived its owner";
  }

  Note* Attach(ZK_Object& owner, Note* note) {
    EXPECT_TRUE(owner.AttachUserData(note));
    return note;
  }
  static Note* Find(const ZK_Object& owner, const ZK_UUID& id = kNoteId) {
    return static_cast<Note*>(owner.GetUserData(id));
  }

  std::unique_ptr<ZK_Light> owned_ = std::make_unique<ZK_Light>();
  ZK_Light& light_ = *owned_;
};

TEST_F(ZkUserData, IsFoundByItsIdRefusedWhenItCannotBelongAndCopiedWhenItsCopyCountAllows) {
  Note* note = Attach(light_, new Note());
  EXPECT_EQ(Find(light_), note);
  EXPECT_EQ(Find(light_, kOtherId), nullptr);
  Note duplicate, nil_id(ZK_nil_uuid);
  ZK_Light other;
  EXPECT_FALSE(light_.AttachUserData(&duplicate));
  EXPECT_FALSE(light_.AttachUserData(&nil_id));
  EXPECT_FALSE(light_.AttachUserData(nullptr));
  EXPECT_FALSE(other.AttachUserData(note));
  EXPECT_EQ(note->Owner(), &light_);
  EXPECT_TRUE(light_.DetachUserData(note));
  EXPECT_TRUE(other.AttachUserData(note));
  delete Attach(light_, new Note());  // deleted, it leaves its owner
  EXPECT_EQ(light_.FirstUserData(), nullptr);

  Attach(light_, new Note());
  Attach(light_, new Note(kOtherId, 0));
  ZK_Light copy(light_);
  ASSERT_NE(Find(copy), nullptr);
  EXPECT_NE(Find(copy), Find(light_));
  EXPECT_EQ(Find(copy, kOtherId), nullptr);

  ZK_Light assigned;
  Attach(assigned, new Note(kOtherId));
  ASSERT_TRUE(assigned.CopyFrom(&light_));
  EXPECT_EQ(Find(assigned)->Owner(), &assigned);
  EXPECT_EQ(Find(assigned, kOtherId), nullptr);
}

TEST_F(ZkUserData, FollowsEveryTransformOfItsLightAndChangesNothingWhenItFails) {
  Note* first = Attach(light_, new Note());
  Note* second = Attach(light_, new Note(kOtherId));
  light_.m_location = {1, 0, 0};
  light_.m_direction = {1, 0, 0};
  const ZK_Xform xform = ZK_Xform::Translation(10, 0, 0) *
                         ZK_Xform::Rotation(1.5707963267948966, {0, 0, 1}, {0, 0, 0});
  ASSERT_TRUE(light_.Transform(xform));
  EXPECT_NEAR(light_.m_location.x, 10, 1e-12);
  EXPECT_NEAR(light_.m_location.y, 1, 1e-12);
  EXPECT_NEAR(light_.m_direction.x, 0, 1e-12);  // rotated, not translated
  EXPECT_EQ(first->m_userdata_xform, xform);    // each piece handed the transform once
  EXPECT_EQ(second->m_userdata_xform, xform);

  ZK_TestFailUserDataTransform fail;
  EXPECT_FALSE(light_.TransformUserData(ZK_Xform::Scale(2, 2, 2)));
  EXPECT_TRUE(light_.Transform(ZK_Xform::Translation(0, 0, 4)));  // the light still moves
  EXPECT_EQ(light_.m_location.z, 4);
  EXPECT_EQ(second->m_userdata_xform, xform);
}

// Two objects with the same data check the same, whatever user data they carry; any change of
// the data shows.
TEST_F(ZkUserData, DataCrcFollowsTheDataAlone) {
  ZK_Light same;
  same.m_location = light_.m_location = {1, 2, 3};
  Attach(light_, new Note());
  EXPECT_EQ(light_.DataCRC(0), same.DataCRC(0));
  same.m_intensity += 1e-9;
  EXPECT_NE(light_.DataCRC(0), same.DataCRC(0));
  EXPECT_GT(light_.SizeOf(), same.SizeOf());  // the note counts
}

TEST(ZkClassId, FindsClassesByNameAndKnowsTheirBases) {
  const ZK_ClassId* light = ZK_ClassId::ClassId("ZK_Light");
  const ZK_ClassId* geometry = ZK_ClassId::ClassId("ZK_Geometry");
  ASSERT_TRUE(light && geometry);
  EXPECT_EQ(ZK_ClassId::ClassId("NoSuchClass"), nullptr);
  EXPECT_EQ(geometry->Create(), nullptr);  // abstract
  std::unique_ptr<ZK_Object> lamp(light->Create());
  ASSERT_NE(ZK_Light::Cast(lamp.get()), nullptr);
  EXPECT_TRUE(lamp->IsKindOf(geometry) && lamp->IsKindOf(ZK_ClassId::ClassId("ZK_Object")));
  EXPECT_EQ(ZK_UserData::Cast(lamp.get()), nullptr);
  Note note;  // registered by name with ZK_UserData as its base
  EXPECT_EQ(ZK_UserData::Cast(&note), &note);
  EXPECT_EQ(ZK_Geometry::Cast(&note), nullptr);
}

}  // namespace
