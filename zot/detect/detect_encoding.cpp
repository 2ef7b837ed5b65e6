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

bool IsCutOff(std::string_view tail) {
    const auto isTrail = [](char c) { return (c & 0xC0) == 0x80; };
    return tail.size() < kLongestUtf8 && !isTrail(tail[0]) && std::ranges::all_of(tail.substr(1), isTrail);
}

// A page that was cut off inside a character is UTF-8 all the same.
bool IsUtf8(std::string_view page) {
    const std::size_t ascii = EndOfAscii(page);
    if (ascii == page.size() || page[ascii] == 0x1B) return false;
    const std::string_view rest = page.substr(ascii);
    const std::size_t valid =
        ZOTCharset::ValidUtf8(reinterpret_cast<const unsigned char*>(rest.data()), rest.size());
    return valid == rest.size() || (valid != 0 && IsCutOff(rest.substr(valid)));
}

// Whether `page`, which is valid UTF-8, has so many characters that are not ASCII that it can hardly be a
// text in `declared`. A few letters may look like UTF-8 by chance; more so where two bytes are one character.
bool IsUtf8ByWeight(std::string_view page, CHARSET declared) {
    constexpr std::ptrdiff_t kFew = 3;
    constexpr std::ptrdiff_t kMany = 16;
    const bool twoBytes = declared == kCharsetGbk || declared == kCharsetGb18030 ||
                          declared == kCharsetBig5 || declared == kCharsetShiftJis ||
                          declared == kCharsetEucJp || declared == kCharsetEucKr;
    const auto leads =
        std::ranges::count_if(page, [](char c) { return static_cast<unsigned char>(c) >= 0xC2; });
    return leads >= (twoBytes ? kMany : kFew);
}

// Pages that were saved or sent on as UTF-8 often keep the declaration of what they once were.
CHARSET Checked(CHARSET declared, std::string_view page) {
    if (declared == kCharsetUtf8 || declared == kCharsetReplacement) return declared;
    return IsUtf8(page) && IsUtf8ByWeight(page, declared) ? kCharsetUtf8 : declared;
}

bool IsLatinScript(CHARSET charset) {
    switch (charset) {
        case kCharsetWindows1250:
        case kCharsetWindows1254:
        case kCharsetWindows1257:
        case kCharsetWindows1258:
        case kCharsetMacintosh:
        case kCharsetIso8859_2:
        case kCharsetIso8859_3:
        case kCharsetIso8859_4:
        case kCharsetIso8859_10:
        case kCharsetIso8859_13:
        case kCharsetIso8859_14:
        case kCharsetIso8859_15:
        case kCharsetIso8859_16: return true;
        default: return false;
    }
}

// The encodings of the Latin script differ in few letters: an English page with some typographic quotes, or a
// French name, says nothing about them. Only a text with many such letters is taken for another one than
// Windows-1252.
CHARSET Guess(std::string_view page) {
    constexpr std::ptrdiff_t kTelling = 24;
    const std::string_view rest = page.substr(EndOfAscii(page));
    const CHARSET guessed = GuessEncoding(reinterpret_cast<const unsigned char*>(rest.data()), rest.size());
    if (guessed == kCharsetNone) return kCharsetWindows1252;
    if (!IsLatinScript(guessed)) return guessed;
    const auto letters =
        std::ranges::count_if(rest, [](char c) { return static_cast<unsigned char>(c) >= 0xC0; });
    return letters < kTelling ? kCharsetWindows1252 : guessed;
}

}  // namespace

CHARSET DetectEncoding(const unsigned char* bytes, std::size_t count) {
    const std::string_view page = Text(bytes, count);
    if (page.empty()) return kCharsetWindows1252;
    const CHARSET marked = ByteOrderMark(page);
    if (marked != kCharsetNone) return marked;
    const CHARSET declared = DeclaredEncoding(bytes, count);
    if (declared != kCharsetNone) return Checked(declared, page);
    const CHARSET pattern = Utf16Pattern(bytes, count);
    if (pattern != kCharsetNone) return pattern;
    const CHARSET late = LateDeclaredEncoding(bytes, count);
    if (late != kCharsetNone) return Checked(late, page);
    if (EndOfAscii(page) == page.size()) return kCharsetWindows1252;
    return IsUtf8(page) ? kCharsetUtf8 : Guess(page);
}

}  // namespace ZOT
