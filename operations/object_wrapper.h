// CKorvoObjectWrapper: access to the placement record of one document object for one step of a
// loop. The document's objects are not edited in place: the wrapper edits a working copy (a
// duplicate of the object, or a copy of a light's kernel light) and puts it into the document in
// one step, with the plug-in's event watcher paused. The wrapper also restores an object to the
// placement saved for a stance. Destroying the wrapper commits its working copy.
#pragma once

#include "data/placement_record.h"
#include "host/tarsa/tarsa_doc.h"

class CKorvoObjectWrapper {
 public:
  // Binds the wrapper to `object`, which may be null; the wrapper does not own it.
  // Inline, as a loop makes one wrapper per object.
  explicit CKorvoObjectWrapper(const CTarsaObject* object)
      : m_object(object), m_working_copy(nullptr) {}
  virtual ~CKorvoObjectWrapper() {
    if (m_working_copy) Commit();
  }
  CKorvoObjectWrapper(const CKorvoObjectWrapper&) = delete;
  CKorvoObjectWrapper& operator=(const CKorvoObjectWrapper&) = delete;

  // The placement record of the working copy when there is one, else of the bound object; null
  // when there is none. The object keeps ownership; nothing is copied.
  CKorvoUserData* GetRecord() const;
  // The placement record of the working copy, made on first use and given a new record when the
  // object has none. Null when there is no bound object or the copy or record cannot be made.
  // The same record on every call.
  CKorvoUserData* GetEditableRecord();
  // Puts the working copy into the document in the bound object's place and binds the wrapper to
  // it. True when there was nothing to commit or the commit succeeded; false (the copy destroyed)
  // when there is no document or the document refused the copy.
  bool Commit();
  // Moves the bound object to the placement saved for the stance: true when it was moved or was
  // already in place (every element within 0.001); false when there is no document, no record,
  // no entry for the stance, or the move failed. A moved wrapper is bound to the moved object.
  bool ApplyStance(const ZK_UUID& stance_id);

  const CTarsaObject* m_object;
  ZK_Object* m_working_copy;  // owned

 private:
  CTarsaDoc* Document() const;
  bool IsLight() const;
  // ApplyStance's move of the bound object in `doc`, apart so that the far more common object
  // already in place costs no more than the look-up and the comparison. True and the wrapper
  // bound to the moved object; false when the commit or the move failed.
  bool MoveBy(CTarsaDoc& doc, const ZK_Xform& move);
  void DestroyWorkingCopy();
};
