// The host's model objects. An object is a piece of kernel geometry with attributes (its id,
// name and mode) and, while it is in a document, a state (normal, locked, hidden or deleted), a
// category (active model or reference) and a selection. Objects are made free (in no document);
// the document takes ownership when one is added. Objects in a document are changed only
// through the document (CTarsaDoc), which keeps the undo history; a free object may be edited.
#pragma once

#include <memory>

#include "host/zefkit/zk_geometry.h"
#include "host/zefkit/zk_light.h"

class CTarsaDoc;

enum class TarsaObjectMode { normal, locked, hidden };

class CTarsaObjectAttributes {
 public:
  ZK_UUID m_uuid = ZK_nil_uuid;  // the object's id, unique in its document
  ZK_wString m_name;
  TarsaObjectMode m_mode = TarsaObjectMode::normal;
};

// The construction history of an object made by a command that records history: the object is
// rebuilt from its inputs when they change, so nothing may move it on its own.
class CTarsaHistoryRecord {
 public:
  explicit CTarsaHistoryRecord(const ZK_wString& command_name) : m_command_name(command_name) {}
  ZK_wString m_command_name;
};

class CTarsaObject : public ZK_Object {
 public:
  // The states an object iterator's state mask selects.
  enum object_state : unsigned int {
    normal_object = 1,
    locked_object = 2,
    hidden_object = 4,
    deleted_object = 8,
  };
  // The categories an object iterator selects.
  enum object_category : unsigned int { active_object = 1, reference_object = 2 };

  static CTarsaObject* Cast(ZK_Object* object);
  static const CTarsaObject* Cast(const ZK_Object* object);

  // A free object owning `geometry` (which must not be null).
  explicit CTarsaObject(ZK_Geometry* geometry,
                        const CTarsaObjectAttributes& attributes = CTarsaObjectAttributes());
  // A free copy: geometry with its user data, attributes and history; no document, no selection.
  CTarsaObject(const CTarsaObject& source);
  CTarsaObject& operator=(const CTarsaObject&) = delete;
  ~CTarsaObject() override;

  const ZK_ClassId* ClassId() const override;
  ZK_Object* __DeepCopy() const override;
  unsigned int ObjectType() const override;
  ZK_UUID ModelObjectId() const override { return m_attributes.m_uuid; }
  // The object with its geometry and the geometry's user data.
  unsigned int SizeOf() const override;

  // A new free copy of this object, owned by the caller.
  CTarsaObject* Duplicate() const;
  // The document the object is in, or null for a free object.
  CTarsaDoc* Document() const { return m_doc; }
  // A number given to every object made while the program runs, from 1 upward.
  unsigned int RuntimeSerialNumber() const { return m_serial_number; }

  const CTarsaObjectAttributes& Attributes() const { return m_attributes; }
  // False for an object in a document: those change through CTarsaDoc::ModifyObjectAttributes.
  bool SetAttributes(const CTarsaObjectAttributes& attributes);
  const ZK_Geometry* Geometry() const { return m_geometry; }

  // The geometry's user data with that id, or null; the geometry keeps ownership.
  ZK_UserData* GetGeometryUserData(const ZK_UUID& userdata_uuid) const;
  // Attaches user data to the geometry, which takes ownership on success (see
  // ZK_Object::AttachUserData for the refusals).
  bool AttachGeometryUserData(ZK_UserData* user_data) const;

  object_state ObjectState() const;
  bool IsDeleted() const { return m_deleted; }
  bool IsReference() const { return m_reference; }

  // Selects or deselects the object: 1 done, 0 when it cannot be selected (free, deleted,
  // hidden or locked). Deselecting always succeeds for an object in a document.
  int Select(bool select = true, bool sync_highlight = true, bool persistent_select = true,
             bool ignore_grips = false) const;
  // 0 not selected, 1 selected, 2 selected persistently.
  int IsSelected() const { return m_selected; }

  // The object's construction history, or null.
  const CTarsaHistoryRecord* HistoryRecord() const { return m_history.get(); }
  // Takes ownership; false (and the record is destroyed) for an object in a document.
  bool SetHistoryRecord(CTarsaHistoryRecord* record);

 private:
  friend class CTarsaDoc;

  ZK_Geometry* m_geometry;
  CTarsaObjectAttributes m_attributes;
  std::unique_ptr<CTarsaHistoryRecord> m_history;
  CTarsaDoc* m_doc = nullptr;
  unsigned int m_serial_number;
  bool m_deleted = false;
  bool m_reference = false;
  mutable int m_selected = 0;
};

// A light object: its geometry is a kernel light, kept in the document's light table.
class CTarsaLight : public CTarsaObject {
 public:
  static CTarsaLight* Cast(ZK_Object* object);
  static const CTarsaLight* Cast(const ZK_Object* object);

  explicit CTarsaLight(const ZK_Light& light,
                       const CTarsaObjectAttributes& attributes = CTarsaObjectAttributes());
  // Takes ownership of `light`, which must not be null.
  explicit CTarsaLight(ZK_Light* light,
                       const CTarsaObjectAttributes& attributes = CTarsaObjectAttributes());
  CTarsaLight(const CTarsaLight& source) = default;

  const ZK_ClassId* ClassId() const override;
  ZK_Object* __DeepCopy() const override;

  const ZK_Light& Light() const;
};

// A reference to an object, as the document's editing operations take it.
class CTarsaObjRef {
 public:
  explicit CTarsaObjRef(const CTarsaObject* object) : m_object(object) {}
  const CTarsaObject* Object() const { return m_object; }

 private:
  const CTarsaObject* m_object;
};
