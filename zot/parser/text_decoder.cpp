// Nearly all bytes of a text stand for themselves. So text is taken a block at a time: the block is widened
// straight to UTF-16, and where it holds a byte that needs a look the position moves up to that byte only,
// which is then taken by hand. Whole runs of other scripts are taken there, too.
//
// For a string the units go through a buffer on the stack, because it can only grow by zeros that are then
// overwritten.

#include "text_decoder.h"

#include <bit>
#include <cstddef>

#include "byte_vector.h"
#include "character_reference.h"
#include "utf8.h"

namespace ZOTParser {
namespace {

constexpr std::ptrdiff_t kPiece = 1024;  // source bytes decoded into the buffer at a time

// Where decoding stands. No byte gives more than one unit, so the units written never outnumber the bytes
// read.
struct Cursor {
    const char* at;
    char16_t* to;
};

constexpr unsigned char ByteAt(const char* at) noexcept {
    return static_cast<unsigned char>(*at);
}

constexpr bool IsTrail(const char* at) noexcept {
    return (ByteAt(at) & 0xC0) == 0x80;
}

Cursor Put(Cursor c, char32_t code) noexcept {
    if (code < 0x10000) {
        *c.to++ = static_cast<char16_t>(code);
    } else {
        *c.to++ = static_cast<char16_t>(0xD7C0 + (code >> 10));
        *c.to++ = static_cast<char16_t>(0xDC00 | (code & 0x3FF));
    }
    return c;
}

Cursor DecodeReference(Cursor c, const char* last) noexcept {
    const CharacterReference reference = MatchCharacterReference(c.at, last, false);
    if (reference.length == 0) {
        *c.to++ = u'&';
        ++c.at;
        return c;
    }
    c = Put(c, reference.first);
    if (reference.second != 0) c = Put(c, reference.second);
    c.at += reference.length;
    return c;
}

// A character whose bytes lie before `last`.
Cursor DecodeCharacter(Cursor c, const char* last) noexcept {
    if ((ByteAt(c.at) & 0xF0) == 0xE0 && last - c.at >= 3 && IsTrail(c.at + 1) && IsTrail(c.at + 2)) {
        const unsigned unit =
            (ByteAt(c.at) & 0xFu) << 12 | (ByteAt(c.at + 1) & 0x3Fu) << 6 | (ByteAt(c.at + 2) & 0x3Fu);
        // Neither longer than needed nor a surrogate.
        if (unit >= 0x800 && (unit & 0xF800) != 0xD800) {
            *c.to++ = static_cast<char16_t>(unit);
            c.at += 3;
            return c;
        }
    }
    const Utf8Character character = DecodeUtf8(c.at, last);
    c = Put(c, character.code);
    c.at += character.length;
    return c;
}

// A run of characters that are not ASCII, as far as `stop`, and the blanks between its words.
Cursor DecodeForeignRun(Cursor c, const char* stop, const char* last) noexcept {
    do {
        const std::ptrdiff_t left = last - c.at;
        if (left >= 2 && ByteAt(c.at) >= 0xC2 && ByteAt(c.at) <= 0xDF && IsTrail(c.at + 1)) {
            *c.to++ = static_cast<char16_t>((ByteAt(c.at) & 0x1F) << 6 | (ByteAt(c.at + 1) & 0x3F));
            c.at += 2;
            // Where one such letter is followed by another, a word of them begins.
            if (left >= 2 + std::ptrdiff_t{ByteVector::kSize} && ByteAt(c.at) >= 0xC2) {
                const unsigned pairs = ByteVector::Load(c.at).DecodePairs(c.to);
                c.to += pairs;
                c.at += 2 * pairs;
            }
        } else {
            c = DecodeCharacter(c, last);
        }
        if (c.at < stop && *c.at == ' ') {
            *c.to++ = u' ';
            ++c.at;
        }
    } while (c.at < stop && ByteAt(c.at) >= 0x80);
    return c;
}

// Takes the byte that does not stand for itself, and what belongs to it.
template <TextKind kKind>
Cursor DecodeSpecial(Cursor c, const char* stop, const char* last) noexcept {
    if (ByteAt(c.at) >= 0x80) return DecodeForeignRun(c, stop, last);
    if (kKind != TextKind::kRaw && *c.at == '&') return DecodeReference(c, last);
    if (*c.at == '\r') {
        if (last - c.at == 1 || c.at[1] != '\n') *c.to++ = u'\n';
    } else if (kKind != TextKind::kData) {
        *c.to++ = kReplacementCharacter;
    }
    ++c.at;
    return c;
}

// Bit n is set when byte n does not stand for itself.
template <TextKind kKind>
unsigned SpecialBytes(ByteVector block) noexcept {
    ByteVector marks = block | block.Equal('\r') | block.Equal('\0');
    if (kKind != TextKind::kRaw) marks = marks | block.Equal('&');
    return marks.Mask();
}

// Goes on to `stop`, or a little further when a character or reference reaches over it.
template <TextKind kKind>
Cursor DecodePiece(Cursor c, const char* stop, const char* last) noexcept {
    while (c.at < stop) {
        const std::ptrdiff_t left = last - c.at;
        unsigned special;
        if (left >= std::ptrdiff_t{ByteVector::kSize}) {
            const ByteVector block = ByteVector::Load(c.at);
            block.Widen(c.to);
            special = SpecialBytes<kKind>(block);
            if (special == 0) {
                c.at += ByteVector::kSize;
                c.to += ByteVector::kSize;
                continue;
            }
        } else {
            const ByteVector block = ByteVector::LoadPart(c.at, static_cast<std::size_t>(left));
            block.Widen(c.to);
            special = SpecialBytes<kKind>(block) | 1u << left;  // the end is special, too
        }
        const int plain = std::countr_zero(special);
        c.at += plain;
        c.to += plain;
        if (c.at >= stop) break;  // what does not stand for itself then belongs to the next piece
        c = DecodeSpecial<kKind>(c, stop, last);
    }
    return c;
}

static_assert(kDecodeSlack >= ByteVector::kSize, "a block is written whole, whatever of it counts");

template <TextKind kKind>
void AppendText(const char* first, const char* last, std::u16string& out) {
    char16_t buffer[kPiece + std::ptrdiff_t{kDecodeSlack}];
    while (first < last) {
        const char* const stop = last - first > kPiece ? first + kPiece : last;
        const Cursor end = DecodePiece<kKind>({first, buffer}, stop, last);
        out.append(buffer, static_cast<std::size_t>(end.to - buffer));
        first = end.at;
    }
}

constexpr bool StandsForItself(char c) noexcept {
    return static_cast<unsigned char>(c) < 0x80 && c != '&' && c != '\r' && c != '\0';
}

const char* AppendAttributeReference(const char* at, const char* last, std::string& out) {
    const CharacterReference reference = MatchCharacterReference(at, last, true);
    if (reference.length == 0) {
        out += '&';
        return at + 1;
    }
    AppendUtf8(reference.first, out);
    if (reference.second != 0) AppendUtf8(reference.second, out);
    return at + reference.length;
}

const char* AppendAttributeSpecial(const char* at, const char* last, std::string& out) {
    if (*at == '&') return AppendAttributeReference(at, last, out);
    if (*at == '\r') {
        if (last - at == 1 || at[1] != '\n') out += '\n';
        return at + 1;
    }
    const Utf8Character character = DecodeUtf8(at, last);
    AppendUtf8(character.code != 0 ? character.code : kReplacementCharacter, out);
    return at + character.length;
}

}  // namespace

char16_t* DecodeText(const char* first, const char* last, TextKind kind, char16_t* units) noexcept {
    const Cursor start{first, units};
    switch (kind) {
        case TextKind::kData: return DecodePiece<TextKind::kData>(start, last, last).to;
        case TextKind::kReplaceNul: return DecodePiece<TextKind::kReplaceNul>(start, last, last).to;
        case TextKind::kRaw: break;
    }
    return DecodePiece<TextKind::kRaw>(start, last, last).to;
}

void AppendDecodedText(const char* first, const char* last, TextKind kind, std::u16string& out) {
    switch (kind) {
        case TextKind::kData: return AppendText<TextKind::kData>(first, last, out);
        case TextKind::kReplaceNul: return AppendText<TextKind::kReplaceNul>(first, last, out);
        case TextKind::kRaw: return AppendText<TextKind::kRaw>(first, last, out);
    }
}

void AppendDecodedAttribute(const char* first, const char* last, std::string& out) {
    while (first < last) {
        const char* plain = first;
        while (plain != last && StandsForItself(*plain)) ++plain;
        out.append(first, plain);
        first = plain == last ? last : AppendAttributeSpecial(plain, last, out);
    }
}

}  // namespace ZOTParser
