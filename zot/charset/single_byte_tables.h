#pragma once

#include <cstddef>

#include <zot/charset.h>

namespace ZOTCharset {

// What the bytes 0x80 to 0xFF of an encoding mean; the others are ASCII.
// https://encoding.spec.whatwg.org/#legacy-single-byte-encodings, and ISO-8859-1 and x-user-defined, which go
// by the same rule
struct SingleByteTable {
    ZOT::CHARSET charset;
    char16_t upper[128];
};

constexpr std::size_t kSingleByteEncodings = 29;  // ISO-8859-8-I has the table of ISO-8859-8

extern const SingleByteTable kSingleByteTables[kSingleByteEncodings];

}  // namespace ZOTCharset
