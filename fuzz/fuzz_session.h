// FuzzSession: the host with the stance plug-in loaded, for fuzz targets. One input is one session:
// Begin loads the plug-in and makes a document with a few named objects in two stances, End closes
// every document and drops every stance table, so that a target runs at thousands of inputs a
// second in constant memory, however many inputs it is given.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "data/placement_record.h"
#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "plugin/korvo_plugin.h"

class FuzzSession {
 public:
  // A document with a box "door", a hidden box "frame", a polyline "rail" and a light; stance
  // Front holds all of them, Side the door only. The document is the active one.
  static CTarsaDoc& Begin() {
    CTarsaStandIn::LoadPlugIn(KorvoPlugIn());
    CTarsaDoc& doc = *CTarsaStandIn::NewDocument();
    CKorvoDocData& table = *KorvoPlugIn().DocData(doc.RuntimeSerialNumber());
    table.Add(kFront, L"Front");
    table.Add(kSide, L"Side");
    // Records made as a save makes them, without the undo steps and replacements of one, which
    // would cost more than most inputs do.
    Add(doc, L"door", new ZK_Box({0, 0, 0}, {1, 2, 0.1}), TarsaObjectMode::normal, true);
    Add(doc, L"frame", new ZK_Box({-1, 0, 0}, {2, 3, 0.2}), TarsaObjectMode::hidden);
    Add(doc, L"rail", new ZK_Polyline({{0, 0, 1}, {4, 0, 1}, {4, 4, 1}}));
    ZK_Light light;
    light.m_location = {2, 2, 5};
    light.m_direction = {0, 0, -1};
    light.AttachUserData(Record(false));
    doc.LightTable().AddLight(light);
    CTarsaStandIn::TakeStanceChanges();
    return doc;
  }

  // Closes every document, unloads the plug-in and drops the stance tables of closed documents,
  // which the plug-in otherwise keeps while it is loaded: a session frees all it allocated, so
  // that the fuzzer's leak check sees balanced allocations and has no reason to scan.
  static void End() {
    CTarsaStandIn::Reset();
    KorvoPlugIn().RemoveAllDocData();
  }

  static std::vector<unsigned char> Bytes(const uint8_t* data, size_t size) {
    return std::vector<unsigned char>(data, data + size);
  }

 private:
  static inline const ZK_UUID kFront = ZK_UuidFromString("1E2D3C4B-5A69-4788-9766-554433221100");
  static inline const ZK_UUID kSide = ZK_UuidFromString("2F3E4D5C-6B7A-4899-8877-665544332211");

  // A record moved once since Front was saved, and in Side too when `side`.
  static CKorvoUserData* Record(bool side) {
    auto* record = new CKorvoUserData();
    record->Add(kFront, ZK_Xform());
    if (side) record->Add(kSide, ZK_Xform::Translation(0, 0, 1));
    record->Transform(ZK_Xform::Translation(1, 0, 0));
    return record;
  }
  static void Add(CTarsaDoc& doc, const wchar_t* name, ZK_Geometry* geometry,
                  TarsaObjectMode mode = TarsaObjectMode::normal, bool side = false) {
    CTarsaObjectAttributes attributes;
    attributes.m_name = name;
    attributes.m_mode = mode;
    geometry->AttachUserData(Record(side));
    doc.AddObject(new CTarsaObject(geometry, attributes));
  }
};
