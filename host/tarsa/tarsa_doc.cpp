#include "host/tarsa/tarsa_doc.h"

#include <malloc.h>

#include <utility>

#include "host/tarsa/tarsa_app.h"

// One recorded change. Objects stay in their slots when they are deleted; a replacement swaps
// the slot's object with the one the entry keeps.
struct CTarsaDoc::UndoEntry {
  enum Kind { add, remove, replace, attributes, custom };
  Kind kind = add;
  size_t slot = 0;
  std::unique_ptr<CTarsaObject> other;  // replace: the object out of the slot
  // attributes: the attributes to swap in; apart, so that the entries of a step that replaces
  // many objects stay small as the step's list grows.
  std::unique_ptr<CTarsaObjectAttributes> other_attributes;
  std::unique_ptr<CTarsaUndoEventHandler> handler;  // custom
};

struct CTarsaDoc::UndoStep {
  unsigned int serial_number = 0;
  ZK_wString description;
  std::vector<UndoEntry> entries;
  bool redone = false;
  size_t bytes = 0;  // as last counted into m_undo_bytes

  // What the step holds: its entries, the objects they keep out of the document and the
  // plug-ins' records.
  size_t Size() const {
    size_t size = sizeof(*this) + entries.capacity() * sizeof(UndoEntry);
    for (const UndoEntry& entry : entries) {
      if (entry.other) size += entry.other->SizeOf();
      if (entry.other_attributes) size += sizeof(CTarsaObjectAttributes);
      if (entry.handler) size += entry.handler->SizeOf();
    }
    return size;
  }
};

namespace {

unsigned int NextUndoRecordSerialNumber() {
  static unsigned int next = 0;
  return ++next;
}

}  // namespace

template <class F>
void CTarsaDoc::Notify(F&& notify) {
  m_app.NotifyEventWatchers(std::forward<F>(notify));
}

// CTarsaLightTable

int CTarsaLightTable::AddLight(const ZK_Light& light, const CTarsaObjectAttributes& attributes) {
  ZK_Light unlisted(light);
  unlisted.m_light_index = -1;
  auto* object = new CTarsaLight(unlisted, attributes);
  if (!m_doc.AddObject(object)) {
    delete object;
    return -1;
  }
  return object->Light().m_light_index;
}

bool CTarsaLightTable::ModifyLight(const ZK_Light& light, int light_index, bool, bool redraw) {
  const CTarsaLight* current = (*this)[light_index];
  if (current == nullptr) return false;
  ZK_Light listed(light);
  listed.m_light_index = light_index;
  auto* replacement = new CTarsaLight(listed, current->Attributes());
  if (!m_doc.ReplaceObject(CTarsaObjRef(current), replacement)) {
    delete replacement;
    return false;
  }
  m_doc.Notify([this, light_index](CTarsaEventWatcher& w) {
    w.LightTableEvent(CTarsaEventWatcher::modified, m_doc, light_index);
  });
  if (redraw) m_doc.Redraw();
  return true;
}

void CTarsaLightTable::Enlist(ZK_Light& light, const ZK_UUID& id) {
  const int index = light.m_light_index;
  if (index >= 0 && index < LightCount() && m_ids[static_cast<size_t>(index)] == id) return;
  light.m_light_index = LightCount();
  m_ids.push_back(id);
}

const CTarsaLight* CTarsaLightTable::operator[](int light_index) const {
  if (light_index < 0 || light_index >= LightCount()) return nullptr;
  return CTarsaLight::Cast(m_doc.LookupObject(m_ids[static_cast<size_t>(light_index)]));
}

// CTarsaDoc

CTarsaDoc::CTarsaDoc(CTarsaApp& app, unsigned int serial_number)
    : m_app(app), m_serial_number(serial_number), m_light_table(*this) {}

CTarsaDoc::~CTarsaDoc() = default;

CTarsaDoc* CTarsaDoc::FromRuntimeSerialNumber(unsigned int serial_number) {
  return TarsaApp().Document(serial_number);
}

