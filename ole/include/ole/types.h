#pragma once

// The scalar types, identifiers and result codes of OLE Automation, with the sizes they have on 64-bit
// Windows.

#include <stddef.h>
#include <stdint.h>
#ifndef __cplusplus
#include <stdbool.h>
#include <uchar.h>
#endif

#define OLE_API __attribute__((visibility("default")))

// Calls on interfaces and functions follow the platform's C convention.
#define STDMETHODCALLTYPE
#define STDAPICALLTYPE

#ifdef __cplusplus
#define OLE_C_BEGIN extern "C" {
#define OLE_C_END }
#else
#define OLE_C_BEGIN
#define OLE_C_END
#endif

typedef int BOOL;
#ifndef TRUE
#define TRUE 1
#define FALSE 0
#endif
typedef char CHAR;
typedef uint8_t BYTE;
typedef int16_t SHORT;
typedef uint16_t USHORT;
typedef uint16_t WORD;
typedef int INT;
typedef unsigned int UINT;
typedef int32_t LONG;
typedef uint32_t ULONG;
typedef uint32_t DWORD;
typedef long long LONGLONG;
typedef unsigned long long ULONGLONG;
typedef float FLOAT;
typedef double DOUBLE;
typedef void* PVOID;
typedef size_t SIZE_T;
typedef intptr_t SHANDLE_PTR;

// Text is UTF-16. OLESTR("text") is a literal of it.
typedef char16_t WCHAR;
typedef char16_t OLECHAR;
typedef OLECHAR* LPOLESTR;
typedef const OLECHAR* LPCOLESTR;
#define OLESTR(text) u##text

typedef union {
    __extension__ struct {
        DWORD LowPart;
        LONG HighPart;
    };
    LONGLONG QuadPart;
} LARGE_INTEGER;

typedef union {
    __extension__ struct {
        DWORD LowPart;
        DWORD HighPart;
    };
    ULONGLONG QuadPart;
} ULARGE_INTEGER;

typedef struct {
    DWORD dwLowDateTime;
    DWORD dwHighDateTime;
} FILETIME;

typedef struct {
    uint32_t Data1;
    uint16_t Data2;
    uint16_t Data3;
    uint8_t Data4[8];
} GUID;
typedef GUID IID;
typedef GUID CLSID;

#ifdef __cplusplus
#include <cstring>
typedef const GUID& REFGUID;
typedef const IID& REFIID;
inline bool IsEqualGUID(REFGUID a, REFGUID b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}
inline bool IsEqualIID(REFIID a, REFIID b) {
    return IsEqualGUID(a, b);
}
inline bool operator==(REFGUID a, REFGUID b) {
    return IsEqualGUID(a, b);
}
#else
typedef const GUID* REFGUID;
typedef const IID* REFIID;
#endif

// Negative codes are failures.
typedef int32_t HRESULT;
typedef int32_t SCODE;
#define SUCCEEDED(result) ((HRESULT)(result) >= 0)
#define FAILED(result) ((HRESULT)(result) < 0)

#define S_OK ((HRESULT)0)
#define S_FALSE ((HRESULT)1)
#define E_UNEXPECTED ((HRESULT)0x8000FFFF)
#define E_NOTIMPL ((HRESULT)0x80004001)
#define E_NOINTERFACE ((HRESULT)0x80004002)
#define E_POINTER ((HRESULT)0x80004003)
#define E_FAIL ((HRESULT)0x80004005)
#define E_OUTOFMEMORY ((HRESULT)0x8007000E)
#define E_INVALIDARG ((HRESULT)0x80070057)
#define DISP_E_BADVARTYPE ((HRESULT)0x80020008)
#define DISP_E_OVERFLOW ((HRESULT)0x8002000A)
#define DISP_E_BADINDEX ((HRESULT)0x8002000B)
#define DISP_E_ARRAYISLOCKED ((HRESULT)0x8002000D)
#define STG_E_INVALIDFUNCTION ((HRESULT)0x80030001)
#define STG_E_INVALIDPOINTER ((HRESULT)0x80030009)
#define STG_E_MEDIUMFULL ((HRESULT)0x80030070)
