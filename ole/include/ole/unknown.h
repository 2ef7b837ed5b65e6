#pragma once

#include <ole/types.h>

// The root of all interfaces. In C++ an interface is an abstract class whose virtual functions stand in the
// order of the published interface; in C it is a structure whose first word points to them.
//
// An object lives until Release has been called as often as AddRef, the reference that its maker got counted
// in. References may be counted from any thread; whether other operations may, the object says.

#ifdef __cplusplus

struct IUnknown {
    // Gives `*object` the interface `iid` and takes a reference for the caller. E_NOINTERFACE with null when
    // the object has none such.
    virtual HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) = 0;
    // Both return the references left, which is of use to tests alone.
    virtual ULONG STDMETHODCALLTYPE AddRef() = 0;
    virtual ULONG STDMETHODCALLTYPE Release() = 0;
};

#else

typedef struct IUnknown IUnknown;
typedef struct {
    HRESULT (*QueryInterface)(IUnknown* self, REFIID iid, void** object);
    ULONG (*AddRef)(IUnknown* self);
    ULONG (*Release)(IUnknown* self);
} IUnknownVtbl;
struct IUnknown {
    const IUnknownVtbl* lpVtbl;
};

#endif

typedef struct IDispatch IDispatch;

OLE_C_BEGIN
OLE_API extern const IID IID_IUnknown;
OLE_API extern const IID IID_IDispatch;
OLE_C_END
