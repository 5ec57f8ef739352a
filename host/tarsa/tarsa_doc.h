// CTarsaDoc: a host document, the model a user works on. It owns its objects and its undo
// history and is owned by the application (CTarsaApp), which names it by its runtime serial
// number while the program runs.
//
// Objects sit in slots in the order they were added. A replacement takes its original's slot and
// id; a deleted object keeps its slot, marked deleted, so that undo can bring it back. Every
// change is reported to the application's event watchers; between BeginUndoRecord and
// EndUndoRecord the changes are recorded as one undo step (docs/host_documents.md).
#pragma once

#include <memory>
#include <unordered_map>
#include <vector>

#include "host/tarsa/tarsa_object.h"
#include "host/tarsa/tarsa_undo.h"

class CTarsaApp;
class CTarsaDoc;

// The document's lights: a light's index is its place in the table, kept in the kernel light's
// m_light_index. The table names each light by its object's id.
class CTarsaLightTable {
 public:
  explicit CTarsaLightTable(CTarsaDoc& doc) : m_doc(doc) {}
  CTarsaLightTable(const CTarsaLightTable&) = delete;
  CTarsaLightTable& operator=(const CTarsaLightTable&) = delete;

  // Adds a light object: its index, or -1 when the document refused it.
  int AddLight(const ZK_Light& light,
               const CTarsaObjectAttributes& attributes = CTarsaObjectAttributes());
  // Replaces the light at `light_index` by a copy of `light`, user data included; the new light
  // object keeps the old one's id and attributes. False for an index with no light, or a deleted
  // one. `quiet` keeps failures off the command line; `redraw` redraws the views afterwards.
  bool ModifyLight(const ZK_Light& light, int light_index, bool quiet = false, bool redraw = true);
  int LightCount() const { return static_cast<int>(m_ids.size()); }
  // The light object at that index, or null (out of range or deleted).
  const CTarsaLight* operator[](int light_index) const;

 private:
  friend class CTarsaDoc;
  // Gives a light object that is not listed under its index a new index at the end.
  void Enlist(ZK_Light& light, const ZK_UUID& id);

  CTarsaDoc& m_doc;
  std::vector<ZK_UUID> m_ids;
};

class CTarsaDoc {
 public:
  CTarsaDoc(const CTarsaDoc&) = delete;
  CTarsaDoc& operator=(const CTarsaDoc&) = delete;
  ~CTarsaDoc();

  unsigned int RuntimeSerialNumber() const { return m_serial_number; }
  // The open document with that runtime serial number, or null (closed, or never made).
  static CTarsaDoc* FromRuntimeSerialNumber(unsigned int serial_number);

  // Takes ownership of a free object and adds it, as a reference object when `reference` is
  // true. An object without an id, or with an id already in the document, is given a new id.
  // False (the caller keeps the object) for null, an object already in a document, or when no id
  // could be made.
  bool AddObject(CTarsaObject* object, bool reference = false);
  // Marks the object deleted. False for an object not in this document, already deleted, or
  // locked unless `ignore_modes`.
  bool DeleteObject(const CTarsaObjRef& object, bool quiet = false, bool ignore_modes = false);
  // Puts a free object in the place of a document object: it takes the old one's slot, id and
  // category, and its mode unless `ignore_modes`. Sends OnReplaceObject(old, new), then
  // OnDeleteObject(old) while neither is visited, then OnAddObject(new). On success the document
  // owns the new object; on failure (old not in this document or deleted, new null or in a
  // document) the caller keeps it.
  bool ReplaceObject(const CTarsaObjRef& object, CTarsaObject* new_object,
                     bool ignore_modes = false);
  // Transforms a copy of the object (the kernel hands the transform to the copy's user data) and
  // puts it in the document: in the original's place when `delete_original`, else as a new
  // object. Hidden and locked objects are transformed only with `ignore_modes`. `add_history`
  // gives the new object construction history. The new object, or null.
  CTarsaObject* TransformObject(const CTarsaObjRef& object, const ZK_Xform& xform,
                                bool delete_original = true, bool ignore_modes = false,
                                bool add_history = false);
  // Changes the name and mode of a document object (its id stays). False for an object not in
  // this document or deleted.
  bool ModifyObjectAttributes(const CTarsaObjRef& object, const CTarsaObjectAttributes& attributes);
  // The undeleted object with that id, or null. Constant time.
  CTarsaObject* LookupObject(const ZK_UUID& id) const;
  // Deselects every object: the number deselected.
  int UnselectAll(bool ignore_persistent = false);

  CTarsaLightTable& LightTable() { return m_light_table; }

