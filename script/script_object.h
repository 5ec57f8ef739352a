// CKorvoScriptObject: the plug-in's automation object, through which scripts that run inside the
// host save, list, count, restore, delete, rename, select, update and extend the stances of the
// active document by late-bound calls. Every argument and result is a VARIANT: a method answers
// Null when it cannot be carried out (no active document, an unusable argument), False when it
// was refused, True when it was done, and StanceCount and the listing methods a number or an
// array of texts. Nothing is printed and no error is raised.
//
// The methods change the stance table and the placement records directly: a change made by a
// script is not an undo step of the plug-in, but the table still announces it to the panel and
// the host. The plug-in object embeds the one instance and holds its first reference for its
// whole life; the host reaches it through the plug-in's GetScriptObjectInterface.
#pragma once

#include "host/platform/cmd_target.h"

class CKorvoScriptObject : public CCmdTarget {
 public:
  static const CRuntimeClass kRuntimeClass;
  // {9677D424-87F1-4E77-B9ED-F3C954247C3E}: the object's dispatch interface.
  static const IID kDispatchInterfaceId;
  // The nine methods with their DISPIDs, then StanceMatches (10), StanceDrift (11) and
  // StanceMoves (12).
  static const DispatchMap kDispatchMap;
  static const InterfaceMap kInterfaceMap;

  CKorvoScriptObject();

  const CRuntimeClass* GetRuntimeClass() const override;
  const DispatchMap* GetDispatchMap() const override;
  const InterfaceMap* GetInterfaceMap() const override;

  // The methods as scripts call them. Names are matched ignoring letter case; `objects` is an
  // object id as text or an array of ids. The caller owns the result.

  // Saves the objects' present placements as a new stance, replacing one of that name. True;
  // Null when no object is found or the name is unusable or empty.
  VARIANT SaveStance(const VARIANT& objects, const VARIANT& name);
  // The stance names, sorted ignoring letter case unless `sort` is a false number or boolean;
  // Null when there is none.
  VARIANT Stances(const VARIANT& sort);
  // The number of stances, as VT_I4.
  VARIANT StanceCount();
  // Moves the stance's objects without construction history back to their saved placements.
  // True; False for no stance of that name.
  VARIANT RestoreStance(const VARIANT& name);
  // Removes the stance from the table. True; False for no stance of that name.
  VARIANT DeleteStance(const VARIANT& name);
  // True; False when the table refuses the rename (no stance of the old name, the new name
  // empty or taken in any letter case, its own included).
  VARIANT RenameStance(const VARIANT& old_name, const VARIANT& new_name);
  // Selects exactly the stance's objects: their ids in the document's order; Null when there is
  // no stance of that name (the selection unchanged) or none of its objects remains (the
  // selection cleared).
  VARIANT SelectObjectsOfStance(const VARIANT& name);
  // Saves the present placement of every object of the stance as its placement in the stance.
  // True; False for no stance of that name.
  VARIANT UpdateStance(const VARIANT& name);
  // Adds the objects to the stance at their present placements; objects already in it keep
  // theirs. True; False for no stance of that name; Null when no object is found.
  VARIANT AppendStance(const VARIANT& objects, const VARIANT& name);

  // Whether the model matches the stance now (it has members and every one a restore would move
  // is at its saved placement): True or False; Null for no stance of that name.
  VARIANT StanceMatches(const VARIANT& name);
  // What a restore of the stance would move: one entry per moved member, each an array of its id
  // as text, how far its bounding box's centre travels, and the angle it turns in degrees; an
  // empty array when none moved; Null for no stance of that name.
  VARIANT StanceDrift(const VARIANT& name);
  // What a restore of the stance would do to each member it moves or leaves in place (members
  // with construction history are left out), in the document's order: each an array of its id as
  // text and the sixteen numbers of the move, row by row (the identity for a member at the
  // stance); an empty array when there is none; Null for no stance of that name.
  VARIANT StanceMoves(const VARIANT& name);
};
