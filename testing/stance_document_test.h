// A test fixture for scenarios on a real document of the host stand-in: make objects, move them,
// save and restore stances through the plug-in's host interface, and watch what the host sees.
// Objects are named by id, since every edit replaces the object.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <string>
#include <vector>

#include "data/placement_record.h"
#include "data/stance_table.h"
#include "host/tarsa/tarsa_get.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "operations/dynamic_access.h"
#include "plugin/korvo_plugin.h"
#include "testing/host_session_test.h"
#include "testing/stand_ins.h"

class StanceDocumentTest : public HostSessionTest {
 protected:
  void SetUp() override {
    ASSERT_TRUE(CTarsaStandIn::LoadPlugIn(KorvoPlugIn()));
    doc_ = CTarsaStandIn::NewDocument();
    serial_ = doc_->RuntimeSerialNumber();
  }
  void TearDown() override {
    for (const std::string& path : paths_) std::remove(path.c_str());
    HostSessionTest::TearDown();
  }

  // A model file's path of this test's own; the file is removed when the test ends.
  std::string ModelPath(const std::string& name = "model") {
    paths_.push_back(testing::TempDir() + "korvo_" + name + "_" + std::to_string(getpid()) +
                     ".tsm");
    return paths_.back();
  }
  // Saves the document, this test's unless another is given, as a model file.
  void SaveModel(const std::string& path, CTarsaDoc* doc = nullptr) {
    std::wstring error;
    ASSERT_TRUE(TsWriteModelFile(doc ? *doc : *doc_, path, error)) << ZK_wString(error).ToUtf8();
  }
  // Merges a model file into the document, or attaches it as a reference, as one undo step.
  bool ReadModel(const std::string& path, bool reference = false) {
    std::wstring error;
    bool read = false;
    Step([&] { read = TsReadModelFile(*doc_, path, !reference, reference, error); });
    return read;
  }

  // How often StanceChanged was called for this test's document since the last call.
  int TakeStanceChanges() {
    const std::vector<unsigned int> changes = CTarsaStandIn::TakeStanceChanges();
    return static_cast<int>(std::count(changes.begin(), changes.end(), serial_));
  }

  ZK_UUID Add(ZK_Geometry* geometry, TarsaObjectMode mode = TarsaObjectMode::normal) {
    return AddNamed(L"", geometry, mode);
  }
  // Adds an object with a name; a unit box when no geometry is given.
  ZK_UUID AddNamed(const wchar_t* name, ZK_Geometry* geometry = nullptr,
                   TarsaObjectMode mode = TarsaObjectMode::normal) {
    CTarsaObjectAttributes attributes;
    attributes.m_name = name;
    attributes.m_mode = mode;
    auto* object =
        new CTarsaObject(geometry ? geometry : new ZK_Box({0, 0, 0}, {1, 1, 1}), attributes);
    EXPECT_TRUE(doc_->AddObject(object));
    return object->ModelObjectId();
  }
  ZK_UUID AddBox(TarsaObjectMode mode = TarsaObjectMode::normal) {
    return Add(new ZK_Box({1, 2, 3}, {4, 6, 8}), mode);
  }
  // A unit box built with construction history, which a restore never moves.
  ZK_UUID AddBuilt() {
    auto* object = new CTarsaObject(new ZK_Box({0, 0, 0}, {1, 1, 1}));
    object->SetHistoryRecord(new CTarsaHistoryRecord(L"Loft"));
    EXPECT_TRUE(doc_->AddObject(object));
    return object->ModelObjectId();
  }
  ZK_UUID AddLight() {
    ZK_Light light;
    light.m_location = {5, 5, 10};
    light.m_direction = {0, 1, -1};
    const int index = doc_->LightTable().AddLight(light);
    return (*doc_->LightTable()[index]).ModelObjectId();
  }

