#pragma once

#include <cstddef>

#include <zot/charset.h>
#include <zot/pool_buffer.h>

// Conversion between character sets, decoding as the WHATWG Encoding Standard says
// (https://encoding.spec.whatwg.org/). Bytes that are no text decode to U+FFFD, one for each maximal part
// that could have begun a character; they are never an error, and an ASCII byte after a broken lead byte is
// kept. Byte-order marks are text like any other. Everything here may be called from any thread.
namespace ZOTCharset {

// A converter moves as many whole characters as the source has and the target takes.
//
// `sourceUsed` and `targetUsed` are set to the bytes taken and the bytes written. A character whose end the
// source does not show stays unconsumed, unless `last` says that nothing follows; then it is U+FFFD. Nothing
// consumed means that no progress is possible: the source is empty or holds the beginning of one character,
// or the target has no room for one (16 bytes always suffice). With `strict` the conversion stops in front of
// what cannot be converted; without it that becomes U+FFFD, or "?" where the target has no U+FFFD.
using FastConversion = void (*)(const void* source, unsigned int sourceSize, unsigned int& sourceUsed,
                                void* target, unsigned int targetSize, unsigned int& targetUsed, bool last,
                                bool strict);

// What a half remembers between its calls: shift states. All 0 at the start of a text.
struct ConversionState {
    unsigned int decoder = 0;
    unsigned int encoder = 0;
};

// Bytes to UTF-16, and UTF-16 to bytes. The rules are those of FastConversion; UTF-16 is counted in units.
using MbToWcConversion = void (*)(ConversionState& state, const unsigned char* source,
                                  unsigned int sourceSize, unsigned int& sourceUsed, char16_t* target,
                                  unsigned int targetUnits, unsigned int& targetUsed, bool last);
using WcToMbConversion = void (*)(ConversionState& state, const char16_t* source, unsigned int sourceUnits,
                                  unsigned int& sourceUsed, unsigned char* target, unsigned int targetSize,
                                  unsigned int& targetUsed, bool last);

class QUILL_API Conv {
public:
    // A direct converter, or null. There is one to UTF-8 from UTF-8, UTF-16 and every single-byte encoding.
    static FastConversion FastConversionFunction(ZOT::CHARSET from, ZOT::CHARSET to);

    // The halves; null for a number that is no encoding. Encodings for Chinese, Japanese and Korean are only
    // read.
    static MbToWcConversion MbToWcConversionFunction(ZOT::CHARSET from);
    static WcToMbConversion WcToMbConversionFunction(ZOT::CHARSET to);
};

// Two halves as one converter, for one text from its start to its end.
class QUILL_API ConversionClass {
public:
    // With a null half nothing is ever consumed.
    ConversionClass(MbToWcConversion decode, WcToMbConversion encode) : decode_(decode), encode_(encode) {}

    // As FastConversion, not strict.
    void operator()(const void* source, unsigned int sourceSize, unsigned int& sourceUsed, void* target,
                    unsigned int targetSize, unsigned int& targetUsed, bool last);

private:
    MbToWcConversion decode_;
    WcToMbConversion encode_;
    ConversionState state_;
};

// Decodes a whole text into UTF-8. `utf8` is replaced; `padding` zero bytes, not counted in its size, follow
// the text. A number that is no encoding is read as Windows-1252. False when memory runs out; `utf8` is then
// empty.
QUILL_API bool ToUtf8(ZOT::CHARSET from, const unsigned char* bytes, std::size_t count, ZOT::PoolBuffer& utf8,
                      std::size_t padding);

// Bytes of the longest beginning that is whole, valid UTF-8. A text of which that is all need not be
// converted.
QUILL_API std::size_t ValidUtf8(const unsigned char* bytes, std::size_t count);

}  // namespace ZOTCharset
