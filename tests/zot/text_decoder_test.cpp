#include "text_decoder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "byte_vector.h"
#include "byte_vector_plain.h"
#include "plain_text_decoder.h"

namespace ZOTParser {
namespace {

using namespace std::string_view_literals;

constexpr TextKind kKinds[] = {TextKind::kData, TextKind::kReplaceNul, TextKind::kRaw};

std::u16string Decode(std::string_view source, TextKind kind) {
    const std::vector<char> bytes(source.begin(), source.end());  // of exactly this size
    std::u16string text;
    AppendDecodedText(bytes.data(), bytes.data() + bytes.size(), kind, text);
    return text;
}

std::u16string DecodePlainly(std::string_view source, TextKind kind) {
    return PlainTextDecoder(source.data(), source.data() + source.size(), kind).Decode();
}

TEST(TextDecoder, EachKindTreatsReferencesAndNulItsWay) {
    struct Case {
        std::string_view source;
        std::u16string_view data;
        std::u16string_view replaceNul;
        std::u16string_view raw;
    };
    const Case cases[] = {
        {""sv, u""sv, u""sv, u""sv},
        {"plain"sv, u"plain"sv, u"plain"sv, u"plain"sv},
        {"a&amp;b"sv, u"a&b"sv, u"a&b"sv, u"a&amp;b"sv},
        {"a&b &"sv, u"a&b &"sv, u"a&b &"sv, u"a&b &"sv},
        {"&not= &nvlt;"sv, u"\u00AC= <\u20D2"sv, u"\u00AC= <\u20D2"sv, u"&not= &nvlt;"sv},
        {"&#x1F600;"sv, u"\U0001F600"sv, u"\U0001F600"sv, u"&#x1F600;"sv},
        {"a\0b"sv, u"ab"sv, u"a\uFFFDb"sv, u"a\uFFFDb"sv},
        {"\0"sv, u""sv, u"\uFFFD"sv, u"\uFFFD"sv},
        {"&#0;"sv, u"\uFFFD"sv, u"\uFFFD"sv, u"&#0;"sv},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Decode(c.source, TextKind::kData), c.data) << c.source;
        EXPECT_EQ(Decode(c.source, TextKind::kReplaceNul), c.replaceNul) << c.source;
        EXPECT_EQ(Decode(c.source, TextKind::kRaw), c.raw) << c.source;
    }
}

TEST(TextDecoder, NewlinesAndIllFormedBytesAreTheSameInEveryKind) {
    struct Case {
        std::string_view source;
        std::u16string_view text;
    };
    const Case cases[] = {
        {"a\r\nb\rc\n\r\r\n"sv, u"a\nb\nc\n\n\n"sv},
        {"\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"sv, u"\u00E4\u20AC\U0001F600"sv},
        {"\xEF\xBF\xBF\xF4\x8F\xBF\xBF"sv, u"\uFFFF\U0010FFFF"sv},
        // A byte that begins nothing, a sequence that stops short.
        {"\x80z\xFFz\xC0\xAFz"sv, u"\uFFFDz\uFFFDz\uFFFD\uFFFDz"sv},
        {"\xC3z\xE2\x82z\xF0\x9F\x98z"sv, u"\uFFFDz\uFFFDz\uFFFDz"sv},
        {"\xC3"sv, u"\uFFFD"sv},
        {"\xE2\x82"sv, u"\uFFFD"sv},
        {"\xF0\x9F\x98"sv, u"\uFFFD"sv},
        // Longer than needed, a surrogate, beyond U+10FFFF.
        {"\xE0\x80\x80"sv, u"\uFFFD\uFFFD\uFFFD"sv},
        {"\xED\xA0\x80"sv, u"\uFFFD\uFFFD\uFFFD"sv},
        {"\xF4\x90\x80\x80\xF5"sv, u"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD"sv},
        {"\xC3\xC3\xA4\xE2\xC3\xA4"sv, u"\uFFFD\u00E4\uFFFD\u00E4"sv},
    };
    for (const Case& c : cases) {
        for (TextKind kind : kKinds) EXPECT_EQ(Decode(c.source, kind), c.text) << c.source;
    }
}

TEST(TextDecoder, AppendsAndKeepsWhatWasThere) {
    std::u16string text = u"kept ";
    const std::string source(5000, 'x');
    AppendDecodedText(source.data(), source.data() + source.size(), TextKind::kData, text);
    EXPECT_EQ(text, u"kept " + std::u16string(5000, u'x'));
}

// Pieces of which every mixture of fast and slow paths is made.
std::string RandomSource(std::uint32_t& seed, unsigned pieces) {
    const std::string_view kPieces[] = {
        "abcdefghijklmnopqrstuvwxyz012345"sv,
        "a"sv,
        " "sv,
        "\r\n"sv,
        "\r"sv,
        "\0"sv,
        "&"sv,
        "&amp;"sv,
        "&nvlt;"sv,
        "&#x1F600;"sv,
        "\u043F\u0440\u0438\u0432\u0435\u0442 \u043C\u0438\u0440"sv,
        "\u043F\u0440\u0438\u0432\u0435\u0442\u043F\u0440\u0438\u0432\u0435\u0442"sv,
        "\u00E9"sv,
        "\u4F60\u597D\u4E16\u754C"sv,
        "\U0001F600"sv,
        "\xC3"sv,
        "\xC0\x80"sv,
        "\xE2\x82"sv,
        "\xED\xA0\x80"sv,
        "\xF0\x9F"sv};
    std::string source;
    for (unsigned i = 0; i < pieces; ++i) {
        seed = seed * 1664525 + 1013904223;
        source += kPieces[(seed >> 16) % std::size(kPieces)];
    }
    return source;
}

TEST(TextDecoder, FastPathsAgreeWithThePlainDecoder) {
    std::uint32_t seed = 1;
    for (unsigned round = 0; round < 3000; ++round) {
        const std::string source = RandomSource(seed, round % 400);
        for (TextKind kind : kKinds) ASSERT_EQ(Decode(source, kind), DecodePlainly(source, kind)) << source;
    }
}

// A block read where a text or the buffer ends must take the bytes before the end and none behind.
TEST(TextDecoder, EveryLengthAndEveryPlaceOfASpecialByte) {
    for (std::size_t length = 1; length < 70; ++length) {
        for (std::size_t place = 0; place < length; ++place) {
            for (std::string_view special : {"&"sv, "\r"sv, "\0"sv, "\xE9"sv, "\xD0\xB0"sv}) {
                std::string source(length, 'x');
                source.replace(place, 1, special);
                for (TextKind kind : kKinds) ASSERT_EQ(Decode(source, kind), DecodePlainly(source, kind));
            }
        }
    }
    for (std::size_t before = 1000; before < 1050; ++before) {
        for (std::string_view end :
             {"&nvlt;&nvlt;"sv, "\xD0\xB0\xD0\xB0\xD0\xB0\xD0\xB0\xD0\xB0\xD0\xB0"sv, "\r\n"sv}) {
            const std::string source = std::string(before, 'x') + std::string(end) + std::string(30, 'y');
            ASSERT_EQ(Decode(source, TextKind::kData), DecodePlainly(source, TextKind::kData)) << before;
        }
    }
}

// All that a vector can tell.
template <typename Vector>
std::vector<unsigned> Describe(const Vector& vector) {
    char16_t wide[Vector::kSize];
    vector.Widen(wide);
    char16_t pairs[8];
    const unsigned good = vector.DecodePairs(pairs);
    std::vector<unsigned> description = {(vector.Equal('&') | vector.Equal('\r')).Mask(), vector.Mask(),
                                         good};
    description.insert(description.end(), wide, wide + Vector::kSize);
    description.insert(description.end(), pairs, pairs + good);
    return description;
}

// Long texts are decoded piece by piece. Where a piece ends a block may reach over it, and a word of other
// letters may begin there: that is the next piece's.
TEST(TextDecoder, WordsOfOtherLettersAtTheEndOfAPiece) {
    for (std::size_t taken = 0; taken < ByteVector::kSize; ++taken) {  // by hand, before the first block
        for (std::size_t plain = 1000; plain < 1050; ++plain) {
            std::string source = std::string(taken, '&') + std::string(plain, ' ');
            for (int letter = 0; letter < 20; ++letter) source += "\xD1\x8F";
            EXPECT_EQ(Decode(source, TextKind::kData), DecodePlainly(source, TextKind::kData))
                << taken << ' ' << plain;
        }
    }
}

TEST(ByteVector, FastestAgreesWithPlain) {
    std::uint32_t seed = 2;
    for (unsigned round = 0; round < 2000; ++round) {
        const std::string source = RandomSource(seed, 20) + std::string(ByteVector::kSize, '.');
        ASSERT_EQ(Describe(ByteVector::Load(source.data())), Describe(ByteVectorPlain::Load(source.data())));
        for (std::size_t count = 1; count < ByteVector::kSize; ++count) {
            const std::vector<char> part(source.begin(), source.begin() + static_cast<std::ptrdiff_t>(count));
            ASSERT_EQ(Describe(ByteVector::LoadPart(part.data(), count)),
                      Describe(ByteVectorPlain::LoadPart(part.data(), count)));
        }
    }
    for (unsigned lead = 0; lead < 256; ++lead) {
        for (unsigned trail = 0; trail < 256; ++trail) {
            std::string source;
            for (unsigned i = 0; i < 8; ++i) source += {static_cast<char>(lead), static_cast<char>(trail)};
            ASSERT_EQ(Describe(ByteVector::Load(source.data())),
                      Describe(ByteVectorPlain::Load(source.data())));
        }
    }
}

TEST(AttributeDecoder, GivesUtf8) {
    struct Case {
        std::string_view source;
        std::string_view value;
    };
    const Case cases[] = {
        {""sv, ""sv},
        {"plain"sv, "plain"sv},
        {"?a=1&b=2&lt=3&amp;c&copy"sv, "?a=1&b=2&lt=3&c\u00A9"sv},
        {"&ngE;&#x1F600;&#128;&#0;"sv, "\u2267\u0338\U0001F600\u20AC\uFFFD"sv},
        {"a\0b"sv, "a\uFFFDb"sv},
        {"a\r\nb\rc\n"sv, "a\nb\nc\n"sv},
        {"\xC3\xA4\xC3 \xED\xA0\x80"sv, "\u00E4\uFFFD \uFFFD\uFFFD\uFFFD"sv},
    };
    for (const Case& c : cases) {
        const std::vector<char> bytes(c.source.begin(), c.source.end());
        std::string value = "kept ";
        AppendDecodedAttribute(bytes.data(), bytes.data() + bytes.size(), value);
        EXPECT_EQ(value, "kept " + std::string(c.value)) << c.source;
    }
}

}  // namespace
}  // namespace ZOTParser
