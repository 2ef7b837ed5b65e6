#include "clutter_names.h"

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "tokenizer.h"

// A name is made of words: "related-posts", "related_posts" and "relatedPosts" of two. A word is known by how
// it begins, in the eight bytes that a number holds: "recommended" and "recommendations" are one.

namespace ZOTParser {
namespace {

// In small letters. Only letters come out as letters. The source may be read a little behind its end.
std::uint64_t FirstEight(const char* at) noexcept {
    std::uint64_t word;
    std::memcpy(&word, at, sizeof word);
    return word | 0x2020202020202020u;
}

// Whether a word begins with these, up to eight small letters.
template <std::size_t kSize>
bool BeginsWith(std::uint64_t word, const char (&letters)[kSize]) noexcept {
    static_assert(kSize - 1 <= sizeof word);
    char beginning[sizeof word] = {};
    char mask[sizeof word] = {};
    for (std::size_t i = 0; i + 1 < kSize; ++i) {
        beginning[i] = letters[i];
        mask[i] = '\xFF';
    }
    return (word & std::bit_cast<std::uint64_t>(mask)) == std::bit_cast<std::uint64_t>(beginning);
}

ClutterName NameIf(bool is, ClutterName name) noexcept {
    return is ? name : ClutterName::kNone;
}

// Other pages and goods; what visitors write; what wants something of the reader; what belongs to the site,
// or shows for a moment.
ClutterName NameOfWord(const char* at) noexcept {
    const std::uint64_t word = FirstEight(at);
    const auto clutter = [](bool is) { return NameIf(is, ClutterName::kClutter); };
    switch (*at | 0x20) {
        case 'b': return clutter(BeginsWith(word, "breadcru"));
        case 'c':
            if (BeginsWith(word, "comments")) return ClutterName::kComments;
            return clutter(BeginsWith(word, "cookie") || BeginsWith(word, "commentf") ||
                           BeginsWith(word, "consent") || BeginsWith(word, "copyrigh"));
        case 'f': return clutter(BeginsWith(word, "footer"));
        case 'g': return clutter(BeginsWith(word, "gdpr"));
        case 'm': return NameIf(BeginsWith(word, "menu") || BeginsWith(word, "mega"), ClutterName::kMenu);
        case 'n': return clutter(BeginsWith(word, "newslett"));
        case 'r':
            return clutter(BeginsWith(word, "related") || BeginsWith(word, "recommen") ||
                           BeginsWith(word, "respond") || BeginsWith(word, "reviews"));
        case 's':
            return clutter(BeginsWith(word, "sidebar") || BeginsWith(word, "signup") ||
                           BeginsWith(word, "similar") || BeginsWith(word, "subscrib"));
        case 't': return clutter(BeginsWith(word, "tooltip"));
        case 'u': return clutter(BeginsWith(word, "upsell"));
        default: return ClutterName::kNone;
    }
}

bool IsCapital(char c) noexcept {
    return c >= 'A' && c <= 'Z';
}

// Whether the word before says that what the name speaks of is elsewhere: "has-sidebar" is no sidebar.
bool IsSpokenOf(const char* first, const char* word) noexcept {
    const char* end = word;
    for (; end > first && !IsLetter(end[-1]); --end) {
        if (IsHtmlSpace(end[-1])) return false;
    }
    const char* begin = end;
    while (begin > first && IsLetter(begin[-1]) && (begin == end || !IsCapital(*begin))) --begin;
    const Span before{begin, end};
    return IsIgnoringCase(before, "has") || IsIgnoringCase(before, "with") || IsIgnoringCase(before, "no");
}

// Looks at no byte but the first ones of words: a capital, and a letter behind none.
ClutterName NameIn(Span names) noexcept {
    ClutterName name = ClutterName::kNone;
    unsigned int letterBefore = 0;
    for (const char* at = names.first; at < names.last; at += ByteVector::kSize) {
        const ByteVector bytes = ByteVector::Load(at);
        const unsigned int capitals = bytes.AtMost('Z').Mask() & ~bytes.AtMost('@').Mask();
        const unsigned int letters = capitals | (bytes.AtMost('z').Mask() & ~bytes.AtMost('`').Mask());
        unsigned int words = capitals | (letters & ~(letters << 1 | letterBefore));
        for (; words != 0; words &= words - 1) {
            const char* const word = at + std::countr_zero(words);
            if (word >= names.last) return name;
            const ClutterName found = NameOfWord(word);
            if (found > name && !IsSpokenOf(names.first, word)) name = found;
        }
        letterBefore = letters >> (ByteVector::kSize - 1);
    }
    return name;
}

}  // namespace

ClutterName NameOf(const NodeStore& nodes, NodeIndex element) noexcept {
    ClutterName name = ClutterName::kNone;
    nodes.VisitAttributes(nodes[element], [&](const Attribute& attribute) {
        if (IsIgnoringCase(attribute.name, "class") || IsIgnoringCase(attribute.name, "id"))
            name = std::max(name, NameIn(attribute.value));
        return name != ClutterName::kClutter;
    });
    return name;
}

}  // namespace ZOTParser
