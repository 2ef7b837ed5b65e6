#pragma once

#include <ole/types.h>

// Strings of OLE Automation. A BSTR points at the first of its UTF-16 units; a NUL follows the last one, and
// four bytes before the first one tell the length in bytes. NULs inside are part of the string. A null BSTR
// is a string without units.
//
// Whoever holds a BSTR owns it and frees it with SysFreeString. Any thread may do so.
//
//   pad (4)   bytes (4)   units ...   NUL
//                         ^ BSTR
typedef OLECHAR* BSTR;

OLE_C_BEGIN

// A copy of `text` up to its first NUL. Null for null, and when memory runs out.
OLE_API BSTR SysAllocString(const OLECHAR* text);

// A string of `length` units copied from `text`; with `text` null they are left unset. Null when memory runs
// out.
OLE_API BSTR SysAllocStringLen(const OLECHAR* text, UINT length);

// As SysAllocStringLen, with the length in bytes.
OLE_API BSTR SysAllocStringByteLen(const char* bytes, UINT length);

OLE_API void SysFreeString(BSTR string);

// The length in units (a single byte at the end is not counted) or bytes; 0 for null.
OLE_API UINT SysStringLen(BSTR string);
OLE_API UINT SysStringByteLen(BSTR string);

OLE_C_END
