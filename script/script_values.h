// The script object's conversions between the loosely typed values scripts pass and the plug-in's
// texts and objects: argument values to text, object ids to the active document's objects, and
// lists of texts to the arrays scripts get back. Nothing here fails loudly: values of unusable
// types convert to nothing, and ids that name no object are skipped.
#pragma once

#include <vector>

#include "host/platform/automation.h"
#include "host/platform/ole_safe_array.h"
#include "host/tarsa/tarsa_object.h"
#include "host/zefkit/zk_array.h"
#include "host/zefkit/zk_string.h"

// True for a parameter the script left out (VT_ERROR with DISP_E_PARAMNOTFOUND).
bool IsMissing(const VARIANT& value);

// The value that `value` refers to through any number of by-reference variants: `value` itself
// when it is none. Null when a reference is null or the chain does not end (a cycle).
const VARIANT* FollowReferences(const VARIANT& value);

// A parameter as text: true, with `text` set, for 16- and 32-bit integers ("%d"), 4-byte floats
// ("%f") and 8-byte floats ("%g"), strings as they stand, and booleans ("True" for exactly
// VARIANT_TRUE, "False" for any other value). False, `text` unchanged, for a missing parameter
// and every other type.
bool VariantToString(const VARIANT& value, ZK_wString& text);

// The active document's object with the id that `text` holds, blanks around it allowed; null for
// text that is no id, an id of no object, or when no document is active. The document owns the
// object.
const CTarsaObject* ObjectFromIdString(const ZK_wString& text);

// Appends to `objects` the active document's objects named by a parameter: one id as a string,
// or a one-dimensional array of ids, strings or variants, any lower bound. An id named twice
// appends its object twice; unusable ids and types are skipped. The number of objects in
// `objects` afterwards.
int VariantToObjRefs(const VARIANT& value, ZK_SimpleArray<const CTarsaObject*>& objects);

// Makes `array` a zero-based array of the variants, in order, which it takes: each is cleared,
// also on failure. An empty list makes an empty array. False when the array cannot be made
// (`array` then empty).
bool VariantsToSafeArray(std::vector<VARIANT>& elements, COleSafeArray& array);
// A VT_BSTR variant holding a copy of the text; the caller clears it.
VARIANT StringVariant(const wchar_t* text);

// Makes `array` a zero-based array of VT_BSTR variants holding copies of the strings, in order;
// the caller hands it on with Detach. False for an empty list (`array` as it was) and when the
// array cannot be made (`array` then empty).
bool StringsToSafeArray(const ZK_ClassArray<ZK_wString>& strings, COleSafeArray& array);

// The sort order of stance names for ZK_qsort over an array of `const ZK_wString*`: ignoring
// letter case, a null name first.
int CompareNamesNoCase(const void* a, const void* b);
