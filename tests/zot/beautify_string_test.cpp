#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <zot/text.h>

#include "standing_run.h"

namespace {

std::u16string Beautified(const std::u16string& raw, bool keepLines = false, bool cleanControls = true) {
    std::u16string clean = u"old";
    ZOT::BeautifyString(raw, clean, keepLines, cleanControls);
    return clean;
}

TEST(BeautifyString, JoinsWhiteSpaceAndDropsWhatShowsNothing) {
    struct Case {
        std::u16string raw, clean;
    };
    const Case cases[] = {
        {u"", u""},
        {u" \t\r\n", u" "},
        {u"word", u"word"},
        {u"  two\n\n words ", u" two words "},
        {u"one blank stays as it is", u"one blank stays as it is"},
        {u"a\u00A0\u3000b\u1680c\u2000d\u200Ae\u202Ff\u205Fg\u0085h", u"a b c d e f g h"},
        {u"line\u2028end \u2029 par", u"line\nend\npar"},
        {std::u16string(u"n\0u\u0007l\u007Fl\u00ADs\u200B\uFEFF", 11), u"nulls"},
        // What shows nothing does not divide a run of white space.
        {u"a \u200B b\u200B \u2028\uFEFF\u2028c", u"a b\nc"},
        {u"\u180E\u200C\u200E\u2010\u2027\u202A\u2060\u3001\u167F",
         u"\u180E\u200C\u200E\u2010\u2027\u202A\u2060\u3001\u167F"},
        {u"\xD83D\xDE00 \xD800", u"\xD83D\xDE00 \xD800"},
    };
    for (const Case& c : cases) EXPECT_EQ(Beautified(c.raw), c.clean);
}

TEST(BeautifyString, KeepsLinesAndControlsWhenTold) {
    EXPECT_EQ(Beautified(u"a \n \n b\u2028c", true), u"a\n\nb\nc");
    EXPECT_EQ(Beautified(u"a\u00AD \u200B b", false, false), u"a\u00AD \u200B b");
}

// Texts of every length up to several blocks, in buffers of exactly their size.
TEST(StandingRun, FastAndPlainAgree) {
    std::mt19937 random(1);
    const std::u16string rare =
        u"\t\n\u0001\u001F\u007F\u0080\u0085\u00A0\u00AD\u1680\u2000\u200B\u200C\u2028\u2029\u202F\u205F"
        u"\u3000\uFEFF\uFFFF";
    const std::u16string common = u"ab\u00E9\u4E2D\u2019 ";
    for (std::size_t size = 0; size < 70; ++size) {
        for (int round = 0; round < 200; ++round) {
            const std::unique_ptr<char16_t[]> text(new char16_t[size]);
            for (std::size_t i = 0; i < size; ++i) {
                const std::u16string& letters = random() % 40 == 0 ? rare : common;
                text[i] = letters[random() % (round % 2 == 0 ? letters.size() : letters.size() - 1)];
            }
            ASSERT_EQ(ZOT::StandingRun(text.get(), size), ZOT::StandingRunPlain(text.get(), size))
                << ::testing::PrintToString(std::u16string(text.get(), size));
        }
    }
}

TEST(StandingRun, FastKnowsEveryUnit) {
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        std::u16string text(20, u'x');
        text[5] = text[18] = static_cast<char16_t>(unit);
        ASSERT_EQ(ZOT::StandingRun(text.data(), text.size()), ZOT::StandingRunPlain(text.data(), text.size()))
            << unit;
    }
}

TEST(IsWhiteSpace, IsTheFixedTable) {
    const std::u16string spaces =
        u"\t\n\v\f\r "
        u"\u0085\u00A0\u1680\u2000\u2001\u2002\u2003\u2004\u2005\u2006\u2007\u2008\u2009\u200A\u2028\u2029"
        u"\u202F"
        u"\u205F\u3000";
    for (unsigned int unit = 0; unit <= 0xFFFF; ++unit) {
        const auto c = static_cast<char16_t>(unit);
        EXPECT_EQ(ZOT::IsWhiteSpace(c), spaces.find(c) != std::u16string::npos) << std::hex << unit;
    }
}

}  // namespace
