#pragma once

#include <cstddef>

#include <zot/charset.h>

namespace ZOT {

// DeclaredEncoding for pages whose declaration stands behind the first 1024 bytes. A browser that finds such
// a one in the tree starts the page over in the encoding declared. The search is bounded.
CHARSET LateDeclaredEncoding(const unsigned char* bytes, std::size_t count);

}  // namespace ZOT
