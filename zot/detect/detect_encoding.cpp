#include <algorithm>
#include <cstddef>
#include <string_view>

#include <zot/conv.h>
#include <zot/detect.h>

#include "guess.h"
#include "late_declared_encoding.h"

namespace ZOT {

namespace {

using namespace std::string_view_literals;

constexpr std::size_t kPatternBytes = 1024;  // looked at for the pattern of UTF-16
constexpr std::size_t kLongestUtf8 = 4;

std::string_view Text(const unsigned char* bytes, std::size_t count) {
    return {reinterpret_cast<const char*>(bytes), count};
}

// https://encoding.spec.whatwg.org/#bom-sniff
CHARSET ByteOrderMark(std::string_view page) {
    if (page.starts_with("\xEF\xBB\xBF"sv)) return kCharsetUtf8;
    if (page.starts_with("\xFE\xFF"sv)) return kCharsetUtf16Be;
    if (page.starts_with("\xFF\xFE"sv)) return kCharsetUtf16Le;
    return kCharsetNone;
}

// UTF-16 is told by its markup: ASCII has a zero byte in every unit, always on the same side. Text in other
// scripts lies between, so that not every unit has one; nothing but UTF-16 has many on one side and next to
// none on the other.
CHARSET Utf16Pattern(const unsigned char* bytes, std::size_t count) {
    const std::size_t units = std::min(count, kPatternBytes) / 2;
    std::size_t zeros[2] = {0, 0};
    for (std::size_t i = 0; i != 2 * units; ++i) zeros[i % 2] += bytes[i] == 0 ? 1 : 0;
    const auto dominates = [units](std::size_t many, std::size_t few) {
        return 4 * many > units && many > 16 * few;
    };
    if (dominates(zeros[1], zeros[0])) return kCharsetUtf16Le;
    if (dominates(zeros[0], zeros[1])) return kCharsetUtf16Be;
    return kCharsetNone;
}

// Where the first byte that is not ASCII stands, or an escape, with which ISO-2022 leaves ASCII.
std::size_t EndOfAscii(std::string_view page) {
    const auto found = std::ranges::find_if(page, [](char c) { return c < 0 || c == 0x1B; });
    return static_cast<std::size_t>(found - page.begin());
}

// A page that was cut off inside a character is UTF-8 all the same.
bool IsUtf8(const unsigned char* bytes, std::size_t count, std::size_t ascii) {
    if (bytes[ascii] == 0x1B) return false;
    const std::size_t valid = ascii + ZOTCharset::ValidUtf8(bytes + ascii, count - ascii);
    return valid == count || (valid != ascii && count - valid < kLongestUtf8);
}

}  // namespace

CHARSET DetectEncoding(const unsigned char* bytes, std::size_t count) {
    if (count == 0) return kCharsetWindows1252;
    const CHARSET marked = ByteOrderMark(Text(bytes, std::min<std::size_t>(count, 3)));
    if (marked != kCharsetNone) return marked;
    const CHARSET declared = DeclaredEncoding(bytes, count);
    if (declared != kCharsetNone) return declared;
    const CHARSET pattern = Utf16Pattern(bytes, count);
    if (pattern != kCharsetNone) return pattern;
    const CHARSET late = LateDeclaredEncoding(bytes, count);
    if (late != kCharsetNone) return late;
    const std::size_t ascii = EndOfAscii(Text(bytes, count));
    if (ascii == count) return kCharsetWindows1252;
    if (IsUtf8(bytes, count, ascii)) return kCharsetUtf8;
    const CHARSET guessed = GuessEncoding(bytes + ascii, count - ascii);
    return guessed == kCharsetNone ? kCharsetWindows1252 : guessed;
}

}  // namespace ZOT