bool CTarsaDoc::AddObject(CTarsaObject* object, bool reference) {
  if (object == nullptr || object->m_doc != nullptr || !AssignId(*object)) return false;
  const size_t slot = m_slots.size();
  m_slots.emplace_back(object);
  m_slot_stamps.push_back(++m_stamp);
  m_slot_of_id[object->ModelObjectId()] = slot;
  Attach(*object, reference);
  Record(UndoEntry{UndoEntry::add, slot, nullptr, nullptr, nullptr});
  Notify([this, object](CTarsaEventWatcher& w) { w.OnAddObject(*this, *object); });
  return true;
}

bool CTarsaDoc::DeleteObject(const CTarsaObjRef& ref, bool, bool ignore_modes) {
  CTarsaObject* object = Owned(ref);
  if (object == nullptr || object->m_deleted) return false;
  if (!ignore_modes && object->ObjectState() == CTarsaObject::locked_object) return false;
  SetDeleted(*object, true);
  Record(UndoEntry{UndoEntry::remove, m_slot_of_id[object->ModelObjectId()], nullptr, nullptr,
                   nullptr});
  Notify([this, object](CTarsaEventWatcher& w) { w.OnDeleteObject(*this, *object); });
  return true;
}

bool CTarsaDoc::ReplaceObject(const CTarsaObjRef& ref, CTarsaObject* new_object,
                              bool ignore_modes) {
  CTarsaObject* old_object = Owned(ref);
  if (old_object == nullptr || old_object->m_deleted) return false;
  if (new_object == nullptr || new_object->m_doc != nullptr || new_object == old_object) {
    return false;
  }
  new_object->m_attributes.m_uuid = old_object->ModelObjectId();
  if (!ignore_modes) new_object->m_attributes.m_mode = old_object->m_attributes.m_mode;
  ZK_Light* new_light = ZK_Light::Cast(new_object->m_geometry);
  const ZK_Light* old_light = ZK_Light::Cast(old_object->m_geometry);
  if (new_light && old_light) new_light->m_light_index = old_light->m_light_index;
  Attach(*new_object, old_object->m_reference);

  const size_t slot = m_slot_of_id[old_object->ModelObjectId()];
  // Recorded before the swap announces it; the entry receives the old object once it is out.
  UndoEntry* entry = Record(UndoEntry{UndoEntry::replace, slot, nullptr, nullptr, nullptr});
  const size_t index = entry ? static_cast<size_t>(entry - m_recording->entries.data()) : 0;
  std::unique_ptr<CTarsaObject> other(new_object);
  SwapIntoSlot(slot, other);
  if (entry) {
    m_recording->entries[index].other = std::move(other);
  } else {
    m_retired.push_back(std::move(other));  // callers may still hold the old object
  }
  Notify([this, new_object](CTarsaEventWatcher& w) { w.OnAddObject(*this, *new_object); });
  return true;
}

CTarsaObject* CTarsaDoc::TransformObject(const CTarsaObjRef& ref, const ZK_Xform& xform,
                                         bool delete_original, bool ignore_modes,
                                         bool add_history) {
  const CTarsaObject* original = Owned(ref);
  if (original == nullptr || original->m_deleted) return nullptr;
  if (!ignore_modes && original->ObjectState() != CTarsaObject::normal_object) return nullptr;
  std::unique_ptr<CTarsaObject> copy(original->Duplicate());
  if (!copy || !copy->m_geometry->Transform(xform)) return nullptr;
  copy->m_history.reset(add_history ? new CTarsaHistoryRecord(L"Transform") : nullptr);
  if (!delete_original) copy->m_attributes.m_uuid = ZK_nil_uuid;
  const bool done = delete_original ? ReplaceObject(ref, copy.get(), true)
                                    : AddObject(copy.get(), original->m_reference);
  return done ? copy.release() : nullptr;
}

bool CTarsaDoc::ModifyObjectAttributes(const CTarsaObjRef& ref,
                                       const CTarsaObjectAttributes& attributes) {
  CTarsaObject* object = Owned(ref);
  if (object == nullptr || object->m_deleted) return false;
  const CTarsaObjectAttributes old_attributes = object->m_attributes;
  object->m_attributes = attributes;
  object->m_attributes.m_uuid = old_attributes.m_uuid;
  if (object->ObjectState() != CTarsaObject::normal_object) SetSelection(*object, 0);
  Record(UndoEntry{UndoEntry::attributes, m_slot_of_id[object->ModelObjectId()], nullptr,
                   std::make_unique<CTarsaObjectAttributes>(old_attributes), nullptr});
  Notify([this, object, &old_attributes](CTarsaEventWatcher& w) {
    w.OnModifyObjectAttributes(*this, *object, old_attributes);
  });
  return true;
}

