#pragma once

#include <ole/types.h>

// Memory behind a handle, so that a block may move while nobody looks at it. A handle is used by one thread
// at a time.

typedef void* HGLOBAL;

#define GMEM_FIXED 0x0000     // the handle is the block's address
#define GMEM_MOVEABLE 0x0002  // the block has an address only while it is locked
#define GMEM_ZEROINIT 0x0040
#define GHND (GMEM_MOVEABLE | GMEM_ZEROINIT)
#define GPTR (GMEM_FIXED | GMEM_ZEROINIT)

OLE_C_BEGIN

// A block of `bytes` bytes; null when memory runs out. A moveable block of 0 bytes has a handle, but no
// address.
OLE_API HGLOBAL GlobalAlloc(UINT flags, SIZE_T bytes);

// Changes the size and keeps the content; the bytes that come on are zero with GMEM_ZEROINIT. A moveable
// block keeps its handle; a fixed one moves only when `flags` holds GMEM_MOVEABLE. Null, and the block as it
// was, when it cannot grow.
OLE_API HGLOBAL GlobalReAlloc(HGLOBAL memory, SIZE_T bytes, UINT flags);

// Returns null: it always succeeds. Null is let pass.
OLE_API HGLOBAL GlobalFree(HGLOBAL memory);

OLE_API SIZE_T GlobalSize(HGLOBAL memory);

// The block's address, good until the matching GlobalUnlock. Null for null and
// for a moveable block of 0 bytes; it is then not locked.
OLE_API void* GlobalLock(HGLOBAL memory);

// TRUE while other locks are left.
OLE_API BOOL GlobalUnlock(HGLOBAL memory);

OLE_C_END
