// CKorvoObjectWrapper: access to the placement record of one document object for one step of a
// loop. The document's objects are not edited in place: the wrapper edits a working copy (a
// duplicate of the object, or a copy of a light's kernel light) and puts it into the document in
// one step, with the plug-in's event watcher paused. The wrapper also restores an object to the
// placement saved for a stance. Destroying the wrapper commits its working copy.
#pragma once

#include "data/placement_record.h"
#include "host/tarsa/tarsa_doc.h"

// Placements closer than this in every element are the same placement (1 / 10^3).
constexpr double kPlacementTolerance = 0.001;

// True when the two placements differ by less than 0.001 in each of their sixteen elements: an
// object whose present placement is the same as its saved one is in place and not moved.
bool SamePlacement(const ZK_Xform& a, const ZK_Xform& b);

// The transform that takes an object placed by `current` back to `saved`: saved * current^-1,
// with the bottom row 0, 0, 0, 1.
ZK_Xform MoveBack(const ZK_Xform& current, const ZK_Xform& saved);

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
  // already in place (every element within 0.001); false when there is no record, no entry for
  // the stance, or it must move and there is no document or the move failed. A moved wrapper is
  // bound to the moved object.
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
