#include "host/tarsa/standin/tarsa_object_commands.h"

#include <cmath>
#include <functional>
#include <vector>

#include "host/tarsa/standin/tarsa_prompts.h"
#include "host/tarsa/tarsa_app.h"
#include "host/tarsa/tarsa_command.h"
#include "host/zefkit/standin/zk_point_geometry.h"

namespace {

const double kPi = 3.14159265358979323846;

class HostCommand : public CTarsaCommand {
 public:
  HostCommand(const wchar_t* name, const char* id) : m_name(name), m_id(ZK_UuidFromString(id)) {}
  ZK_UUID CommandId() const override { return m_id; }
  const wchar_t* EnglishCommandName() override { return m_name; }
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaDoc* doc = context.Document();
    return doc ? Run(*doc) : failure;
  }

 protected:
  virtual result Run(CTarsaDoc& doc) = 0;

 private:
  const wchar_t* m_name;
  ZK_UUID m_id;
};

// Adds one object made from what the user answers: the name first, then `shape`'s questions.
class AddCommand : public HostCommand {
 public:
  using Shape = std::function<CTarsaObject*(const CTarsaObjectAttributes&)>;
  AddCommand(const wchar_t* name, const char* id, Shape shape)
      : HostCommand(name, id), m_shape(std::move(shape)) {}

 protected:
  result Run(CTarsaDoc& doc) override {
    CTarsaObjectAttributes attributes;
    if (!TsAskForName(L"Name of the new object <none>", attributes.m_name)) return cancel;
    CTarsaObject* object = m_shape(attributes);
    if (object == nullptr) return cancel;
    if (doc.AddObject(object)) return success;
    delete object;
    return failure;
  }

 private:
  Shape m_shape;
};

CTarsaObject* NewPoint(const CTarsaObjectAttributes& attributes) {
  ZK_3dPoint at;
  if (!TsAskForPoint(L"Location x,y,z", at)) return nullptr;
  return new CTarsaObject(new ZK_Point(at), attributes);
}

CTarsaObject* NewPolyline(const CTarsaObjectAttributes& attributes) {
  std::vector<ZK_3dPoint> points;
  for (;;) {
    ZK_3dPoint point;
    const int answer = TsAskForNextPoint(
        points.size() < 2 ? L"Point x,y,z" : L"Next point x,y,z <Enter: done>", point);
    if (answer < 0) return nullptr;
    if (answer == 0 && points.size() >= 2) break;
    if (answer == 1) points.push_back(point);
  }
  return new CTarsaObject(new ZK_Polyline(points), attributes);
}

CTarsaObject* NewBox(const CTarsaObjectAttributes& attributes) {
  ZK_3dPoint a, b;
  if (!TsAskForPoint(L"First corner x,y,z", a) || !TsAskForPoint(L"Opposite corner x,y,z", b)) {
    return nullptr;
  }
  return new CTarsaObject(new ZK_Box(a, b), attributes);
}

CTarsaObject* NewLight(const CTarsaObjectAttributes& attributes) {
  ZK_Light light;
  if (!TsAskForPoint(L"Location x,y,z", light.m_location)) return nullptr;
  for (;;) {
    if (!TsAskForXyz(L"Direction x,y,z", light.m_direction)) return nullptr;
    const ZK_3dVector& d = light.m_direction;
    if (d.x != 0 || d.y != 0 || d.z != 0) break;
    TarsaApp().Print(L"A light needs a direction other than 0,0,0.\n");
  }
  return new CTarsaLight(light, attributes);
}

// Asks for objects, then runs `Change` on them.
class ObjectsCommand : public HostCommand {
 public:
  using HostCommand::HostCommand;

 protected:
  result Run(CTarsaDoc& doc) override {
    const std::vector<const CTarsaObject*> objects =
        TsAskForObjects(L"Select objects", Preselect());
    if (objects.empty()) return cancel;
    return Change(doc, objects);
  }
  virtual bool Preselect() const { return true; }
  virtual result Change(CTarsaDoc& doc, const std::vector<const CTarsaObject*>& objects) = 0;
};

// Rotate and Scale: a transform asked for after the objects.
class TransformCommand : public ObjectsCommand {
 public:
  TransformCommand(const wchar_t* name, const char* id, bool rotate)
      : ObjectsCommand(name, id), m_rotate(rotate) {}

 protected:
  result Change(CTarsaDoc& doc, const std::vector<const CTarsaObject*>& objects) override {
    ZK_Xform xform;
    if (!AskForTransform(xform)) return cancel;
    for (const CTarsaObject* object : objects) doc.TransformObject(CTarsaObjRef(object), xform);
    return success;
  }

 private:
  bool AskForTransform(ZK_Xform& xform) const {
    double value = 0;
    ZK_3dPoint center;
    if (m_rotate) {
      if (!TsAskForNumber(L"Angle in degrees", value) || !TsAskForPoint(L"Center x,y,z", center)) {
        return false;
      }
      xform = ZK_Xform::Rotation(value * kPi / 180.0, ZK_3dVector{0, 0, 1}, center);
      return true;
    }
    for (;;) {
      if (!TsAskForNumber(L"Scale factor", value)) return false;
      if (value != 0) break;
      TarsaApp().Print(L"The scale factor cannot be 0.\n");
    }
    if (!TsAskForPoint(L"Center x,y,z", center)) return false;
    xform = ZK_Xform::Translation(center.x, center.y, center.z) *
            ZK_Xform::Scale(value, value, value) *
            ZK_Xform::Translation(-center.x, -center.y, -center.z);
    return true;
  }

  bool m_rotate;
};

