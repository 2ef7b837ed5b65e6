// What holds for every page: on pages made from seeds, and on real ones.

#include <gtest/gtest.h>

#include "properties/corpus.h"
#include "properties/random_page.h"
#include "properties/text_of_page.h"
#include "trickling_stream.h"
#include "visible_text.h"

namespace {

using ZOTParser::HtmlKeywordTable;

constexpr unsigned int kPages = 200;
constexpr HtmlKeywordTable::PrtType kReadings[] = {
    HtmlKeywordTable::kDefaultReading, HtmlKeywordTable::kTableReading, HtmlKeywordTable::kBlockReading};

enum class Source { kContent, kLinks, kCorpus };

struct Page {
    std::string name;
    std::string bytes;
    ZOT::CHARSET charset;
};

class EveryPage : public ::testing::TestWithParam<Source> {
protected:
    // Calls check(page) for every page of the source.
    template <class Check>
    void ForEachPage(const Check& check) {
        if (GetParam() == Source::kCorpus) return ForEachRealPage(check);
        const PageKind kind = GetParam() == Source::kLinks ? PageKind::kLinks : PageKind::kContent;
        for (unsigned int seed = 0; seed < kPages && !HasFailure(); ++seed) {
            const Page page{"seed " + std::to_string(seed), RandomPage(seed, kind), ZOT::kCharsetUtf8};
            SCOPED_TRACE(page.name + ": " + page.bytes);
            check(page);
        }
    }

private:
    template <class Check>
    void ForEachRealPage(const Check& check) {
        const auto paths = CorpusPages();
        if (paths.empty()) GTEST_SKIP() << "there is no corpus at " << CorpusFolder();
        for (const auto& path : paths) {
            Page page{path.string(), Unpacked(path), ZOT::kCharsetNone};
            page.charset = CharsetOf(page.bytes);
            SCOPED_TRACE(page.name);
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
    ForEachPage([](const Page& page) {
        for (const ZOT::CHARSET charset : {page.charset, ZOT::kCharsetNone, ZOT::kCharsetWindows1252}) {
            const PageText whole = TextOfBytes(page.bytes, charset);
            for (const unsigned int step : {1u, 7u, 4096u}) {
                TricklingStream pieces(page.bytes, step);
                EXPECT_EQ(TextOfStream(pieces, charset), whole) << step;
            }
        }
    });
}

TEST_P(EveryPage, GivesTheSameTextByEveryWay) {
    ForEachPage([](const Page& page) {
        const PageText text = TextOfBytes(page.bytes, page.charset);
        EXPECT_EQ(TextOfTree(page.bytes, page.charset), text);
        const PageText partition = TextOfPartition(page.bytes, page.charset);
        EXPECT_EQ(WithoutEnd(partition.text), WithoutEnd(text.text));
        EXPECT_EQ(partition.documentText, text.documentText);
        EXPECT_EQ(partition.type, text.type);
        if (page.bytes.find('\0') != std::string::npos) return;  // there a string ends
        const PageText string = TextOfString(page.bytes, page.charset);
        EXPECT_EQ(string.text, text.text);
        if (!text.text.empty()) {
            EXPECT_EQ(string.documentText, text.documentText);
        }
    });
}

TEST_P(EveryPage, DoesNotMindWhiteSpaceAtItsEnd) {
    ForEachPage([](const Page& page) {
        for (const HtmlKeywordTable::PrtType reading : kReadings) {
            const PageText text = TextOfTree(page.bytes, page.charset, reading);
            const PageText longer = TextOfTree(page.bytes + " \n\t\n", page.charset, reading);
            EXPECT_EQ(WithoutEnd(longer.text), WithoutEnd(text.text)) << reading;
            EXPECT_EQ(longer.documentText, text.documentText) << reading;
            EXPECT_EQ(longer.type, text.type) << reading;
        }
    });
}

// Words stay whole and apart in the block reading. In the table reading those around a table that is not
// chosen may meet, since no block but those that end their lines parts the texts of a cell.
TEST_P(EveryPage, GivesWordsOfThePageInTheirOrder) {
    ForEachPage([](const Page& page) {
        const PageText blocks = TextOfTree(page.bytes, page.charset, HtmlKeywordTable::kBlockReading);
        EXPECT_TRUE(HoldsInOrder(VisibleWords(blocks.documentText), VisibleWords(blocks.text)));
        const PageText tables = TextOfTree(page.bytes, page.charset, HtmlKeywordTable::kTableReading);
        EXPECT_TRUE(HoldsInOrder(VisibleUnits(tables.documentText), VisibleUnits(tables.text)));
    });
}

// In the table reading a page's tables may all be too poor in words to be chosen.
TEST_P(EveryPage, GivesTextWhereThereIsAny) {
    ForEachPage([](const Page& page) {
        for (const HtmlKeywordTable::PrtType reading :
             {HtmlKeywordTable::kDefaultReading, HtmlKeywordTable::kBlockReading}) {
            const PageText text = TextOfTree(page.bytes, page.charset, reading);
            EXPECT_EQ(VisibleUnits(text.text).empty(), VisibleUnits(text.documentText).empty()) << reading;
        }
    });
}

// What the page is read for, and the choice only leaves out of it.
TEST_P(EveryPage, CanBeWrittenWhole) {
    ForEachPage([](const Page& page) {
        for (const HtmlKeywordTable::PrtType reading : kReadings) {
            const WholeText whole = WholeTextOf(page.bytes, page.charset, reading);
            EXPECT_EQ(VisibleUnits(whole.written), VisibleUnits(whole.read)) << reading;
            if (whole.chosen.type == QuillNS::LinkPage) {
                EXPECT_EQ(whole.chosen.text, whole.written) << reading;
            }
            EXPECT_TRUE(HoldsInOrder(VisibleUnits(whole.written), VisibleUnits(whole.chosen.text)))
                << reading;
        }
    });
}

std::string NameOf(const ::testing::TestParamInfo<Source>& source) {
    switch (source.param) {
        case Source::kContent: return "OfContent";
        case Source::kLinks: return "OfLinks";
        default: return "OfTheCorpus";
    }
}
INSTANTIATE_TEST_SUITE_P(Page, EveryPage,
                         ::testing::Values(Source::kContent, Source::kLinks, Source::kCorpus), NameOf);

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
