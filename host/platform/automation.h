// The platform's automation types, through which script engines and the objects they drive pass
// loosely typed values: BSTR strings, VARIANT values, SAFEARRAY arrays and the late-bound IDispatch
// interface. The layouts, type codes and result codes are the platform's own, so that code written
// against them behaves as on the platform.
//
// Ownership follows the platform's rule: whoever holds a string or an array frees it. A VARIANT
// owns the string, array or interface reference it holds unless its type carries VT_BYREF;
// VariantClear frees what it owns. Nothing here is thread-safe; the host calls on one thread.
#pragma once

#include <cstddef>

#include "host/platform/platform_types.h"

// Result codes.
constexpr HRESULT S_OK = 0;
constexpr HRESULT E_UNEXPECTED = static_cast<HRESULT>(0x8000FFFFu);
constexpr HRESULT E_NOINTERFACE = static_cast<HRESULT>(0x80004002u);
constexpr HRESULT E_POINTER = static_cast<HRESULT>(0x80004003u);
constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000Eu);
constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057u);
constexpr HRESULT DISP_E_UNKNOWNINTERFACE = static_cast<HRESULT>(0x80020001u);
constexpr HRESULT DISP_E_MEMBERNOTFOUND = static_cast<HRESULT>(0x80020003u);
constexpr HRESULT DISP_E_PARAMNOTFOUND = static_cast<HRESULT>(0x80020004u);
constexpr HRESULT DISP_E_UNKNOWNNAME = static_cast<HRESULT>(0x80020006u);
constexpr HRESULT DISP_E_NONAMEDARGS = static_cast<HRESULT>(0x80020007u);
constexpr HRESULT DISP_E_BADVARTYPE = static_cast<HRESULT>(0x80020008u);
constexpr HRESULT DISP_E_BADINDEX = static_cast<HRESULT>(0x8002000Bu);
constexpr HRESULT DISP_E_ARRAYISLOCKED = static_cast<HRESULT>(0x8002000Du);
constexpr HRESULT DISP_E_BADPARAMCOUNT = static_cast<HRESULT>(0x8002000Eu);

inline bool SUCCEEDED(HRESULT result) { return result >= 0; }
inline bool FAILED(HRESULT result) { return result < 0; }

// Strings. A BSTR points at the first character of a wide string that is preceded by its length
// in bytes and followed by a terminating zero; it may hold zeros of its own. A null BSTR is the
// empty string.
typedef wchar_t OLECHAR;
typedef OLECHAR* BSTR;
typedef OLECHAR* LPOLESTR;

// A new BSTR holding a copy of `text` (null: the empty string), or null when out of memory. The
// caller owns it and frees it with SysFreeString.
BSTR SysAllocString(const OLECHAR* text);
// A new BSTR of `length` characters copied from `text`, or zeros when `text` is null; null when
// out of memory. The caller owns it.
BSTR SysAllocStringLen(const OLECHAR* text, UINT length);
// Frees a BSTR; null is ignored.
void SysFreeString(BSTR text);
// The number of characters, terminating zero excluded; 0 for null.
UINT SysStringLen(BSTR text);

// Type codes of a VARIANT, and of the elements of a SAFEARRAY.
typedef USHORT VARTYPE;
enum VARENUM : VARTYPE {
  VT_EMPTY = 0,
  VT_NULL = 1,
  VT_I2 = 2,
  VT_I4 = 3,
  VT_R4 = 4,
  VT_R8 = 5,
  VT_CY = 6,
  VT_DATE = 7,
  VT_BSTR = 8,
  VT_DISPATCH = 9,
  VT_ERROR = 10,
  VT_BOOL = 11,
  VT_VARIANT = 12,
  VT_ARRAY = 0x2000,  // a flag: a SAFEARRAY of the type in the low bits
  VT_BYREF = 0x4000,  // a flag: a pointer to a value of the type in the other bits
};

typedef SHORT VARIANT_BOOL;
constexpr VARIANT_BOOL VARIANT_TRUE = -1;
constexpr VARIANT_BOOL VARIANT_FALSE = 0;

