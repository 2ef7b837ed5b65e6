#pragma once

#include <ole/variant.h>

// Calls by name or number.

typedef LONG DISPID;
typedef DWORD LCID;
typedef struct ITypeInfo ITypeInfo;

typedef struct {
    VARIANTARG* rgvarg;  // in reverse order
    DISPID* rgdispidNamedArgs;
    UINT cArgs;
    UINT cNamedArgs;
} DISPPARAMS;

typedef struct tagEXCEPINFO {
    WORD wCode;
    WORD wReserved;
    BSTR bstrSource;
    BSTR bstrDescription;
    BSTR bstrHelpFile;
    DWORD dwHelpContext;
    PVOID pvReserved;
    HRESULT (*pfnDeferredFillIn)(struct tagEXCEPINFO* info);
    SCODE scode;
} EXCEPINFO;

#ifdef __cplusplus
struct IDispatch : IUnknown {
#define OLE_METHOD(name, parameters) virtual HRESULT STDMETHODCALLTYPE name parameters = 0;
#include <ole/methods/dispatch.inc>
#undef OLE_METHOD
};
#endif
