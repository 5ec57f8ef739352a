#include "host/tarsa/standin/tarsa_modeling_commands.h"

#include <vector>

#include "host/tarsa/standin/tarsa_prompts.h"
#include "host/tarsa/tarsa_command.h"
#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/standin/zk_point_geometry.h"

namespace {

// The pieces an object explodes into, or none.
std::vector<ZK_Geometry*> Pieces(const CTarsaObject& object) {
  const ZK_PointGeometry* shape = ZK_PointGeometry::Cast(object.Geometry());
  std::vector<ZK_Geometry*> pieces;
  if (shape == nullptr) return pieces;
  const std::vector<ZK_3dPoint>& p = shape->Points();
  if (ZK_Box::kObjectType == object.ObjectType()) {
    static const int kEdges[12][2] = {{0, 1}, {1, 2}, {2, 3}, {3, 0}, {4, 5}, {5, 6},
                                      {6, 7}, {7, 4}, {0, 4}, {1, 5}, {2, 6}, {3, 7}};
    for (const auto& edge : kEdges) pieces.push_back(new ZK_Polyline({p[edge[0]], p[edge[1]]}));
  } else if (ZK_Polyline::kObjectType == object.ObjectType() && p.size() > 2) {
    for (size_t i = 0; i + 1 < p.size(); ++i) pieces.push_back(new ZK_Polyline({p[i], p[i + 1]}));
  }
  return pieces;
}

// The same shape made anew, without user data; null for what cannot be rebuilt.
ZK_Geometry* Rebuilt(const CTarsaObject& object) {
  const ZK_PointGeometry* shape = ZK_PointGeometry::Cast(object.Geometry());
  if (shape == nullptr) return nullptr;
  auto* copy = ZK_Geometry::Cast(shape->__DeepCopy());
  if (copy) copy->PurgeUserData();
  return copy;
}

CTarsaObjectAttributes NewAttributes(const CTarsaObject& original) {
  CTarsaObjectAttributes attributes = original.Attributes();
  attributes.m_uuid = ZK_nil_uuid;
  return attributes;
}

class ModelingCommand : public CTarsaCommand {
 public:
  ModelingCommand(const wchar_t* name, const char* id)
      : m_name(name), m_id(ZK_UuidFromString(id)) {}
  ZK_UUID CommandId() const override { return m_id; }
  const wchar_t* EnglishCommandName() override { return m_name; }
  result Execute(const CTarsaCommandContext& context) override {
    CTarsaDoc* doc = context.Document();
    if (doc == nullptr) return failure;
    const std::vector<const CTarsaObject*> objects = TsAskForObjects(L"Select objects");
    if (objects.empty()) return cancel;
    return Run(*doc, objects);
  }

 protected:
  virtual result Run(CTarsaDoc& doc, const std::vector<const CTarsaObject*>& objects) = 0;

 private:
  const wchar_t* m_name;
  ZK_UUID m_id;
};

class MoveCommand : public ModelingCommand {
 public:
  MoveCommand(const wchar_t* name, const char* id, bool keep_original)
      : ModelingCommand(name, id), m_keep_original(keep_original) {}

 protected:
  result Run(CTarsaDoc& doc, const std::vector<const CTarsaObject*>& objects) override {
    ZK_3dVector offset;
    if (!TsAskForXyz(L"Offset x,y,z", offset)) return cancel;
    const ZK_Xform move = ZK_Xform::Translation(offset.x, offset.y, offset.z);
    for (const CTarsaObject* object : objects) {
      doc.TransformObject(CTarsaObjRef(object), move, !m_keep_original, false, false);
    }
    return success;
  }

 private:
  bool m_keep_original;
};

// A command that does the same to each object picked, one object at a time.
class ObjectCommand : public ModelingCommand {
 public:
  using Action = void (*)(CTarsaDoc& doc, const CTarsaObject& object);
  ObjectCommand(const wchar_t* name, const char* id, Action action)
      : ModelingCommand(name, id), m_action(action) {}

 protected:
  result Run(CTarsaDoc& doc, const std::vector<const CTarsaObject*>& objects) override {
    for (const CTarsaObject* object : objects) m_action(doc, *object);
    return success;
  }

 private:
  Action m_action;
};

void Delete(CTarsaDoc& doc, const CTarsaObject& object) { doc.DeleteObject(CTarsaObjRef(&object)); }

// Each piece becomes a new object; an object without pieces stays.
void Explode(CTarsaDoc& doc, const CTarsaObject& object) {
  const std::vector<ZK_Geometry*> pieces = Pieces(object);
  if (pieces.empty()) return;
  for (ZK_Geometry* piece : pieces) {
    auto* added = new CTarsaObject(piece, NewAttributes(object));
    if (!doc.AddObject(added)) delete added;
  }
  doc.DeleteObject(CTarsaObjRef(&object));
}

// The rebuilt shape takes the object's place in one replacement.
void Replace(CTarsaDoc& doc, const CTarsaObject& object) {
  ZK_Geometry* rebuilt = Rebuilt(object);
  if (rebuilt == nullptr) return;
  auto* replacement = new CTarsaObject(rebuilt, object.Attributes());
  if (!doc.ReplaceObject(CTarsaObjRef(&object), replacement)) delete replacement;
}

void Duplicate(CTarsaDoc& doc, const CTarsaObject& object) {
  CTarsaObject* copy = object.Duplicate();
  if (copy == nullptr) return;
  copy->SetAttributes(NewAttributes(object));
  if (!doc.AddObject(copy)) delete copy;
}

// The rebuilt shape comes as a new object after the old one is deleted: two steps, not one.
void Rebuild(CTarsaDoc& doc, const CTarsaObject& object) {
  ZK_Geometry* rebuilt = Rebuilt(object);
  if (rebuilt == nullptr) return;
  const CTarsaObjectAttributes attributes = NewAttributes(object);
  doc.DeleteObject(CTarsaObjRef(&object));
  auto* added = new CTarsaObject(rebuilt, attributes);
  if (!doc.AddObject(added)) delete added;
}

MoveCommand theMoveCommand(L"Move", "2B7C9E10-3D4F-4A5B-8C6D-7E8F9A0B1C2D", false);
MoveCommand theCopyCommand(L"Copy", "3C8D0F21-4E5A-4B6C-9D7E-8F9A0B1C2D3E", true);
ObjectCommand theDeleteCommand(L"Delete", "4D9E1A32-5F6B-4C7D-8E8F-9A0B1C2D3E4F", Delete);
ObjectCommand theExplodeCommand(L"Explode", "5EAF2B43-6A7C-4D8E-9F9A-0B1C2D3E4F50", Explode);
ObjectCommand theRebuildCommand(L"Rebuild", "6FB03C54-7B8D-4E9F-8A0B-1C2D3E4F5061", Rebuild);
ObjectCommand theReplaceCommand(L"Replace", "70C14D65-8C9E-4FA0-9B1C-2D3E4F506172", Replace);
ObjectCommand theDuplicateCommand(L"Duplicate", "81D25E76-9DAF-4AB1-8C2D-3E4F50617283", Duplicate);

}  // namespace