void SetMode(CTarsaDoc& doc, const CTarsaObject& object, TarsaObjectMode mode) {
  CTarsaObjectAttributes attributes = object.Attributes();
  attributes.m_mode = mode;
  doc.ModifyObjectAttributes(CTarsaObjRef(&object), attributes);
}

// Hide and Lock: the objects get the mode.
class ModeCommand : public ObjectsCommand {
 public:
  ModeCommand(const wchar_t* name, const char* id, TarsaObjectMode mode)
      : ObjectsCommand(name, id), m_mode(mode) {}

 protected:
  result Change(CTarsaDoc& doc, const std::vector<const CTarsaObject*>& objects) override {
    for (const CTarsaObject* object : objects) SetMode(doc, *object, m_mode);
    return success;
  }

 private:
  TarsaObjectMode m_mode;
};

// Show and Unlock: every object of the mode back to normal.
class NormalCommand : public HostCommand {
 public:
  NormalCommand(const wchar_t* name, const char* id, TarsaObjectMode from)
      : HostCommand(name, id), m_from(from) {}

 protected:
  result Run(CTarsaDoc& doc) override {
    CTarsaObjectIterator it(doc, CTarsaObject::locked_object | CTarsaObject::hidden_object);
    it.IncludeLights(true);
    it.EnableVisibleFilter(false);
    std::vector<const CTarsaObject*> changed;
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      if (object->Attributes().m_mode == m_from) changed.push_back(object);
    }
    for (const CTarsaObject* object : changed) SetMode(doc, *object, TarsaObjectMode::normal);
    TarsaApp().Print(
        m_from == TarsaObjectMode::hidden ? L"%d objects shown.\n" : L"%d objects unlocked.\n",
        static_cast<int>(changed.size()));
    return success;
  }

 private:
  TarsaObjectMode m_from;
};

class HistoryCommand : public ObjectsCommand {
 public:
  using ObjectsCommand::ObjectsCommand;

 protected:
  result Change(CTarsaDoc& doc, const std::vector<const CTarsaObject*>& objects) override {
    for (const CTarsaObject* object : objects) {
      if (object->HistoryRecord()) continue;
      CTarsaObject* copy = object->Duplicate();
      copy->SetHistoryRecord(new CTarsaHistoryRecord(L"History"));
      if (!doc.ReplaceObject(CTarsaObjRef(object), copy)) delete copy;
    }
    return success;
  }
};

class SelectCommand : public ObjectsCommand {
 public:
  using ObjectsCommand::ObjectsCommand;

 protected:
  bool Preselect() const override { return false; }
  result Change(CTarsaDoc&, const std::vector<const CTarsaObject*>& objects) override {
    for (const CTarsaObject* object : objects) object->Select(true, true, true, false);
    return success;
  }
};

class SelAllCommand : public HostCommand {
 public:
  SelAllCommand(const wchar_t* name, const char* id, bool select)
      : HostCommand(name, id), m_select(select) {}

 protected:
  result Run(CTarsaDoc& doc) override {
    if (!m_select) {
      doc.UnselectAll();
      return success;
    }
    CTarsaObjectIterator it(doc, CTarsaObject::normal_object);
    it.IncludeLights(true);
    for (const CTarsaObject* object = it.First(); object; object = it.Next()) {
      object->Select(true, true, true, false);
    }
    return success;
  }

 private:
  bool m_select;
};

AddCommand thePointCommand(L"Point", "1A2B3C4D-0001-4E5F-8A6B-7C8D9E0F1A2B", NewPoint);
AddCommand thePolylineCommand(L"Polyline", "1A2B3C4D-0002-4E5F-8A6B-7C8D9E0F1A2B", NewPolyline);
AddCommand theBoxCommand(L"Box", "1A2B3C4D-0003-4E5F-8A6B-7C8D9E0F1A2B", NewBox);
AddCommand theLightCommand(L"Light", "1A2B3C4D-0004-4E5F-8A6B-7C8D9E0F1A2B", NewLight);
TransformCommand theRotateCommand(L"Rotate", "1A2B3C4D-0005-4E5F-8A6B-7C8D9E0F1A2B", true);
TransformCommand theScaleCommand(L"Scale", "1A2B3C4D-0006-4E5F-8A6B-7C8D9E0F1A2B", false);
ModeCommand theHideCommand(L"Hide", "1A2B3C4D-0007-4E5F-8A6B-7C8D9E0F1A2B",
                           TarsaObjectMode::hidden);
ModeCommand theLockCommand(L"Lock", "1A2B3C4D-0008-4E5F-8A6B-7C8D9E0F1A2B",
                           TarsaObjectMode::locked);
NormalCommand theShowCommand(L"Show", "1A2B3C4D-0009-4E5F-8A6B-7C8D9E0F1A2B",
                             TarsaObjectMode::hidden);
NormalCommand theUnlockCommand(L"Unlock", "1A2B3C4D-000A-4E5F-8A6B-7C8D9E0F1A2B",
                               TarsaObjectMode::locked);
HistoryCommand theHistoryCommand(L"History", "1A2B3C4D-000B-4E5F-8A6B-7C8D9E0F1A2B");
SelectCommand theSelectCommand(L"Select", "1A2B3C4D-000C-4E5F-8A6B-7C8D9E0F1A2B");
SelAllCommand theSelAllCommand(L"SelAll", "1A2B3C4D-000D-4E5F-8A6B-7C8D9E0F1A2B", true);
SelAllCommand theSelNoneCommand(L"SelNone", "1A2B3C4D-000E-4E5F-8A6B-7C8D9E0F1A2B", false);

}  // namespace