CTarsaObject* CTarsaDoc::LookupObject(const ZK_UUID& id) const {
  const auto found = m_slot_of_id.find(id);
  if (found == m_slot_of_id.end()) return nullptr;
  CTarsaObject* object = m_slots[found->second].get();
  return object && !object->m_deleted ? object : nullptr;
}

int CTarsaDoc::UnselectAll(bool ignore_persistent) {
  int count = 0;
  for (const auto& object : m_slots) {
    if (!object || object->m_selected == 0) continue;
    if (ignore_persistent && object->m_selected == 2) continue;
    object->m_selected = 0;
    ++count;
  }
  if (count > 0) {
    Notify([this, count](CTarsaEventWatcher& w) { w.OnDeselectAllObjects(*this, count); });
  }
  return count;
}

unsigned int CTarsaDoc::BeginUndoRecord(const wchar_t* description) {
  if (m_undo_active || m_redo_active) return 0;
  if (m_recording_depth++ == 0) {
    // Objects replaced outside any step were kept for callers still holding them during that
    // operation; a new step starts a new operation.
    m_retired.clear();
    m_recording.reset(new UndoStep);
    m_recording->serial_number = NextUndoRecordSerialNumber();
    m_recording->description = description;
    const unsigned int serial = m_recording->serial_number;
    Notify([serial](CTarsaEventWatcher& w) {
      w.UndoEvent(CTarsaEventWatcher::begin_recording, serial, nullptr);
    });
  }
  return m_recording->serial_number;
}

bool CTarsaDoc::EndUndoRecord(unsigned int undo_record_serial_number) {
  if (m_recording_depth == 0 || undo_record_serial_number != m_recording->serial_number) {
    return false;
  }
  if (m_recording_depth > 1) {
    --m_recording_depth;
    return true;
  }
  // Watchers hear the end while the step is still open, so that what they record then joins it.
  const unsigned int serial = m_recording->serial_number;
  Notify([serial](CTarsaEventWatcher& w) {
    w.UndoEvent(CTarsaEventWatcher::end_recording, serial, nullptr);
  });
  m_recording_depth = 0;
  std::unique_ptr<UndoStep> step = std::move(m_recording);
  if (!step->entries.empty()) {
    for (const auto& redo : m_redo_steps) m_undo_bytes -= redo->bytes;
    m_redo_steps.clear();
    Measure(*step);
    m_undo_steps.push_back(std::move(step));
    KeepUndoWithinLimit();
  }
  return true;
}

void CTarsaDoc::Measure(UndoStep& step) {
  m_undo_bytes -= step.bytes;
  step.bytes = step.Size();
  m_undo_bytes += step.bytes;
}

void CTarsaDoc::KeepUndoWithinLimit() {
  const size_t limit = m_app.m_undo_memory_limit;
  size_t dropped = 0;
  while (m_undo_bytes > limit && dropped + 1 < m_undo_steps.size()) {
    m_undo_bytes -= m_undo_steps[dropped]->bytes;
    m_app.m_undo_freed += m_undo_steps[dropped++]->bytes;
  }
  if (dropped == 0) return;
  m_undo_steps.erase(m_undo_steps.begin(), m_undo_steps.begin() + static_cast<long>(dropped));
  // The steps dropped leave free memory among blocks still in use, which the allocator keeps;
  // given back to the system now and then, the memory the program holds stays near the limit.
  if (m_app.m_undo_freed > limit / 32) {
    m_app.m_undo_freed = 0;
    malloc_trim(0);
  }
  if (m_undo_dropped) return;
  m_undo_dropped = true;
  m_app.Print(L"Undo keeps the last steps within %d MB; older steps can no longer be undone.\n",
              static_cast<int>(limit >> 20));
}

