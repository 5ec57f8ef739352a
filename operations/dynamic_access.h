// CKorvoDynamicAccess: the plug-in's implementation of the host's stance interface. Every
// operation is told its document and names stances by id; the changing ones run inside an undo
// scope, so that a change of the table is one undoable step. It keeps no state between calls.
#pragma once

#include "host/tarsa/tarsa_stance_dynamic_access.h"

class CKorvoDynamicAccess : public ITsStanceDynamicAccess {
 public:
  // The number of stances in the document's table.
  int StanceCount(CTarsaDoc& doc) override;
  // Appends every stance id, in table order; what the array held stays.
  void GetStanceIds(CTarsaDoc& doc, ZK_SimpleArray<ZK_UUID>& ids) override;
  // Appends every object that carries the stance: false (nothing appended) for an unknown stance.
  bool GetStanceObjects(CTarsaDoc& doc, const ZK_UUID& stance_id,
                        ZK_SimpleArray<const CTarsaObject*>& objects) override;
  // False, and `name` as it was, for an unknown stance.
  bool GetStanceName(CTarsaDoc& doc, const ZK_UUID& stance_id, ZK_wString& name) override;
  // Saves the objects' present placements as a new stance, replacing a stance of the same name
  // (ignoring case). The new stance's id, or the nil uuid when no id could be made. Null objects
  // are skipped.
  ZK_UUID SaveStance(CTarsaDoc& doc, const wchar_t* name,
                     const ZK_SimpleArray<const CTarsaObject*>& objects) override;
  // Moves every object of the stance without construction history back to its saved placement.
  bool RestoreStance(CTarsaDoc& doc, const ZK_UUID& stance_id) override;
  // Removes the stance from the table; the records keep their entries for it.
  bool DeleteStance(CTarsaDoc& doc, const ZK_UUID& stance_id) override;
  // True only when the stance was renamed: false for an unknown stance, an empty name, or a name
  // in use (its own included, in any letter case).
  bool RenameStance(CTarsaDoc& doc, const ZK_UUID& stance_id, const wchar_t* new_name) override;
  // Saves the present placement of every object of the stance as its placement in the stance.
  bool UpdateStance(CTarsaDoc& doc, const ZK_UUID& stance_id) override;
  // Adds the objects to the stance at their present placements; objects already in it keep
  // theirs.
  bool AppendStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                    const ZK_SimpleArray<const CTarsaObject*>& objects) override;
};
