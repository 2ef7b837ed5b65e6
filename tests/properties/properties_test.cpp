// What holds for every page, on pages made from seeds.

#include <gtest/gtest.h>

#include "properties/random_page.h"
#include "properties/text_of_page.h"
#include "trickling_stream.h"
#include "visible_text.h"

namespace {

constexpr unsigned int kPages = 200;

class EveryPage : public ::testing::TestWithParam<PageKind> {
protected:
    // Calls check(page) for the page of every seed.
    template <class Check>
    void ForEachPage(const Check& check) {
        for (unsigned int seed = 0; seed < kPages && !HasFailure(); ++seed) {
            const std::string page = RandomPage(seed, GetParam());
            SCOPED_TRACE("seed " + std::to_string(seed) + ": " + page);
            check(page);
        }
    }
};

// White space at the end is how the last line was laid out.
std::u16string WithoutEnd(std::u16string text) {
    while (!text.empty() && ZOT::IsWhiteSpace(text.back())) text.pop_back();
    return text;
}

TEST_P(EveryPage, GivesTheSameTextHoweverItsStreamIsCut) {
    ForEachPage([](const std::string& page) {
        for (const ZOT::CHARSET charset : {ZOT::kCharsetUtf8, ZOT::kCharsetNone, ZOT::kCharsetWindows1252}) {
            const PageText whole = TextOfBytes(page, charset);
            for (const unsigned int step : {1u, 7u, 4096u}) {
                TricklingStream pieces(page, step);
                EXPECT_EQ(TextOfStream(pieces, charset), whole) << step;
            }
        }
    });
}

TEST_P(EveryPage, GivesTheSameTextByEveryWay) {
    ForEachPage([](const std::string& page) {
        const PageText text = TextOfBytes(page, ZOT::kCharsetUtf8);
        EXPECT_EQ(TextOfTree(page, ZOT::kCharsetUtf8), text);
        const PageText partition = TextOfPartition(page, ZOT::kCharsetUtf8);
        EXPECT_EQ(WithoutEnd(partition.text), WithoutEnd(text.text));
        EXPECT_EQ(partition.documentText, text.documentText);
        EXPECT_EQ(partition.type, text.type);
        const PageText string = TextOfString(page);
        EXPECT_EQ(string.text, text.text);
        if (!text.text.empty()) {
            EXPECT_EQ(string.documentText, text.documentText);
        }
    });
}

TEST_P(EveryPage, DoesNotMindWhiteSpaceAtItsEnd) {
    ForEachPage([](const std::string& page) {
        const PageText text = TextOfBytes(page, ZOT::kCharsetUtf8);
        const PageText longer = TextOfBytes(page + " \n\t\n", ZOT::kCharsetUtf8);
        EXPECT_EQ(WithoutEnd(longer.text), WithoutEnd(text.text));
        EXPECT_EQ(longer.documentText, text.documentText);
        EXPECT_EQ(longer.type, text.type);
    });
}

TEST_P(EveryPage, GivesWordsOfThePageInTheirOrder) {
    ForEachPage([](const std::string& page) {
        const PageText text = TextOfBytes(page, ZOT::kCharsetUtf8);
        EXPECT_TRUE(HoldsInOrder(VisibleWords(text.documentText), VisibleWords(text.text)));
    });
}

std::string NameOf(const ::testing::TestParamInfo<PageKind>& kind) {
    return kind.param == PageKind::kLinks ? "OfLinks" : "OfContent";
}
INSTANTIATE_TEST_SUITE_P(Page, EveryPage, ::testing::Values(PageKind::kContent, PageKind::kLinks), NameOf);

// Where the links are teasers the block reading takes them for content, so not every such page is one of
// links.
TEST(LinksPage, GivesAllItsWords) {
    unsigned int linkPages = 0;
    for (unsigned int seed = 0; seed < kPages; ++seed) {
        const std::string page = RandomPage(seed, PageKind::kLinks);
        const PageText text = TextOfBytes(page, ZOT::kCharsetUtf8);
        if (text.type != QuillNS::LinkPage) continue;
        ++linkPages;
        ASSERT_EQ(VisibleWords(text.text), VisibleWords(text.documentText)) << seed << ": " << page;
    }
    EXPECT_GT(linkPages, kPages / 4);
}

}  // namespace
