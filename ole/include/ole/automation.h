#pragma once

// OLE Automation, as much of it as the library and its hosts need, for platforms that have none: the
// published types, with their sizes and layout on 64-bit Windows, and the published functions under their own
// names. Usable from C and C++. On Windows the header of this name includes the platform's own.
//
// There is no state beside the objects themselves, and no apartment: nothing needs CoInitialize.

#include <ole/bstr.h>
#include <ole/dispatch.h>
#include <ole/global_memory.h>
#include <ole/safearray.h>
#include <ole/stream.h>
#include <ole/types.h>
#include <ole/unknown.h>
#include <ole/variant.h>
