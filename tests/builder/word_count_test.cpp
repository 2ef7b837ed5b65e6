#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <quill/word_count.h>

#include "word_scan.h"

namespace QuillNS {
namespace {

TEST(CountWords, CountsRunsOfWordCharactersAndOneForALeadingSeparator) {
    struct Case {
        std::u16string text;
        unsigned int words;
    };
    using namespace std::string_literals;
    const Case cases[] = {
        {u"", 0},
        {u"a", 1},
        {u"hello world", 2},
        {u"hello world.", 2},
        {u"x(y)z", 3},
        {u"...", 1},
        {u" hello", 2},
        {u" hello ", 2},
        {u"a\r\nb", 2},
        {u"a\rb", 1},
        {u"a\u00A0b-c:d;e\"f'g\u2028h\u3000i", 1},
        {u"1\n2\t3 4.5,6!7(8)9%0$1?2*3#4|5", 15},
        {u"a, b. (c)", 3},
        // Separators are compared as whole units, not by their low bytes.
        {u"a\u2020b\u7C20c\uFF2Ed", 1},
        // U+0000 ends the scan; the last character still ends a word, or does not.
        {u"a b\0c d e"s, 2},
        {u"a b\0c d e "s, 1},
        {u"a b\0"s, 2},
        {u"\0"s, 1},
        {u"one two three four five six seven\0 x . y"s, 7},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(CountWords(c.text), c.words) << ::testing::PrintToString(c.text);
    }
}

TEST(CountWords, CountsMoreWordsThanABlockCounterHolds) {
    std::u16string text;
    for (int i = 0; i < 20000; ++i) text += u"a ";
    EXPECT_EQ(CountWords(text), 20000u);
}

// Texts of every length up to several blocks, in buffers of exactly their size, with runs across the blocks'
// borders.
TEST(WordScan, FastAndPlainAgree) {
    std::mt19937 random(1);
    const std::u16string alphabet = u"ab\u00A0\u7C20\uFFFF\u2020\n\t .,!()%$?*#|\r-";
    for (std::size_t size = 0; size < 100; ++size) {
        for (int round = 0; round < 200; ++round) {
            const std::unique_ptr<char16_t[]> text(new char16_t[size]);
            const std::size_t letters =
                round % 4 == 0 ? alphabet.size() + 1 : alphabet.size();  // a quarter with NUL
            for (std::size_t i = 0; i < size; ++i) text[i] = alphabet.c_str()[random() % letters];
            ASSERT_EQ(CountSeparatorRuns(text.get(), size), CountSeparatorRunsPlain(text.get(), size))
                << ::testing::PrintToString(std::u16string(text.get(), size));
        }
    }
}

TEST(WordScan, FastKnowsEveryUnit) {
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        const std::u16string text(16, static_cast<char16_t>(unit));
        const bool separator = IsWordSeparator(static_cast<char16_t>(unit));
        ASSERT_EQ(CountSeparatorRuns(text.data(), text.size()), separator ? 1u : 0u) << unit;
    }
}

}  // namespace
}  // namespace QuillNS