void CTarsaDoc::ClearUndo() {
  m_undo_steps.clear();
  m_redo_steps.clear();
  m_undo_bytes = 0;
  m_retired.clear();
  // With no step left nothing can bring a deleted object back: its slot goes, so that a long
  // session that adds and undoes does not grow.
  size_t kept = 0;
  for (size_t slot = 0; slot < m_slots.size(); ++slot) {
    const ZK_UUID id = m_slots[slot]->ModelObjectId();
    if (m_slots[slot]->m_deleted) {
      m_slot_of_id.erase(id);
      continue;
    }
    m_slot_of_id[id] = kept;
    m_slot_stamps[kept] = m_slot_stamps[slot];
    m_slots[kept++] = std::move(m_slots[slot]);
  }
  m_slots.resize(kept);
  m_slot_stamps.resize(kept);
}

bool CTarsaDoc::AddCustomUndoEvent(CTarsaUndoEventHandler* handler, const wchar_t*) {
  std::unique_ptr<CTarsaUndoEventHandler> owned(handler);
  if (!owned || !m_recording || m_undo_active || m_redo_active) return false;
  Record(UndoEntry{UndoEntry::custom, 0, nullptr, nullptr, std::move(owned)});
  return true;
}

bool CTarsaDoc::Undo() { return Replay(false); }

bool CTarsaDoc::Redo() { return Replay(true); }

bool CTarsaDoc::Replay(bool redo) {
  auto& from = redo ? m_redo_steps : m_undo_steps;
  auto& to = redo ? m_undo_steps : m_redo_steps;
  if (from.empty() || m_recording_depth > 0 || m_undo_active || m_redo_active) return false;
  std::unique_ptr<UndoStep> step = std::move(from.back());
  from.pop_back();
  bool& active = redo ? m_redo_active : m_undo_active;
  active = true;
  const unsigned int serial = step->serial_number;
  Notify([redo, serial](CTarsaEventWatcher& w) {
    w.UndoEvent(redo ? CTarsaEventWatcher::begin_redo : CTarsaEventWatcher::begin_undo, serial,
                nullptr);
  });
  if (redo) {
    for (UndoEntry& entry : step->entries) Revert(*step, entry, true);
  } else {
    for (auto entry = step->entries.rbegin(); entry != step->entries.rend(); ++entry) {
      Revert(*step, *entry, false);
    }
  }
  Notify([redo, serial](CTarsaEventWatcher& w) {
    w.UndoEvent(redo ? CTarsaEventWatcher::end_redo : CTarsaEventWatcher::end_undo, serial,
                nullptr);
  });
  active = false;
  step->redone = step->redone || redo;
  Measure(*step);  // the step now keeps what the document held
  to.push_back(std::move(step));
  KeepUndoWithinLimit();
  return true;
}

void CTarsaDoc::Revert(UndoStep& step, UndoEntry& entry, bool redo) {
  CTarsaObject* object = entry.kind == UndoEntry::custom ? nullptr : m_slots[entry.slot].get();
  switch (entry.kind) {
    case UndoEntry::add:
    case UndoEntry::remove: {
      // Undoing an addition deletes, redoing it undeletes; a deletion the other way round.
      const bool deleted = (entry.kind == UndoEntry::add) != redo;
      SetDeleted(*object, deleted);
      if (!deleted) m_slot_stamps[entry.slot] = ++m_stamp;  // back: new to a walk under way
      Notify([this, object, deleted](CTarsaEventWatcher& w) {
        deleted ? w.OnDeleteObject(*this, *object) : w.OnUnDeleteObject(*this, *object);
      });
      break;
    }
    case UndoEntry::replace: {
      CTarsaObject* incoming = entry.other.get();
      SwapIntoSlot(entry.slot, entry.other);
      Notify([this, incoming](CTarsaEventWatcher& w) { w.OnAddObject(*this, *incoming); });
      break;
    }
    case UndoEntry::attributes: {
      std::swap(object->m_attributes, *entry.other_attributes);
      const CTarsaObjectAttributes& previous = *entry.other_attributes;
      Notify([this, object, &previous](CTarsaEventWatcher& w) {
        w.OnModifyObjectAttributes(*this, *object, previous);
      });
      break;
    }
    case UndoEntry::custom:
      // The record is called on undo and again on redo; RedoActive tells it which.
      entry.handler->Undo(*this, step.description, step.redone, step.serial_number);
      break;
  }
}

