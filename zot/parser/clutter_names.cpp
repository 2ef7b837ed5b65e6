#include "clutter_names.h"

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

// Other pages and goods; what visitors write; what wants something of the reader; what belongs to the site,
// or shows for a moment.
bool IsClutter(const char* at) noexcept {
    const std::uint64_t word = FirstEight(at);
    switch (*at | 0x20) {
        case 'b': return BeginsWith(word, "breadcru");
        case 'c':
            return BeginsWith(word, "cookie") || BeginsWith(word, "commentf") ||
                   BeginsWith(word, "consent") || BeginsWith(word, "copyrigh");
        case 'g': return BeginsWith(word, "gdpr");
        case 'n': return BeginsWith(word, "newslett");
        case 'r':
            return BeginsWith(word, "related") || BeginsWith(word, "recommen") ||
                   BeginsWith(word, "respond") || BeginsWith(word, "reviews");
        case 's':
            return BeginsWith(word, "sidebar") || BeginsWith(word, "signup") || BeginsWith(word, "similar") ||
                   BeginsWith(word, "subscrib");
        case 't': return BeginsWith(word, "tooltip");
        case 'u': return BeginsWith(word, "upsell");
        default: return false;
    }
}

// What "has-sidebar" is none itself.
bool SpeaksOfAnother(std::string_view word) noexcept {
    return word == "has" || word == "with" || word == "no";
}

bool IsCapital(char c) noexcept {
    return c >= 'A' && c <= 'Z';
}

bool NamesClutter(Span names) noexcept {
    bool speaksOfAnother = false;
    for (const char* at = names.first; at < names.last;) {
        if (!IsLetter(*at)) {
            speaksOfAnother &= !IsHtmlSpace(*at++);
            continue;
        }
        if (!speaksOfAnother && IsClutter(at)) return true;
        const char* end = at + 1;
        while (end < names.last && IsLetter(*end) && !IsCapital(*end)) ++end;
        speaksOfAnother = SpeaksOfAnother({at, static_cast<std::size_t>(end - at)});
        at = end;
    }
    return false;
}

}  // namespace

bool IsNamedAsClutter(const NodeStore& nodes, NodeIndex element) noexcept {
    bool is = false;
    nodes.VisitAttributes(nodes[element], [&](const Attribute& attribute) {
        if (IsIgnoringCase(attribute.name, "class") || IsIgnoringCase(attribute.name, "id"))
            is = NamesClutter(attribute.value);
        return !is;
    });
    return is;
}

}  // namespace ZOTParser
