#pragma once

#include <cstddef>

#include <zot/charset.h>

namespace ZOT {

// What the platform's detection library makes of a text that is no UTF-8 and begins with a byte that is not
// ASCII; kCharsetNone when it cannot tell. It reads a bounded part of the text.
CHARSET GuessEncoding(const unsigned char* bytes, std::size_t count);

}  // namespace ZOT
