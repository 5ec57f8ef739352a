// FuzzSession: the host with the stance plug-in loaded, for fuzz targets. One input is one session:
// Begin loads the plug-in and makes a document with a few named objects in two stances, End closes
// every document and drops every stance table, so that a target runs at thousands of inputs a
// second in constant memory, however many inputs it is given.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "host/tarsa/standin/tarsa_standin.h"
#include "host/zefkit/standin/zk_point_geometry.h"
#include "operations/dynamic_access.h"
#include "plugin/korvo_plugin.h"

class FuzzSession {
 public:
  // A document with a box "door", a hidden box "frame", a polyline "rail" and a light; stance
  // Front holds all of them, Side the door only. The document is the active one.
  static CTarsaDoc& Begin() {
    CTarsaStandIn::LoadPlugIn(KorvoPlugIn());
    CTarsaDoc& doc = *CTarsaStandIn::NewDocument();
    const ZK_UUID door = Add(doc, L"door", new ZK_Box({0, 0, 0}, {1, 2, 0.1}));
    std::vector<ZK_UUID> all = {
        door, Add(doc, L"frame", new ZK_Box({-1, 0, 0}, {2, 3, 0.2}), TarsaObjectMode::hidden),
        Add(doc, L"rail", new ZK_Polyline({{0, 0, 1}, {4, 0, 1}, {4, 4, 1}}))};
    ZK_Light light;
    light.m_location = {2, 2, 5};
    light.m_direction = {0, 0, -1};
    all.push_back(doc.LightTable()[doc.LightTable().AddLight(light)]->ModelObjectId());
    CKorvoDynamicAccess access;
    // Objects are looked up for each save, since saving replaces them.
    access.SaveStance(doc, L"Front", Objects(doc, all));
    access.SaveStance(doc, L"Side", Objects(doc, {door}));
    CTarsaStandIn::TakeStanceChanges();
    return doc;
  }

  // Closes every document, unloads the plug-in and drops the stance tables of closed documents,
  // which the plug-in otherwise keeps for as long as it is loaded.
  static void End() {
    CTarsaStandIn::Reset();
    KorvoPlugIn().RemoveAllDocData();
  }

  static std::vector<unsigned char> Bytes(const uint8_t* data, size_t size) {
    return std::vector<unsigned char>(data, data + size);
  }

 private:
  static ZK_UUID Add(CTarsaDoc& doc, const wchar_t* name, ZK_Geometry* geometry,
                     TarsaObjectMode mode = TarsaObjectMode::normal) {
    CTarsaObjectAttributes attributes;
    attributes.m_name = name;
    attributes.m_mode = mode;
    auto* object = new CTarsaObject(geometry, attributes);
    doc.AddObject(object);
    return object->ModelObjectId();
  }
  static ZK_SimpleArray<const CTarsaObject*> Objects(CTarsaDoc& doc,
                                                     const std::vector<ZK_UUID>& ids) {
    ZK_SimpleArray<const CTarsaObject*> objects;
    for (const ZK_UUID& id : ids) objects.Append(doc.LookupObject(id));
    return objects;
  }
};
