// ITsStanceDynamicAccess: the interface through which the host reads and changes the stances of a
// document, naming them by id. The stance plug-in hands the host its implementation when it
// loads and withdraws it (hands null) when it unloads; the plug-in owns the object. The order of
// the virtual operations is the binary contract between host and plug-in: a new operation goes
// at the end. Every operation prints nothing and shows nothing; each creates the document's
// stance table when it has none.
#pragma once

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/zk_array.h"
#include "host/zefkit/zk_string.h"
#include "host/zefkit/zk_uuid.h"

class ITsStanceDynamicAccess {
 public:
  virtual ~ITsStanceDynamicAccess() = default;

  // The number of stances of the document.
  virtual int StanceCount(CTarsaDoc& doc) = 0;
  // Appends the id of every stance, in table order; what `ids` held stays.
  virtual void GetStanceIds(CTarsaDoc& doc, ZK_SimpleArray<ZK_UUID>& ids) = 0;
  // Appends every object of the active model (hidden ones and lights included) that belongs to
  // the stance; true, also when none does. False for an unknown stance, `objects` untouched. The
  // document keeps the objects.
  virtual bool GetStanceObjects(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                ZK_SimpleArray<const CTarsaObject*>& objects) = 0;
  // True and `name` set; false for an unknown stance, `name` untouched.
  virtual bool GetStanceName(CTarsaDoc& doc, const ZK_UUID& stance_id, ZK_wString& name) = 0;
  // Saves the objects' present placement as a new stance at the end of the table, replacing a
  // stance of that name in any letter case, as one undo step: the new id, or the nil uuid when no
  // id could be made (nothing changed). Null objects are skipped.
  virtual ZK_UUID SaveStance(CTarsaDoc& doc, const wchar_t* name,
                             const ZK_SimpleArray<const CTarsaObject*>& objects) = 0;
  // Moves every member without construction history back to its saved placement and regenerates
  // the views: true; false for an unknown stance, nothing moved.
  virtual bool RestoreStance(CTarsaDoc& doc, const ZK_UUID& stance_id) = 0;
  // Removes the stance from the table, as one undo step: true; false for an unknown or nil id.
  virtual bool DeleteStance(CTarsaDoc& doc, const ZK_UUID& stance_id) = 0;
  // True when renamed; false for an unknown stance, or a name that is empty or already used in
  // any letter case (the stance's own name included).
  virtual bool RenameStance(CTarsaDoc& doc, const ZK_UUID& stance_id, const wchar_t* new_name) = 0;
  // Saves every member's present placement for the stance: true; false for an unknown stance.
  virtual bool UpdateStance(CTarsaDoc& doc, const ZK_UUID& stance_id) = 0;
  // Adds the objects to the stance at their present placement; members keep theirs. True; false
  // for an unknown stance. Null objects are skipped.
  virtual bool AppendStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                            const ZK_SimpleArray<const CTarsaObject*>& objects) = 0;
};

// Exported by the host: the stance plug-in hands over its interface (null withdraws it).
void Stance_SetTarsaDynamicAccess(ITsStanceDynamicAccess* access);
