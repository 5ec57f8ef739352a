// CKorvoEveryObjectIterator: the visit of every object of a document that the plug-in makes
// wherever it looks at all objects: normal, locked and hidden objects (never deleted ones) of the
// active model, lights included, whether or not they are visible.
#pragma once

#include "host/tarsa/tarsa_doc.h"

class CKorvoEveryObjectIterator : public CTarsaObjectIterator {
 public:
  explicit CKorvoEveryObjectIterator(CTarsaDoc& doc)
      : CTarsaObjectIterator(
            doc,
            CTarsaObject::normal_object | CTarsaObject::locked_object | CTarsaObject::hidden_object,
            CTarsaObject::active_object) {
    IncludeLights(true);
    EnableVisibleFilter(false);
  }
};
