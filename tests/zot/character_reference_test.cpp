#include "character_reference.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "utf8.h"

namespace ZOTParser {
namespace {

// "<characters> <length>" of the reference that `source` begins with, "-" when it is none.
std::string Match(const std::string& source, bool inAttribute) {
    const std::vector<char> bytes(source.begin(), source.end());  // of exactly this size
    const CharacterReference reference =
        MatchCharacterReference(bytes.data(), bytes.data() + bytes.size(), inAttribute);
    if (reference.length == 0) return "-";
    std::string dump;
    AppendUtf8(reference.first, dump);
    if (reference.second != 0) AppendUtf8(reference.second, dump);
    return dump + " " + std::to_string(reference.length);
}

TEST(CharacterReference, LongestNameCounts) {
    struct Case {
        const char* source;
        const char* inText;
        const char* inAttribute;
    };
    const Case cases[] = {
        {"&amp;", "& 5", "& 5"},
        {"&AMP;lt;", "& 5", "& 5"},
        {"&amp", "& 4", "& 4"},
        {"&amp ", "& 4", "& 4"},
        {"&amp;&", "& 5", "& 5"},
        {"&notin;", "\u2209 7", "\u2209 7"},
        // Without its semicolon "notin" is no name, "not" is.
        {"&notin", "\u00AC 4", "-"},
        {"&notit;", "\u00AC 4", "-"},
        {"&not=", "\u00AC 4", "-"},
        {"&not;=", "\u00AC 5", "\u00AC 5"},
        {"&not1", "\u00AC 4", "-"},
        {"&not\"", "\u00AC 4", "\u00AC 4"},
        {"&frac34x", "\u00BE 7", "-"},
        {"&Aacutes;", "\u00C1 7", "-"},
        // Case matters, and most names need the semicolon.
        {"&Amp;", "-", "-"},
        {"&hellip", "-", "-"},
        {"&hellip;", "\u2026 8", "\u2026 8"},
        {"&ngE;", "\u2267\u0338 5", "\u2267\u0338 5"},
        {"&fjlig;", "fj 7", "fj 7"},
        {"&Afr;", "\U0001D504 5", "\U0001D504 5"},
        {"&CounterClockwiseContourIntegral;", "\u2233 33", "\u2233 33"},
        {"&CounterClockwiseContourIntegral", "-", "-"},
        {"&CounterClockwiseContourIntegrals;", "-", "-"},
        {"&ltaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa;", "< 3", "-"},
        {"&", "-", "-"},
        {"&;", "-", "-"},
        {"& amp;", "-", "-"},
        {"&a", "-", "-"},
        {"&\u00E4;", "-", "-"},
        {"&lt\u00E4", "< 3", "< 3"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Match(c.source, false), c.inText) << c.source;
        EXPECT_EQ(Match(c.source, true), c.inAttribute) << c.source;
    }
}

TEST(CharacterReference, NumbersGiveScalarValues) {
    struct Case {
        const char* source;
        const char* match;
    };
    const Case cases[] = {
        {"&#65;", "A 5"},
        {"&#65", "A 4"},
        {"&#65x", "A 4"},
        {"&#x41;", "A 6"},
        {"&#X4aG", "J 5"},
        {"&#000000000000000000065;", "A 24"},
        {"&#13;", "\r 5"},
        {"&#x1F600;", "\U0001F600 9"},
        {"&#xFFFF;", "\uFFFF 8"},
        // Windows-1252 where Unicode has controls, but for the five places that it leaves free.
        {"&#128;", "\u20AC 6"},
        {"&#x92;", "\u2019 6"},
        {"&#x81;", "\u0081 6"},
        {"&#159;", "\u0178 6"},
        {"&#160;", "\u00A0 6"},
        // No scalar values.
        {"&#0;", "\uFFFD 4"},
        {"&#xD800;", "\uFFFD 8"},
        {"&#xDFFF;", "\uFFFD 8"},
        {"&#x10FFFF;", "\U0010FFFF 10"},
        {"&#x110000;", "\uFFFD 10"},
        {"&#4294967361;", "\uFFFD 13"},
        {"&#x10000000000000041;", "\uFFFD 21"},
        // No digits.
        {"&#", "-"},
        {"&#;", "-"},
        {"&#a;", "-"},
        {"&#x", "-"},
        {"&#x;", "-"},
        {"&#xg;", "-"},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Match(c.source, false), c.match) << c.source;
        EXPECT_EQ(Match(c.source + std::string("="), true), c.match) << c.source;
    }
}

TEST(CharacterReference, EveryNameIsFound) {
    struct Name {
        std::string name;
        char32_t first;
        char32_t second;
        bool legacy;
    };
    const Name names[] = {
#define NAMED_REFERENCE(name, first, second, legacy) {name, first, second, legacy},
#include "named_references.inc"
#undef NAMED_REFERENCE
    };
    for (const Name& name : names) {
        std::string characters;
        AppendUtf8(name.first, characters);
        if (name.second != 0) AppendUtf8(name.second, characters);
        EXPECT_EQ(Match("&" + name.name + ";", true),
                  characters + " " + std::to_string(name.name.size() + 2));
        if (name.legacy) {
            EXPECT_EQ(Match("&" + name.name, true), characters + " " + std::to_string(name.name.size() + 1));
        }
    }
}

}  // namespace
}  // namespace ZOTParser
