// ITsStanceDynamicAccess: the interface through which the host reads and changes the stances of a
// document, naming them by id. The stance plug-in hands the host its implementation when it
// loads and withdraws it (hands null) when it unloads; the plug-in owns the object. The order of
// the virtual operations is the binary contract between host and plug-in.
#pragma once

#include "host/tarsa/tarsa_doc.h"
#include "host/zefkit/zk_array.h"
#include "host/zefkit/zk_string.h"
#include "host/zefkit/zk_uuid.h"

class ITsStanceDynamicAccess {
 public:
  virtual ~ITsStanceDynamicAccess() = default;

  virtual int StanceCount(CTarsaDoc& doc) = 0;
  virtual void GetStanceIds(CTarsaDoc& doc, ZK_SimpleArray<ZK_UUID>& ids) = 0;
  virtual bool GetStanceObjects(CTarsaDoc& doc, const ZK_UUID& stance_id,
                                ZK_SimpleArray<const CTarsaObject*>& objects) = 0;
  virtual bool GetStanceName(CTarsaDoc& doc, const ZK_UUID& stance_id, ZK_wString& name) = 0;
  virtual ZK_UUID SaveStance(CTarsaDoc& doc, const wchar_t* name,
                             const ZK_SimpleArray<const CTarsaObject*>& objects) = 0;
  virtual bool RestoreStance(CTarsaDoc& doc, const ZK_UUID& stance_id) = 0;
  virtual bool DeleteStance(CTarsaDoc& doc, const ZK_UUID& stance_id) = 0;
  virtual bool RenameStance(CTarsaDoc& doc, const ZK_UUID& stance_id, const wchar_t* new_name) = 0;
  virtual bool UpdateStance(CTarsaDoc& doc, const ZK_UUID& stance_id) = 0;
  virtual bool AppendStance(CTarsaDoc& doc, const ZK_UUID& stance_id,
                            const ZK_SimpleArray<const CTarsaObject*>& objects) = 0;
};

// Exported by the host: the stance plug-in hands over its interface (null withdraws it).
void Stance_SetTarsaDynamicAccess(ITsStanceDynamicAccess* access);