  // Undo. Begin and end an undo step: the changes between them, object changes and custom undo
  // events in the order they happened, become one step. Steps nest; the outermost counts.
  // BeginUndoRecord gives the step's serial number (0 while an undo or redo runs).
  unsigned int BeginUndoRecord(const wchar_t* description);
  bool EndUndoRecord(unsigned int undo_record_serial_number);
  bool UndoRecordingIsActive() const { return m_recording_depth > 0; }
  // Takes ownership of the handler. It joins the open step; with no open step, or while an undo
  // or redo runs, it is destroyed at once and the result is false.
  bool AddCustomUndoEvent(CTarsaUndoEventHandler* handler, const wchar_t* description = nullptr);
  // True while the host undoes, or redoes, a step.
  bool UndoActive() const { return m_undo_active; }
  bool RedoActive() const { return m_redo_active; }

  // Views: Regen rebuilds what every view shows, Redraw repaints.
  void Regen() { ++m_regen_count; }
  void Redraw() { ++m_redraw_count; }

  // Document data of plug-ins that were not loaded when the document was opened, or refused
  // it, kept so that saving the document writes it back: the plug-in id, the block's bytes, the
  // file it came from, and whether the user was told that the plug-in's own data replaces it.
  struct PlugInData {
    ZK_UUID m_plug_in_id;
    std::vector<unsigned char> m_bytes;
    std::wstring m_file;
    bool m_replacement_told = false;
  };

 private:
  friend class CTarsaApp;
  friend class CTarsaStandIn;
  friend class CTarsaObject;
  friend class CTarsaLightTable;
  friend class CTarsaObjectIterator;
  struct UndoEntry;
  struct UndoStep;

  CTarsaDoc(CTarsaApp& app, unsigned int serial_number);

  CTarsaObject* Owned(const CTarsaObjRef& object) const;
  bool AssignId(CTarsaObject& object) const;
  void Attach(CTarsaObject& object, bool reference);
  // The entry as recorded in the open step, or null when nothing is being recorded. Valid until
  // the next entry is recorded.
  UndoEntry* Record(UndoEntry entry);
  void SwapIntoSlot(size_t slot, std::unique_ptr<CTarsaObject>& other);
  void SetDeleted(CTarsaObject& object, bool deleted);
  void SetSelection(const CTarsaObject& object, int state);
  void Revert(UndoStep& step, UndoEntry& entry, bool redo);
  // Undo or redo the last step: false when there is none, or a step is being recorded.
  bool Undo();
  bool Redo();
  bool Replay(bool redo);
  // Forgets every undo and redo step and frees the objects they and m_retired kept, and the
  // deleted objects with their slots.
  void ClearUndo();
  // Counts what a step holds into m_undo_bytes, in place of what it was counted at before.
  void Measure(UndoStep& step);
  // Drops the oldest undo steps, but the newest, while the steps hold more than the limit.
  void KeepUndoWithinLimit();
  template <class F>
  void Notify(F&& notify);

  CTarsaApp& m_app;
  unsigned int m_serial_number;
  std::vector<std::unique_ptr<CTarsaObject>> m_slots;
  std::vector<unsigned long long> m_slot_stamps;  // when each slot's object was put there
  unsigned long long m_stamp = 0;
  std::unordered_map<ZK_UUID, size_t, ZK_UuidHash> m_slot_of_id;
  // Replaced while nothing was recorded; freed when the next undo step begins.
  std::vector<std::unique_ptr<CTarsaObject>> m_retired;
  std::vector<PlugInData> m_kept_plug_in_data;
  CTarsaLightTable m_light_table;

  std::vector<std::unique_ptr<UndoStep>> m_undo_steps;
  std::vector<std::unique_ptr<UndoStep>> m_redo_steps;
  std::unique_ptr<UndoStep> m_recording;
  size_t m_undo_bytes = 0;      // what the undo and redo steps hold
  bool m_undo_dropped = false;  // the user was told that old steps were dropped
  int m_recording_depth = 0;
  bool m_undo_active = false;
  bool m_redo_active = false;

  int m_regen_count = 0;
  int m_redraw_count = 0;
};

// Hands out the objects of a document once each, in the order of their slots: those whose state
// is in `object_state` (a mask of CTarsaObject::object_state) and whose category is in
// `object_category`. Lights only after IncludeLights(true); hidden objects only with the visible
// filter off. Objects put into the document after First() are not visited, replacements included.
class CTarsaObjectIterator {
 public:
  CTarsaObjectIterator(CTarsaDoc& doc,
                       unsigned int object_state = CTarsaObject::normal_object |
                                                   CTarsaObject::locked_object,
                       unsigned int object_category = CTarsaObject::active_object);
  void IncludeLights(bool include = true) { m_include_lights = include; }
  void EnableVisibleFilter(bool enable = true) { m_visible_filter = enable; }

  // The first object, or null.
  CTarsaObject* First();
  // The next object, or null at the end.
  CTarsaObject* Next();

 private:
  bool Accepts(const CTarsaObject* object) const;

  CTarsaDoc& m_doc;
  unsigned int m_object_state;
  unsigned int m_object_category;
  bool m_include_lights = false;
  bool m_visible_filter = true;
  size_t m_index = 0;
  size_t m_end = 0;
  unsigned long long m_stamp = 0;
};
