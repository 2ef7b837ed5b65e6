// All names are runs of ASCII letters and digits, and a name either needs its semicolon or may go without. So
// there are two ways to match: the whole run with the semicolon behind it, or the longest legacy name that
// the run begins with.
//
// Names are found through buckets of a hash that is computed while the run is scanned. The tables are laid
// out by the compiler, without pointers, so that loading the library costs nothing:
//
//   kBucketStart[hash]  ->  kNames[...]  ->  kLetters[offset, offset + length)

#include "character_reference.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace ZOTParser {
namespace {

struct SourceName {
    std::string_view name;
    char32_t first;
    char32_t second;
    bool legacy;
};

constexpr SourceName kSource[] = {
#define NAMED_REFERENCE(name, first, second, legacy) {name, first, second, legacy},
#include "named_references.inc"
#undef NAMED_REFERENCE
};

constexpr std::size_t kNameCount = std::size(kSource);
constexpr std::size_t kBuckets = 2048;  // a power of two; about one name each
constexpr unsigned kLongestName = 31;
constexpr unsigned kLongestLegacyName = 6;
constexpr unsigned kShortestName = 2;

struct Name {
    std::uint32_t first : 21;
    std::uint32_t length : 5;
    std::uint32_t legacy : 1;  // may stand without its semicolon
    std::uint16_t second;
    std::uint16_t offset;  // in kLetters
};

constexpr std::uint32_t HashStep(std::uint32_t hash, char letter) noexcept {
    return hash * 31 + static_cast<unsigned char>(letter);
}

constexpr std::size_t Bucket(std::uint32_t hash) noexcept {
    return (hash ^ hash >> 11) % kBuckets;
}

constexpr std::size_t BucketOf(std::string_view name) noexcept {
    std::uint32_t hash = 0;
    for (char letter : name) hash = HashStep(hash, letter);
    return Bucket(hash);
}

constexpr std::size_t CountLetters() {
    std::size_t count = 0;
    for (const SourceName& source : kSource) count += source.name.size();
    return count;
}

struct Tables {
    std::array<std::uint16_t, kBuckets + 1> bucketStart;
    std::array<Name, kNameCount> names;  // by bucket
    std::array<char, CountLetters()> letters;
};

constexpr Tables BuildTables() {
    Tables tables{};
    std::array<std::uint16_t, kNameCount> bucketOf{};
    for (std::size_t i = 0; i < kNameCount; ++i) {
        bucketOf[i] = static_cast<std::uint16_t>(BucketOf(kSource[i].name));
        ++tables.bucketStart[bucketOf[i] + 1u];
    }
    for (std::size_t i = 0; i < kBuckets; ++i) {
        tables.bucketStart[i + 1] =
            static_cast<std::uint16_t>(tables.bucketStart[i + 1] + tables.bucketStart[i]);
    }
    std::array<std::uint16_t, kBuckets> used{};
    std::size_t offset = 0;
    for (std::size_t i = 0; i < kNameCount; ++i) {
        const SourceName& source = kSource[i];
        Name& name = tables.names[tables.bucketStart[bucketOf[i]] + std::size_t{used[bucketOf[i]]++}];
        name.first = source.first & 0x1FFFFF;
        name.length = static_cast<std::uint32_t>(source.name.size()) & 0x1F;
        name.legacy = source.legacy;
        name.second = static_cast<std::uint16_t>(source.second);
        name.offset = static_cast<std::uint16_t>(offset);
        for (char letter : source.name) tables.letters[offset++] = letter;
    }
    return tables;
}

constexpr Tables kTables = BuildTables();
static_assert(kTables.letters.size() <= 0xFFFF, "offsets are 16 bits wide");

constexpr CharacterReference kNoReference{};

constexpr bool IsDigit(char c) noexcept {
    return c >= '0' && c <= '9';
}
constexpr bool IsLetter(char c) noexcept {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
constexpr bool IsAlphanumeric(char c) noexcept {
    return IsLetter(c) || IsDigit(c);
}

// The value of a hexadecimal digit, or 16.
constexpr unsigned HexValue(char c) noexcept {
    if (IsDigit(c)) return static_cast<unsigned>(c - '0');
    const char lower = static_cast<char>(c | 0x20);
    return lower >= 'a' && lower <= 'f' ? static_cast<unsigned>(lower - 'a' + 10) : 16;
}

// The name made of `length` letters at `letters`, or null.
const Name* FindName(const char* letters, std::size_t length, std::uint32_t hash) noexcept {
    const std::size_t bucket = Bucket(hash);
    for (std::size_t i = kTables.bucketStart[bucket]; i < kTables.bucketStart[bucket + 1]; ++i) {
        const Name& name = kTables.names[i];
        if (name.length == length && std::memcmp(&kTables.letters[name.offset], letters, length) == 0)
            return &name;
    }
    return nullptr;
}

CharacterReference ReferenceTo(const Name& name, std::size_t length) noexcept {
    return {name.first, name.second, static_cast<unsigned>(length)};
}

// https://html.spec.whatwg.org/multipage/parsing.html#named-character-reference-state
CharacterReference MatchNamed(const char* at, const char* end, bool inAttribute) noexcept {
    const char* const letters = at + 1;
    const char* const limit = end - letters > kLongestName ? letters + kLongestName : end;
    std::uint32_t prefixHash[kLongestLegacyName + 1] = {};  // of the first n letters
    std::uint32_t hash = 0;
    const char* p = letters;
    for (; p != limit && IsAlphanumeric(*p); ++p) {
        hash = HashStep(hash, *p);
        if (const auto n = static_cast<std::size_t>(p - letters); n < kLongestLegacyName)
            prefixHash[n + 1] = hash;
    }
    const auto run = static_cast<std::size_t>(p - letters);
    if (run < kShortestName) return kNoReference;
    if (p != end && *p == ';') {
        if (const Name* name = FindName(letters, run, hash)) return ReferenceTo(*name, run + 2);
    }
    for (std::size_t length = run < kLongestLegacyName ? run : kLongestLegacyName; length >= kShortestName;
         --length) {
        const Name* name = FindName(letters, length, prefixHash[length]);
        if (name == nullptr || !name->legacy) continue;
        const char* const after = letters + length;
        if (inAttribute && after != end && (*after == '=' || IsAlphanumeric(*after))) return kNoReference;
        return ReferenceTo(*name, length + 1);
    }
    return kNoReference;
}

// What Windows-1252 has where Unicode has the C1 controls; 0 where the control stays.
constexpr char16_t kWindows1252[32] = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0,      0x017D, 0,      0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178,
};

// https://html.spec.whatwg.org/multipage/parsing.html#numeric-character-reference-end-state
char32_t ScalarValue(char32_t code) noexcept {
    if (code == 0 || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0xFFFD;
    if (code >= 0x80 && code <= 0x9F && kWindows1252[code - 0x80] != 0) return kWindows1252[code - 0x80];
    return code;
}

// https://html.spec.whatwg.org/multipage/parsing.html#numeric-character-reference-state
CharacterReference MatchNumeric(const char* at, const char* end) noexcept {
    const char* p = at + 2;
    const bool hex = p != end && (*p == 'x' || *p == 'X');
    if (hex) ++p;
    const unsigned base = hex ? 16 : 10;
    const char* const digits = p;
    char32_t code = 0;
    for (; p != end; ++p) {
        const unsigned digit = HexValue(*p);
        if (digit >= base) break;
        code = code * base + digit;
        if (code > 0x10FFFF) code = 0x110000;  // stays outside, never overflows
    }
    if (p == digits) return kNoReference;
    if (p != end && *p == ';') ++p;
    return {ScalarValue(code), 0, static_cast<unsigned>(p - at)};
}

}  // namespace

CharacterReference MatchCharacterReference(const char* at, const char* end, bool inAttribute) noexcept {
    const char* const next = at + 1;
    if (next == end) return kNoReference;
    if (*next == '#') return MatchNumeric(at, end);
    return IsAlphanumeric(*next) ? MatchNamed(at, end, inAttribute) : kNoReference;
}

}  // namespace ZOTParser