typedef double DATE;
struct CY {
  LONGLONG int64;  // the amount in ten-thousandths
};

class IDispatch;
struct SAFEARRAY;

// A value of any automation type, tagged by `vt`.
struct VARIANT {
  VARTYPE vt;
  WORD wReserved1;
  WORD wReserved2;
  WORD wReserved3;
  union {
    LONG lVal;             // VT_I4
    SHORT iVal;            // VT_I2
    FLOAT fltVal;          // VT_R4
    DOUBLE dblVal;         // VT_R8
    VARIANT_BOOL boolVal;  // VT_BOOL
    SCODE scode;           // VT_ERROR
    CY cyVal;              // VT_CY
    DATE date;             // VT_DATE
    BSTR bstrVal;          // VT_BSTR
    IDispatch* pdispVal;   // VT_DISPATCH
    SAFEARRAY* parray;     // VT_ARRAY | type
    VARIANT* pvarVal;      // VT_BYREF | VT_VARIANT
    SAFEARRAY** pparray;   // VT_BYREF | VT_ARRAY | type
    void* byref;           // VT_BYREF | any other type
  };
};
typedef VARIANT VARIANTARG;

// Makes `variant` VT_EMPTY without looking at what it held.
void VariantInit(VARIANT* variant);
// Frees what `variant` owns (its string, its array with every element, its interface reference)
// and makes it VT_EMPTY. S_OK; E_INVALIDARG for null; DISP_E_ARRAYISLOCKED, with nothing
// changed, when its array is being accessed.
HRESULT VariantClear(VARIANT* variant);
// Clears `target`, then makes it a deep copy of `source`: strings and arrays are copied, interface
// references added. S_OK; E_INVALIDARG for null arguments; E_OUTOFMEMORY or DISP_E_BADVARTYPE
// with `target` left VT_EMPTY.
HRESULT VariantCopy(VARIANT* target, const VARIANT* source);

// Arrays. A SAFEARRAY describes `cDims` dimensions, each with its number of elements and its lower
// bound (any value), over one block of elements of `cbElements` bytes. The first dimension varies
// fastest. `fFeatures` tells what the elements are: strings and variants are owned by the array.
struct SAFEARRAYBOUND {
  ULONG cElements;
  LONG lLbound;
};

constexpr USHORT FADF_BSTR = 0x100;     // the elements are BSTRs
constexpr USHORT FADF_VARIANT = 0x800;  // the elements are VARIANTs

struct SAFEARRAY {
  USHORT cDims;
  USHORT fFeatures;
  ULONG cbElements;
  ULONG cLocks;  // how many SafeArrayAccessData calls are not yet undone
  void* pvData;
  SAFEARRAYBOUND rgsabound[1];  // cDims entries, first dimension first
};

// A new array of `dims` dimensions with the given bounds, every element zero (empty strings,
// VT_EMPTY variants). Element types: VT_I2, VT_I4, VT_R4, VT_R8, VT_CY, VT_DATE, VT_BSTR, VT_ERROR,
// VT_BOOL, VT_VARIANT. Null for another type, no dimension, too many elements or no memory. The
// caller owns it and frees it with SafeArrayDestroy.
SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dims, const SAFEARRAYBOUND* bounds);
// Frees the array with every element it owns. S_OK (also for null); DISP_E_ARRAYISLOCKED, with
// nothing freed, while it is being accessed.
HRESULT SafeArrayDestroy(SAFEARRAY* array);
// A new deep copy of `array` in `*copy`, owned by the caller: S_OK (null for a null array);
// E_INVALIDARG for a null `copy`; E_OUTOFMEMORY.
HRESULT SafeArrayCopy(const SAFEARRAY* array, SAFEARRAY** copy);
// The number of dimensions; 0 for null.
UINT SafeArrayGetDim(const SAFEARRAY* array);
// The lower and upper bound of dimension `dim` (1 is the first): S_OK; E_INVALIDARG for null
// arguments; DISP_E_BADINDEX for a dimension the array does not have.
HRESULT SafeArrayGetLBound(const SAFEARRAY* array, UINT dim, LONG* bound);
HRESULT SafeArrayGetUBound(const SAFEARRAY* array, UINT dim, LONG* bound);
// Gives the elements' block in `*data` and locks the array until SafeArrayUnaccessData: S_OK;
// E_INVALIDARG for null arguments. The array keeps ownership.
HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
// Undoes one SafeArrayAccessData: S_OK; E_INVALIDARG for null; E_UNEXPECTED when not locked.
HRESULT SafeArrayUnaccessData(SAFEARRAY* array);
// Copies `*element` into the element at `indices` (one per dimension, the first dimension's
// first), replacing and freeing what was there; strings and variants are deep-copied, so the
// caller keeps `element`. S_OK; E_INVALIDARG for null arguments; DISP_E_BADINDEX for indices
// outside the bounds; E_OUTOFMEMORY.
HRESULT SafeArrayPutElement(SAFEARRAY* array, const LONG* indices, const void* element);
// Copies the element at `indices` into `*element`, which the caller then owns (a variant there is
// overwritten, not cleared). Results as SafeArrayPutElement.
HRESULT SafeArrayGetElement(const SAFEARRAY* array, const LONG* indices, void* element);

