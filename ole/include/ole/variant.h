#pragma once

#include <ole/bstr.h>
#include <ole/safearray.h>
#include <ole/unknown.h>

// A value that tells its type: 24 bytes, the type first, the value from byte 8 on.
//
// A variant owns its string, array or reference unless VT_BYREF is set. One thread at a time uses a variant.

enum VARENUM {
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
    VT_UNKNOWN = 13,
    VT_DECIMAL = 14,
    VT_I1 = 16,
    VT_UI1 = 17,
    VT_UI2 = 18,
    VT_UI4 = 19,
    VT_I8 = 20,
    VT_UI8 = 21,
    VT_INT = 22,
    VT_UINT = 23,
    VT_RECORD = 36,
    VT_VECTOR = 0x1000,
    VT_ARRAY = 0x2000,
    VT_BYREF = 0x4000,
    VT_RESERVED = 0x8000,
    VT_TYPEMASK = 0xFFF
};

typedef SHORT VARIANT_BOOL;
#define VARIANT_TRUE ((VARIANT_BOOL)-1)
#define VARIANT_FALSE ((VARIANT_BOOL)0)

typedef double DATE;  // days since 30 December 1899

typedef union {
    __extension__ struct {
        ULONG Lo;
        LONG Hi;
    };
    LONGLONG int64;  // ten-thousandths of the currency
} CY;

typedef struct {
    USHORT wReserved;
    BYTE scale;
    BYTE sign;
    ULONG Hi32;
    ULONGLONG Lo64;
} DECIMAL;

typedef struct IRecordInfo IRecordInfo;
typedef struct tagVARIANT VARIANT;
typedef VARIANT VARIANTARG;

struct tagVARIANT {
    __extension__ union {
        __extension__ struct {
            VARTYPE vt;
            WORD wReserved1;
            WORD wReserved2;
            WORD wReserved3;
            __extension__ union {
                LONGLONG llVal;
                LONG lVal;
                BYTE bVal;
                SHORT iVal;
                FLOAT fltVal;
                DOUBLE dblVal;
                VARIANT_BOOL boolVal;
                SCODE scode;
                CY cyVal;
                DATE date;
                BSTR bstrVal;
                IUnknown* punkVal;
                IDispatch* pdispVal;
                SAFEARRAY* parray;
                BYTE* pbVal;
                SHORT* piVal;
                LONG* plVal;
                LONGLONG* pllVal;
                FLOAT* pfltVal;
                DOUBLE* pdblVal;
                VARIANT_BOOL* pboolVal;
                SCODE* pscode;
                CY* pcyVal;
                DATE* pdate;
                BSTR* pbstrVal;
                IUnknown** ppunkVal;
                IDispatch** ppdispVal;
                SAFEARRAY** pparray;
                VARIANT* pvarVal;
                PVOID byref;
                CHAR cVal;
                USHORT uiVal;
                ULONG ulVal;
                ULONGLONG ullVal;
                INT intVal;
                UINT uintVal;
                DECIMAL* pdecVal;
                CHAR* pcVal;
                USHORT* puiVal;
                ULONG* pulVal;
                ULONGLONG* pullVal;
                INT* pintVal;
                UINT* puintVal;
                __extension__ struct {
                    PVOID pvRecord;
                    IRecordInfo* pRecInfo;
                };
            };
        };
        DECIMAL decVal;  // its first two bytes are the type
    };
};

#define V_VT(variant) ((variant)->vt)
#define V_I4(variant) ((variant)->lVal)
#define V_BSTR(variant) ((variant)->bstrVal)
#define V_BSTRREF(variant) ((variant)->pbstrVal)
#define V_ARRAY(variant) ((variant)->parray)
#define V_ARRAYREF(variant) ((variant)->pparray)
#define V_ERROR(variant) ((variant)->scode)
#define V_UNKNOWN(variant) ((variant)->punkVal)

OLE_C_BEGIN

// Makes a variant of type VT_EMPTY out of raw memory. Frees nothing.
OLE_API void VariantInit(VARIANTARG* variant);

// Gives up what the variant owns and leaves VT_EMPTY. DISP_E_ARRAYISLOCKED for a locked array and
// DISP_E_BADVARTYPE for a type that a variant cannot have, records among them; the variant is then left as it
// was.
OLE_API HRESULT VariantClear(VARIANTARG* variant);

// Clears `target`, then gives it a copy of `source`; what a VT_BYREF source points at is not copied. When
// that fails, `target` is as it was or VT_EMPTY.
OLE_API HRESULT VariantCopy(VARIANTARG* target, const VARIANTARG* source);

OLE_C_END
