#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <zot/conv.h>

namespace {

using namespace std::string_literals;
using ZOTCharset::Conv;

std::string ToUtf8(ZOT::CHARSET from, const std::string& text) {
    // On the heap and of exactly its size, so that a sanitizer sees one byte too many.
    const std::vector<unsigned char> bytes(text.begin(), text.end());
    ZOT::PoolBuffer utf8;
    EXPECT_TRUE(ZOTCharset::ToUtf8(from, bytes.data(), bytes.size(), utf8, 3));
    const auto* const data = reinterpret_cast<const char*>(utf8.Data());
    EXPECT_EQ(std::string(data + utf8.Size(), 3), "\0\0\0"s);
    return {data, utf8.Size()};
}

// Converts in calls that see `step` bytes more each and have 16 bytes of room.
template <class Converter>
std::string Chunked(Converter convert, const std::string& text, std::size_t step) {
    std::string result;
    std::size_t done = 0;
    for (std::size_t seen = std::min(step, text.size());;) {
        const std::vector<unsigned char> source(text.begin() + static_cast<std::ptrdiff_t>(done),
                                                text.begin() + static_cast<std::ptrdiff_t>(seen));
        std::vector<char> target(16);
        unsigned int used = 0;
        unsigned int written = 0;
        convert(source.data(), static_cast<unsigned int>(source.size()), used, target.data(), 16u, written,
                seen == text.size());
        result.append(target.data(), written);
        done += used;
        if (used != 0) continue;
        if (seen == text.size()) break;
        seen = std::min(seen + step, text.size());
    }
    EXPECT_EQ(done, text.size());
    return result;
}

struct Case {
    ZOT::CHARSET from;
    std::string bytes;
    std::string utf8;
};

const std::string kLong = "More than one block of plain text, so that the vectors have something to do: ";

// https://encoding.spec.whatwg.org/; R is U+FFFD.
#define R "\xEF\xBF\xBD"
const Case kCases[] = {
    {ZOT::kCharsetUtf8, "", ""},
    {ZOT::kCharsetUtf8, kLong + "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80" + kLong,
     kLong + "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80" + kLong},
    {ZOT::kCharsetUtf8, "a\x80z\xC3", "a" R "z" R},
    {ZOT::kCharsetUtf8, "\xC3<p>", R "<p>"},
    {ZOT::kCharsetUtf8, "\xE2\x82<\xF0\x9F\x98<\xF0\x9F<\xF0", R "<" R "<" R "<" R},
    {ZOT::kCharsetUtf8, "\xC0\xAF\xE0\x80\xAF\xF5\x80\xFF", R R R R R R R R},
    {ZOT::kCharsetUtf8, "\xED\xA0\x80\xF4\x90\x80\x80", R R R R R R R},
    {ZOT::kCharsetUtf8, "\xEF\xBB\xBFmark\0nul"s, "\xEF\xBB\xBFmark\0nul"s},
    {ZOT::kCharsetUtf16Le, "a\0\xE4\0\xAC\x20\x3D\xD8\x00\xDE"s, "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
    {ZOT::kCharsetUtf16Be, "\0a\0\xE4\x20\xAC\xD8\x3D\xDE\x00"s, "a\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80"},
    {ZOT::kCharsetUtf16Le, "\x3D\xD8x\0\x00\xDEy\0\x3D\xD8"s, R "x" R "y" R},
    {ZOT::kCharsetUtf16Le, "x\0y"s, "x" R},
    {ZOT::kCharsetUtf16Le, "\x3D\xD8y"s, R},
    {ZOT::kCharsetWindows1252, kLong + "\x80\x93quoted\x94\xE4\x81",
     kLong + "\xE2\x82\xAC\xE2\x80\x9Cquoted\xE2\x80\x9D\xC3\xA4\xC2\x81"},
    {ZOT::kCharsetLatin1, "\x80\xE4", "\xC2\x80\xC3\xA4"},
    {ZOT::kCharsetWindows1251, "\xCF\xF0\xE8\xE2\xE5\xF2",
     "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82"},
    {ZOT::kCharsetWindows1253, "\xAA\xE1", R "\xCE\xB1"},
    {ZOT::kCharsetIso8859_8I, "\xE0", "\xD7\x90"},
    {ZOT::kCharsetUserDefined, "a\x80\xFF", "a\xEF\x9E\x80\xEF\x9F\xBF"},
    {ZOT::kCharsetShiftJis, "\x93\xFA\x96\x7B \xB1\x80", "\xE6\x97\xA5\xE6\x9C\xAC \xEF\xBD\xB1\xC2\x80"},
    {ZOT::kCharsetEucJp, "\xC6\xFC\xCB\xDC\x8E\xB1\x8F\xB0\xA1",
     "\xE6\x97\xA5\xE6\x9C\xAC\xEF\xBD\xB1\xE4\xB8\x82"},
    {ZOT::kCharsetEucJp, "\x8F\xA1<\x8E<\xA1<\x8F", R "<" R "<" R "<" R},
    {ZOT::kCharsetIso2022Jp, "a\x1B$BF|K\\\x1B(J\\~\x1B(I1\x1B(Bb",
     "a\xE6\x97\xA5\xE6\x9C\xAC\xC2\xA5\xE2\x80\xBE\xEF\xBD\xB1"
     "b"},
    {ZOT::kCharsetIso2022Jp, "\x1B$B\x1B(Bx\x1Bz\x1B$", R "x" R "z" R "$"},
    {ZOT::kCharsetGbk, "\xC4\xE3\xBA\xC3\x80", "\xE4\xBD\xA0\xE5\xA5\xBD\xE2\x82\xAC"},
    {ZOT::kCharsetGb18030, "\x81\x30\x81\x30\x90\x30\x81\x30\xFE\x39\xFE\x39", "\xC2\x80\xF0\x90\x80\x80" R},
    {ZOT::kCharsetGb18030, "\x81\x30\x81<\x81\x30<\x81<", R "0" R "<" R "0<" R "<"},
    {ZOT::kCharsetBig5, "\xA7\x41\xA6\x6E\x88\x62", "\xE4\xBD\xA0\xE5\xA5\xBD\xC3\x8A\xCC\x84"},
    {ZOT::kCharsetBig5, "\xA1<p>\xFF\xA1", R "<p>" R R},
    {ZOT::kCharsetEucKr, "\xC7\xD1\xB1\xDB\xC9<\xFE\xFE", "\xED\x95\x9C\xEA\xB8\x80" R "<" R},
    {ZOT::kCharsetReplacement, "anything", R},
    {ZOT::kCharsetReplacement, "", ""},
    {ZOT::CHARSET(20127), "\x80", "\xE2\x82\xAC"},
    {ZOT::CHARSET(12345), "\x80", "\xE2\x82\xAC"},
};

TEST(ToUtf8, DecodesAsTheStandardSays) {
    for (const Case& c : kCases) EXPECT_EQ(ToUtf8(c.from, c.bytes), c.utf8) << c.from << " " << c.bytes;
}

// A text may end with a block that was taken at once.
TEST(ToUtf8, EndsWhereTheTextEnds) {
    for (std::size_t length = 0; length <= 100; ++length) {
        const std::string text(length, 'a');
        std::string utf16;
        for (const char c : text) utf16 += {c, '\0'};
        EXPECT_EQ(ToUtf8(ZOT::kCharsetUtf16Le, utf16), text);
        EXPECT_EQ(ToUtf8(ZOT::kCharsetWindows1252, text), text);
        EXPECT_EQ(ToUtf8(ZOT::kCharsetUtf8, text), text);
    }
}

TEST(Conv, GivesTheSameInPiecesAndThroughHalves) {
    for (const Case& c : kCases) {
        if (ZOT::CharsetName(c.from) == nullptr) continue;
        for (const std::size_t step : {1u, 2u, 3u, 5u, 33u, 1000u}) {
            if (const auto fast = Conv::FastConversionFunction(c.from, ZOT::kCharsetUtf8)) {
                EXPECT_EQ(Chunked(
                              [fast](const void* source, unsigned int size, unsigned int& used, void* target,
                                     unsigned int room, unsigned int& written, bool last) {
                                  fast(source, size, used, target, room, written, last, false);
                              },
                              c.bytes, step),
                          c.utf8)
                    << c.from << " " << step;
            }
            ZOTCharset::ConversionClass halves(Conv::MbToWcConversionFunction(c.from),
                                               Conv::WcToMbConversionFunction(ZOT::kCharsetUtf8));
            EXPECT_EQ(Chunked(halves, c.bytes, step), c.utf8) << c.from << " " << step;
        }
    }
}

// FNV-1a, 64 bits.
std::uint64_t Digest(const std::string& bytes) {
    std::uint64_t digest = 0xCBF29CE484222325;
    for (const char byte : bytes) digest = (digest ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    return digest;
}

// Every sequence of bytes in these ranges, one range after the other.
std::string Sequences(const std::vector<std::pair<int, int>>& ranges) {
    std::vector<std::string> sequences = {""};
    for (const auto& [first, last] : ranges) {
        std::vector<std::string> longer;
        for (const std::string& sequence : sequences) {
            for (int byte = first; byte <= last; ++byte) longer.push_back(sequence + static_cast<char>(byte));
        }
        sequences = std::move(longer);
    }
    std::string all;
    for (const std::string& sequence : sequences) all += sequence;
    return all;
}

// Digests of what another implementation of the standard makes of the same bytes. Indexes that the system has
// no more than a part of, as `rare` shows, are left out.
TEST(ToUtf8, HasTheIndexesOfTheStandard) {
    const std::string pairs = Sequences({{0x80, 0xFF}, {0x30, 0xFF}, {'\n', '\n'}});
    struct Index {
        ZOT::CHARSET charset;
        std::string bytes;
        std::uint64_t digest;
        std::string rare, rareInUtf8;
    };
    const Index indexes[] = {
        {ZOT::kCharsetBig5, pairs, 0x30C86551108FD50C, "\x87\x40", "\xE4\x8F\xB0"},
        {ZOT::kCharsetGbk, pairs, 0x4332A6107BDA573E, "\xFE\x50", "\xE2\xBA\x81"},
        {ZOT::kCharsetGb18030, pairs, 0x4332A6107BDA573E, "\xFE\x50", "\xE2\xBA\x81"},
        {ZOT::kCharsetGb18030, Sequences({{0x81, 0x84}, {'0', '9'}, {0x81, 0xFE}, {'0', '9'}}),
         0xD7651DF32C1680D6, "\xFE\x50", "\xE2\xBA\x81"},
        {ZOT::kCharsetEucKr, pairs, 0x98437601FA383D08, "", ""},
        {ZOT::kCharsetEucJp, pairs, 0xA746E93EEB339425, "", ""},
        {ZOT::kCharsetEucJp, Sequences({{0x8F, 0x8F}, {0xA1, 0xFE}, {0xA1, 0xFE}}), 0x6D03049F983CF0EB, "",
         ""},
        {ZOT::kCharsetShiftJis, pairs, 0x9106D1AF0D970C81, "", ""},
        {ZOT::kCharsetIso2022Jp, "\x1B$B" + Sequences({{0x21, 0x7E}, {0x21, 0x7E}}), 0x0F191C1C356BB12A, "",
         ""},
    };
    std::string partial;
    for (const Index& c : indexes) {
        if (ToUtf8(c.charset, c.rare) == c.rareInUtf8) {
            EXPECT_EQ(Digest(ToUtf8(c.charset, c.bytes)), c.digest) << c.charset;
        } else {
            partial += " " + std::to_string(c.charset);
        }
    }

    std::string singles;
    for (const int charset : {866,   28592, 28593, 28594, 28595, 28596, 28597, 28598, 38598, 28600,
                              28603, 28604, 28605, 28606, 20866, 21866, 10000, 874,   1250,  1251,
                              1252,  1253,  1254,  1255,  1256,  1257,  1258,  10007, 100000}) {
        singles += ToUtf8(static_cast<ZOT::CHARSET>(charset), Sequences({{0, 0xFF}}));
    }
    EXPECT_EQ(Digest(singles), 0x9D24A0FD722EF058u);
    if (!partial.empty()) GTEST_SKIP() << "the system has no more than a part of" << partial;
}

TEST(Conv, LeavesAnIncompleteCharacterUnconsumed) {
    struct Incomplete {
        ZOT::CHARSET from;
        std::string bytes;
        unsigned int used;
    };
    const Incomplete cases[] = {
        {ZOT::kCharsetUtf8, "ab\xE2\x82", 2},
        {ZOT::kCharsetUtf8, "\xF0\x9F\x98", 0},
        {ZOT::kCharsetUtf16Le, "a\0b"s, 2},
        {ZOT::kCharsetUtf16Le, "a\0\x3D\xD8"s, 2},
        {ZOT::kCharsetUtf16Be, "\0a\xD8\x3D\xDE"s, 2},
    };
    for (const Incomplete& c : cases) {
        char target[64];
        unsigned int used = 99;
        unsigned int written = 99;
        const auto size = static_cast<unsigned int>(c.bytes.size());
        Conv::FastConversionFunction(c.from, ZOT::kCharsetUtf8)(c.bytes.data(), size, used, target,
                                                                sizeof target, written, false, false);
        EXPECT_EQ(used, c.used) << c.bytes;
        ZOTCharset::ConversionClass halves(Conv::MbToWcConversionFunction(c.from),
                                           Conv::WcToMbConversionFunction(ZOT::kCharsetUtf8));
        halves(c.bytes.data(), size, used, target, sizeof target, written, false);
        EXPECT_EQ(used, c.used) << c.bytes;
    }
}

TEST(Conv, StrictStopsInFrontOfWhatIsNoText) {
    const std::string bytes =
        "ab\xFF"
        "c";
    char target[16];
    unsigned int used = 0;
    unsigned int written = 0;
    Conv::FastConversionFunction(ZOT::kCharsetUtf8, ZOT::kCharsetUtf8)(bytes.data(), 4, used, target, 16,
                                                                       written, true, true);
    EXPECT_EQ(used, 2u);
    EXPECT_EQ(written, 2u);
}

TEST(Conv, WritesOtherEncodings) {
    struct Written {
        ZOT::CHARSET to;
        std::string bytes;
    };
    const std::string utf8 = "a\xE2\x82\xAC\xF0\x9F\x98\x80";
    const Written cases[] = {{ZOT::kCharsetUtf16Le, "a\0\xAC\x20\x3D\xD8\x00\xDE"s},
                             {ZOT::kCharsetUtf16Be, "\0a\x20\xAC\xD8\x3D\xDE\x00"s},
                             {ZOT::kCharsetWindows1252, "a\x80?"},
                             {ZOT::kCharsetKoi8R, "a??"}};
    for (const Written& c : cases) {
        ZOTCharset::ConversionClass halves(Conv::MbToWcConversionFunction(ZOT::kCharsetUtf8),
                                           Conv::WcToMbConversionFunction(c.to));
        EXPECT_EQ(Chunked(halves, utf8, 2), c.bytes) << c.to;
    }
}

TEST(ValidUtf8, EndsInFrontOfTheFirstFault) {
    struct Beginning {
        std::string bytes;
        std::size_t valid;
    };
    const Beginning cases[] = {{"", 0},
                               {kLong, kLong.size()},
                               {kLong + "\xC3\xA4", kLong.size() + 2},
                               {kLong + "\xC3", kLong.size()},
                               {"\xED\xA0\x80", 0},
                               {"ab\xFFzz", 2}};
    for (const Beginning& c : cases) {
        EXPECT_EQ(
            ZOTCharset::ValidUtf8(reinterpret_cast<const unsigned char*>(c.bytes.data()), c.bytes.size()),
            c.valid);
    }
}

TEST(Charset, LabelsAndNames) {
    struct Label {
        std::string_view label;
        ZOT::CHARSET charset;
        std::string_view name;
    };
    const Label labels[] = {
        {"utf-8", ZOT::kCharsetUtf8, "UTF-8"},
        {" \t\n\f\rUTF8 ", ZOT::kCharsetUtf8, "UTF-8"},
        {"ISO-8859-1", ZOT::kCharsetWindows1252, "windows-1252"},
        {"866", ZOT::kCharsetIbm866, "IBM866"},
        {"x-x-big5", ZOT::kCharsetBig5, "Big5"},
        {"cseucpkdfmtjapanese", ZOT::kCharsetEucJp, "EUC-JP"},
        {"hz-gb-2312", ZOT::kCharsetReplacement, "replacement"},
        {"unicode", ZOT::kCharsetUtf16Le, "UTF-16LE"},
    };
    for (const Label& c : labels) {
        ZOT::CHARSET charset = ZOT::kCharsetNone;
        EXPECT_TRUE(ZOT::CharsetFromLabel(c.label, charset)) << c.label;
        EXPECT_EQ(charset, c.charset) << c.label;
        EXPECT_EQ(ZOT::CharsetName(charset), c.name);
        ZOT::CHARSET again = ZOT::kCharsetNone;
        EXPECT_TRUE(ZOT::CharsetFromLabel(c.name, again)) << "a name is a label";
        EXPECT_EQ(again, charset);
    }
    for (const std::string_view label :
         {"", " ", "utf", "utf-8;", "utf-7", "a label longer than any there is"}) {
        ZOT::CHARSET charset = ZOT::kCharsetNone;
        EXPECT_FALSE(ZOT::CharsetFromLabel(label, charset)) << label;
        EXPECT_EQ(charset, ZOT::kCharsetNone);
    }
    EXPECT_EQ(ZOT::CharsetName(ZOT::kCharsetNone), nullptr);
}

}  // namespace
