#pragma once

// What text_decoder.h does, one byte at a time and in the words of the standards: the measure for its fast
// paths.

#include <string>

#include "character_reference.h"
#include "text_decoder.h"

namespace ZOTParser {

class PlainTextDecoder {
public:
    PlainTextDecoder(const char* first, const char* last, TextKind kind)
        : at_(first), last_(last), kind_(kind) {}

    std::u16string Decode() {
        while (at_ != last_) {
            if (*at_ == '&' && kind_ != TextKind::kRaw) {
                DecodeReference();
            } else if (*at_ == '\r') {
                ++at_;
                if (at_ == last_ || *at_ != '\n') Put(U'\n');
            } else if (*at_ == '\0') {
                ++at_;
                if (kind_ != TextKind::kData) Put(kReplacement);
            } else {
                Put(DecodeCharacter());
            }
        }
        return text_;
    }

private:
    static constexpr char32_t kReplacement = 0xFFFD;

    void DecodeReference() {
        const CharacterReference reference = MatchCharacterReference(at_, last_, false);
        Put(reference.length == 0 ? U'&' : reference.first);
        if (reference.second != 0) Put(reference.second);
        at_ += reference.length == 0 ? 1 : reference.length;
    }

    // https://encoding.spec.whatwg.org/#utf-8-decoder, from its initial state to the first code point or
    // error.
    char32_t DecodeCharacter() {
        char32_t codePoint = 0;
        unsigned bytesNeeded = 0;
        unsigned bytesSeen = 0;
        unsigned lowerBoundary = 0x80;
        unsigned upperBoundary = 0xBF;
        while (at_ != last_) {
            const unsigned byte = static_cast<unsigned char>(*at_);
            if (bytesNeeded == 0) {
                ++at_;
                if (byte <= 0x7F) return byte;
                if (byte >= 0xC2 && byte <= 0xDF) {
                    bytesNeeded = 1;
                    codePoint = byte & 0x1F;
                } else if (byte >= 0xE0 && byte <= 0xEF) {
                    if (byte == 0xE0) lowerBoundary = 0xA0;
                    if (byte == 0xED) upperBoundary = 0x9F;
                    bytesNeeded = 2;
                    codePoint = byte & 0xF;
                } else if (byte >= 0xF0 && byte <= 0xF4) {
                    if (byte == 0xF0) lowerBoundary = 0x90;
                    if (byte == 0xF4) upperBoundary = 0x8F;
                    bytesNeeded = 3;
                    codePoint = byte & 0x7;
                } else {
                    return kReplacement;
                }
                continue;
            }
            if (byte < lowerBoundary || byte > upperBoundary) return kReplacement;
            ++at_;
            lowerBoundary = 0x80;
            upperBoundary = 0xBF;
            codePoint = codePoint << 6 | (byte & 0x3F);
            if (++bytesSeen == bytesNeeded) return codePoint;
        }
        return kReplacement;
    }

    void Put(char32_t code) {
        if (code >= 0x10000) {
            text_ += static_cast<char16_t>(0xD800 + ((code - 0x10000) >> 10));
            text_ += static_cast<char16_t>(0xDC00 + ((code - 0x10000) & 0x3FF));
        } else {
            text_ += static_cast<char16_t>(code);
        }
    }

    const char* at_;
    const char* last_;
    TextKind kind_;
    std::u16string text_;
};

}  // namespace ZOTParser