CTarsaObject* CTarsaDoc::Owned(const CTarsaObjRef& ref) const {
  const CTarsaObject* object = ref.Object();
  if (object == nullptr || object->m_doc != this) return nullptr;
  const auto found = m_slot_of_id.find(object->ModelObjectId());
  if (found == m_slot_of_id.end() || m_slots[found->second].get() != object) return nullptr;
  return m_slots[found->second].get();
}

bool CTarsaDoc::AssignId(CTarsaObject& object) const {
  ZK_UUID& id = object.m_attributes.m_uuid;
  if (!ZK_UuidIsNil(id) && m_slot_of_id.count(id) == 0) return true;
  ZK_UUID fresh;
  if (!ZK_CreateUuid(fresh)) return false;
  id = fresh;
  return true;
}

void CTarsaDoc::Attach(CTarsaObject& object, bool reference) {
  object.m_doc = this;
  object.m_reference = reference;
  object.m_deleted = false;
  object.m_selected = 0;
  if (ZK_Light* light = ZK_Light::Cast(object.m_geometry)) {
    m_light_table.Enlist(*light, object.ModelObjectId());
  }
}

CTarsaDoc::UndoEntry* CTarsaDoc::Record(UndoEntry entry) {
  if (!m_recording || m_undo_active || m_redo_active) return nullptr;
  m_recording->entries.push_back(std::move(entry));
  return &m_recording->entries.back();
}

void CTarsaDoc::SwapIntoSlot(size_t slot, std::unique_ptr<CTarsaObject>& other) {
  CTarsaObject* incoming = other.get();
  CTarsaObject* outgoing = m_slots[slot].get();
  Notify([this, outgoing, incoming](CTarsaEventWatcher& w) {
    w.OnReplaceObject(*this, *outgoing, *incoming);
  });
  std::unique_ptr<CTarsaObject> taken = std::move(m_slots[slot]);
  SetDeleted(*outgoing, true);
  Notify([this, outgoing](CTarsaEventWatcher& w) { w.OnDeleteObject(*this, *outgoing); });
  incoming->m_deleted = false;
  m_slots[slot] = std::move(other);
  m_slot_stamps[slot] = ++m_stamp;
  other = std::move(taken);
}

void CTarsaDoc::SetDeleted(CTarsaObject& object, bool deleted) {
  object.m_deleted = deleted;
  if (deleted) object.m_selected = 0;
}

void CTarsaDoc::SetSelection(const CTarsaObject& object, int state) {
  if (object.m_selected == state) return;
  object.m_selected = state;
  Notify([this, &object, state](CTarsaEventWatcher& w) {
    state ? w.OnSelectObject(*this, object) : w.OnDeselectObject(*this, object);
  });
}

// CTarsaObjectIterator

CTarsaObjectIterator::CTarsaObjectIterator(CTarsaDoc& doc, unsigned int object_state,
                                           unsigned int object_category)
    : m_doc(doc), m_object_state(object_state), m_object_category(object_category) {}

CTarsaObject* CTarsaObjectIterator::First() {
  m_index = 0;
  m_end = m_doc.m_slots.size();
  m_stamp = m_doc.m_stamp;
  return Next();
}

CTarsaObject* CTarsaObjectIterator::Next() {
  while (m_index < m_end) {
    const size_t slot = m_index++;
    CTarsaObject* object = m_doc.m_slots[slot].get();
    if (m_doc.m_slot_stamps[slot] <= m_stamp && Accepts(object)) return object;
  }
  return nullptr;
}

bool CTarsaObjectIterator::Accepts(const CTarsaObject* object) const {
  if (object == nullptr || (object->ObjectState() & m_object_state) == 0) return false;
  const unsigned int category =
      object->IsReference() ? CTarsaObject::reference_object : CTarsaObject::active_object;
  if ((category & m_object_category) == 0) return false;
  if (!m_include_lights && CTarsaLight::Cast(object) != nullptr) return false;
  return !(m_visible_filter && object->ObjectState() == CTarsaObject::hidden_object);
}
