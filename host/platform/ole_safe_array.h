// COleSafeArray: a VARIANT that owns a SAFEARRAY, for code that builds an array to hand to a
// script. The wrapper owns its array until Detach hands it over; its destructor frees whatever it
// still holds.
#pragma once

#include "host/platform/automation.h"

class COleSafeArray : public VARIANT {
 public:
  COleSafeArray() { VariantInit(this); }
  ~COleSafeArray() { Clear(); }
  COleSafeArray(const COleSafeArray&) = delete;
  COleSafeArray& operator=(const COleSafeArray&) = delete;

  // Replaces what the wrapper holds by a new array of `type` elements, every element zero: with
  // lower bounds 0 and `dims` element counts, or with the given bounds. False, the wrapper then
  // empty, for a type that arrays cannot hold, no dimension, or no memory.
  bool Create(VARTYPE type, ULONG dims, const ULONG* elements);
  bool Create(VARTYPE type, ULONG dims, const SAFEARRAYBOUND* bounds);
  // Copies `*element` into the element at `indices`, as SafeArrayPutElement: S_OK or its error;
  // E_UNEXPECTED when the wrapper holds no array.
  HRESULT PutElement(const LONG* indices, const void* element);
  // Hands the held value to the caller, who then owns it; the wrapper is left VT_EMPTY.
  VARIANT Detach();
  // Frees what the wrapper holds; it is left VT_EMPTY.
  void Clear() { VariantClear(this); }
};
