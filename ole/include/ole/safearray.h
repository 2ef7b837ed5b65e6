#pragma once

#include <ole/types.h>

// Arrays of OLE Automation: any number of dimensions with their own lower bounds, elements of one kind, and a
// count of locks during which the array must not go away.
//
// An array made here owns its elements: strings, variants and interfaces in it are freed, cleared and
// released with it. Locks are counted atomically; everything else on one array is done by one thread at a
// time.
//
// The elements lie in one piece, the index of the first dimension running fastest. `rgsabound` holds the
// dimensions in reverse order, the last one first.

typedef USHORT VARTYPE;

typedef struct {
    ULONG cElements;
    LONG lLbound;
} SAFEARRAYBOUND;

typedef struct tagSAFEARRAY {
    USHORT cDims;
    USHORT fFeatures;  // FADF_ flags
    ULONG cbElements;  // bytes of one element
    ULONG cLocks;
    PVOID pvData;
    SAFEARRAYBOUND rgsabound[1];  // cDims of them
} SAFEARRAY;

// The array or its data lie on the stack, in static memory or inside a structure, and are not freed.
#define FADF_AUTO 0x0001
#define FADF_STATIC 0x0002
#define FADF_EMBEDDED 0x0004
#define FADF_FIXEDSIZE 0x0010
// In front of the descriptor stands an interface identifier (16 bytes) or an element type (the last 4 of
// them).
#define FADF_HAVEIID 0x0040
#define FADF_HAVEVARTYPE 0x0080
// What the elements are when they own something.
#define FADF_BSTR 0x0100
#define FADF_UNKNOWN 0x0200
#define FADF_DISPATCH 0x0400
#define FADF_VARIANT 0x0800

OLE_C_BEGIN

// An array with `dimensions` bounds, the first dimension first, all elements zero. Null when the element type
// cannot stand in an array, when there are no dimensions, and when memory runs out.
OLE_API SAFEARRAY* SafeArrayCreate(VARTYPE type, UINT dimensions, SAFEARRAYBOUND* bounds);
OLE_API SAFEARRAY* SafeArrayCreateVector(VARTYPE type, LONG lowerBound, ULONG count);

// The two halves of SafeArrayCreate. The descriptor's bounds (in reverse order) are set in between.
OLE_API HRESULT SafeArrayAllocDescriptorEx(VARTYPE type, UINT dimensions, SAFEARRAY** array);
OLE_API HRESULT SafeArrayAllocData(SAFEARRAY* array);

// A second array with copies of the elements; copies of interfaces are references.
OLE_API HRESULT SafeArrayCopy(SAFEARRAY* array, SAFEARRAY** copy);

// DISP_E_ARRAYISLOCKED while locks are held; nothing is freed then. Null is a success.
OLE_API HRESULT SafeArrayDestroy(SAFEARRAY* array);
OLE_API HRESULT SafeArrayDestroyData(SAFEARRAY* array);
OLE_API HRESULT SafeArrayDestroyDescriptor(SAFEARRAY* array);

// 0 for null.
OLE_API UINT SafeArrayGetDim(SAFEARRAY* array);
OLE_API UINT SafeArrayGetElemsize(SAFEARRAY* array);

// Dimensions count from 1; DISP_E_BADINDEX for one that the array does not have. The upper bound of an empty
// dimension is one less than its lower bound.
OLE_API HRESULT SafeArrayGetLBound(SAFEARRAY* array, UINT dimension, LONG* bound);
OLE_API HRESULT SafeArrayGetUBound(SAFEARRAY* array, UINT dimension, LONG* bound);
OLE_API HRESULT SafeArrayGetVartype(SAFEARRAY* array, VARTYPE* type);

// At most 65535 locks at a time. E_UNEXPECTED for one more, and for an unlock without a lock.
OLE_API HRESULT SafeArrayLock(SAFEARRAY* array);
OLE_API HRESULT SafeArrayUnlock(SAFEARRAY* array);

// The elements in place, and a lock until SafeArrayUnaccessData.
OLE_API HRESULT SafeArrayAccessData(SAFEARRAY* array, void** data);
OLE_API HRESULT SafeArrayUnaccessData(SAFEARRAY* array);

// `indices` holds one index per dimension, the first dimension first. DISP_E_BADINDEX for one outside the
// bounds. Put stores a copy of what `value` points at and gives up what stood there; for strings and
// interfaces `value` is the BSTR or the interface itself. Get gives the caller a copy of its own in `*value`.
OLE_API HRESULT SafeArrayPtrOfIndex(SAFEARRAY* array, LONG* indices, void** place);
OLE_API HRESULT SafeArrayPutElement(SAFEARRAY* array, LONG* indices, void* value);
OLE_API HRESULT SafeArrayGetElement(SAFEARRAY* array, LONG* indices, void* value);

OLE_C_END