  const CTarsaObject* Object(const ZK_UUID& id) const { return doc_->LookupObject(id); }
  // The ids of the document's objects, in document order.
  std::vector<ZK_UUID> AllObjects() const {
    std::vector<ZK_UUID> ids;
    CTarsaObjectIterator it(*doc_);
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      ids.push_back(object->ModelObjectId());
    }
    return ids;
  }
  // The objects added since `before` was taken, in document order.
  std::vector<ZK_UUID> AddedSince(const std::vector<ZK_UUID>& before) const {
    std::vector<ZK_UUID> added;
    for (const ZK_UUID& id : AllObjects()) {
      if (std::find(before.begin(), before.end(), id) == before.end()) added.push_back(id);
    }
    return added;
  }
  // The answers to an object prompt that pick these objects by id, then end the picking.
  static std::wstring Pick(const std::vector<ZK_UUID>& ids) {
    std::wstring words;
    for (const ZK_UUID& id : ids) words += ZK_UuidToString(id).Text() + L" ";
    return words + L"_Enter";
  }
  CKorvoDocData& Table() const { return *KorvoPlugIn().DocData(serial_); }
  // Stances straight into the table, without objects, as they are found after their objects went.
  void AddEntries(std::initializer_list<const wchar_t*> names) {
    for (const wchar_t* name : names) {
      ZK_UUID id;
      ASSERT_TRUE(ZK_CreateUuid(id));
      ASSERT_EQ(Table().Add(id, name), 1);
    }
  }
  // The id of the stance of that name; nil when there is none.
  ZK_UUID StanceId(const wchar_t* name) const {
    const CKorvoDocData::USER_DATA* stance = Table().FindByName(name);
    return stance ? stance->m_id : ZK_nil_uuid;
  }
  // The stances' names, in table order; of this test's document unless another is given.
  std::vector<std::wstring> Names(CTarsaDoc* doc = nullptr) const {
    const CKorvoDocData& table = doc ? *KorvoPlugIn().DocData(doc->RuntimeSerialNumber()) : Table();
    std::vector<std::wstring> names;
    for (int i = 0; i < table.Count(); ++i) names.push_back(table.m_entries[i]->m_name.Text());
    return names;
  }
  // What the host gets as the objects of the stance of that name, in document order: none when
  // there is no such stance. In this test's document unless another is given.
  std::vector<ZK_UUID> Members(const wchar_t* name, CTarsaDoc* doc = nullptr) {
    doc = doc ? doc : doc_;
    std::vector<ZK_UUID> ids;
    const auto* stance = KorvoPlugIn().DocData(doc->RuntimeSerialNumber())->FindByName(name);
    ZK_SimpleArray<const CTarsaObject*> members;
    if (stance == nullptr || !access_.GetStanceObjects(*doc, stance->m_id, members)) return ids;
    for (int i = 0; i < members.Count(); ++i) ids.push_back(members[i]->ModelObjectId());
    return ids;
  }
  const CKorvoUserData* RecordOf(const ZK_UUID& id) const { return CKorvoUserData::Of(Object(id)); }
  // Where an object is: a geometry's points, or a light's location and the tip of its direction.
  std::vector<ZK_3dPoint> Placement(const ZK_UUID& id) const {
    const ZK_Geometry* geometry = Object(id)->Geometry();
    if (const ZK_Light* light = ZK_Light::Cast(geometry)) {
      const ZK_3dPoint& p = light->m_location;
      const ZK_3dVector& d = light->m_direction;
      return {p, {p.x + d.x, p.y + d.y, p.z + d.z}};
    }
    return ZK_PointGeometry::Cast(geometry)->Points();
  }
  // Where each of the objects is, one after another.
  std::vector<ZK_3dPoint> Placements(const std::vector<ZK_UUID>& ids) const {
    std::vector<ZK_3dPoint> points;
    for (const ZK_UUID& id : ids) {
      const std::vector<ZK_3dPoint> placed = Placement(id);
      points.insert(points.end(), placed.begin(), placed.end());
    }
    return points;
  }
  static void ExpectNear(const std::vector<ZK_3dPoint>& a, const std::vector<ZK_3dPoint>& b) {
    ASSERT_EQ(a.size(), b.size());
    for (size_t i = 0; i < a.size(); ++i) {
      EXPECT_NEAR(a[i].x, b[i].x, 1e-9);
      EXPECT_NEAR(a[i].y, b[i].y, 1e-9);
      EXPECT_NEAR(a[i].z, b[i].z, 1e-9);
    }
  }

  void Move(const ZK_UUID& id, const ZK_Xform& xform) {
    ASSERT_NE(doc_->TransformObject(CTarsaObjRef(Object(id)), xform, true, true), nullptr);
  }
  ZK_SimpleArray<const CTarsaObject*> Objects(const std::vector<ZK_UUID>& ids) const {
    ZK_SimpleArray<const CTarsaObject*> objects;
    for (const ZK_UUID& id : ids) objects.Append(Object(id));
    return objects;
  }
  ZK_UUID Save(const wchar_t* name, const std::vector<ZK_UUID>& ids) {
    return access_.SaveStance(*doc_, name, Objects(ids));
  }
  // Runs `action` as one undo step, as a command would.
  template <class Action>
  void Step(Action&& action) {
    const unsigned int step = doc_->BeginUndoRecord(L"test step");
    action();
    doc_->EndUndoRecord(step);
  }

  CTarsaDoc* doc_ = nullptr;
  unsigned int serial_ = 0;
  CKorvoDynamicAccess access_;

 private:
  std::vector<std::string> paths_;
};
