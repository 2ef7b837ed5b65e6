#pragma once

#include <string>
#include <zot/charset.h>
#include <zot/stream.h>

namespace QuillNS {

// Text from one character set to another. What the converters of ZOTCharset never take is left out: the
// beginning of a character at the end of the source, and everything when one of the character sets is none.
// `flag` says that no such end may be left: it becomes U+FFFD, at the end of each piece (4096 bytes) of a
// stream too.

// Reads `source` from its read position to its end and appends to `target`.
void ConvertStream(ZOT::CHARSET from, ZOT::CHARSET to, ZOT::BinaryStreamBuf& source,
                   ZOT::BinaryStreamBuf& target, bool flag);

// Converts wide text, which counts as its bytes, low byte first (so `from` is kCharsetUtf16Le), and appends
// to `target`. `length` is in units.
void ConvertWideBuffer(ZOT::CHARSET from, ZOT::CHARSET to, const unsigned short* source, unsigned int length,
                       std::string& target, bool flag);
void ConvertWideString(ZOT::CHARSET from, ZOT::CHARSET to, const std::u16string& source, std::string& target,
                       bool flag);

}  // namespace QuillNS
