#pragma once

// Sixteen bytes of a page at once: `Block` is the fastest that the target has. Every block class has the same
// operations, which block_portable.h describes.

#if defined(__SSE2__)
#include "block_sse2.h"
namespace ZOTParser {
using Block = Sse2Block;
}
#else
#include "block_portable.h"
namespace ZOTParser {
using Block = PortableBlock;
}
#endif