// Interface ids.
struct GUID {
  ULONG Data1;
  USHORT Data2;
  USHORT Data3;
  BYTE Data4[8];
};
typedef GUID IID;
typedef const IID& REFIID;

bool operator==(const GUID& a, const GUID& b);
inline bool operator!=(const GUID& a, const GUID& b) { return !(a == b); }

inline constexpr IID IID_NULL = {0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}};
// {00000000-0000-0000-C000-000000000046}
inline constexpr IID IID_IUnknown = {0, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
// {00020400-0000-0000-C000-000000000046}
inline constexpr IID IID_IDispatch = {0x00020400, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};

// The interface every object hands out: asking for its other interfaces, and counting the
// references that callers hold. An object destroys itself when its last reference is released.
class IUnknown {
 public:
  // S_OK with `*object` the interface of that id and one reference added for the caller;
  // E_NOINTERFACE with `*object` null when there is none; E_POINTER for a null `object`.
  virtual HRESULT QueryInterface(REFIID iid, void** object) = 0;
  // Add or release a reference: the count afterwards.
  virtual ULONG AddRef() = 0;
  virtual ULONG Release() = 0;

 protected:
  ~IUnknown() = default;  // objects go through Release, never through delete
};

typedef LONG DISPID;
typedef ULONG LCID;
constexpr DISPID DISPID_UNKNOWN = -1;

// How Invoke is asked to use a member.
constexpr WORD DISPATCH_METHOD = 0x1;
constexpr WORD DISPATCH_PROPERTYGET = 0x2;

// The arguments of a late-bound call, last argument first, as script engines pass them.
struct DISPPARAMS {
  VARIANTARG* rgvarg;
  DISPID* rgdispidNamedArgs;
  UINT cArgs;
  UINT cNamedArgs;
};
struct EXCEPINFO;

// Late-bound calls: a script engine finds a member's DISPID by its name, then calls it with
// variants. Objects here carry no type information.
class IDispatch : public IUnknown {
 public:
  // The DISPID of the member named `names[0]` into `ids[0]`; further names would be parameter
  // names, which are not supported: S_OK; DISP_E_UNKNOWNNAME with DISPID_UNKNOWN for every name
  // not found; E_INVALIDARG for null arguments or no name; DISP_E_UNKNOWNINTERFACE unless `iid`
  // is IID_NULL.
  virtual HRESULT GetIDsOfNames(REFIID iid, LPOLESTR* names, UINT count, LCID locale,
                                DISPID* ids) = 0;
  // Calls the member. `result`, when not null, receives the result, which the caller then owns.
  virtual HRESULT Invoke(DISPID member, REFIID iid, LCID locale, WORD flags, DISPPARAMS* params,
                         VARIANT* result, EXCEPINFO* exception, UINT* argument_error) = 0;

 protected:
  ~IDispatch() = default;
};
