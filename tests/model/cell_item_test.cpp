#include <gtest/gtest.h>
#include <iterator>
#include <string>
#include <thread>
#include <vector>
#include <quill/cell.h>
#include <quill/table.h>

namespace QuillNS {
namespace {

TEST(CellItem, IsWhatItHolds) {
    KCellItem item(nullptr);
    EXPECT_TRUE(item.IsEmpty() && !item.IsText() && !item.IsTable());
    item.AppendText(u"", 5, 3);
    EXPECT_TRUE(!item.IsEmpty() && item.IsText() && !item.IsTable());
    const ZOT::SmartPtr<KTable> table(new KTable(nullptr, 1, 1, 0), true);
    item.Table(table);
    EXPECT_TRUE(!item.IsEmpty() && item.IsText() && item.IsTable());
    EXPECT_EQ(table->NbRef(), 2);
    item.Table(table);
    EXPECT_EQ(table->NbRef(), 2);
    item.Table(ZOT::SmartPtr<KTable>());
    EXPECT_EQ(table->NbRef(), 1);
    EXPECT_FALSE(item.IsTable());
}

TEST(CellItem, MayOutliveItsCell) {
    ZOT::SmartPtr<KCellItem> item;
    const ZOT::SmartPtr<KTable> table(new KTable(nullptr, 1, 1, 0), true);
    {
        const ZOT::SmartPtr<KCell> cell(new KCell(nullptr, 0, 0), true);
        item = cell->AddCellItem();
        EXPECT_EQ(item->ParentCell(), cell.Get());
        EXPECT_FALSE(cell->MayHoldTables());
    }
    EXPECT_EQ(item->ParentCell(), nullptr);
    item->Table(table);
    EXPECT_EQ(item->Table(), table);
}

TEST(CellItem, SpanRunsFromTheFirstCountedRunToTheLast) {
    struct Run {
        const char16_t* text;
        unsigned int position, length;
    };
    struct Case {
        std::vector<Run> runs;
        const char16_t* text;
        unsigned int position, length;
    };
    const Case cases[] = {
        {{{u"ab", 10, 2}, {u"cd", 20, 2}}, u"abcd", 10, 12},
        {{{u"", 5, 3}}, u"", 0, 0},
        {{{u"ab", 7, 0}, {u"cd", 9, 0}}, u"abcd", 0, 0},
        {{{u"ab", 7, 0}, {u"cd", 9, 4}}, u"abcd", 9, 4},
        {{{u"ab", 7, 2}, {u"cd", 90, 0}}, u"abcd", 7, 2},
        {{{u"ab", 7, 2}, {u"", 90, 9}}, u"ab", 7, 2},
        // The numbers wrap.
        {{{u"ab", 20, 2}, {u"cd", 10, 2}}, u"abcd", 20, 4294967288u},
        // A span that has shrunk to nothing starts again.
        {{{u"ab", 20, 2}, {u"cd", 18, 2}, {u"ef", 3, 1}}, u"abcdef", 3, 1},
    };
    for (const Case& c : cases) {
        KCellItem item(nullptr);
        for (const Run& run : c.runs) item.AppendText(run.text, run.position, run.length);
        EXPECT_EQ(item.Text(), c.text);
        EXPECT_EQ(item.SourcePosition(), c.position);
        EXPECT_EQ(item.SourceLength(), c.length);
    }
}

TEST(CellItem, FirstRunLeavesRoomForWhatJoinsTheNext) {
    for (const std::size_t size : {0u, 1u, 27u, 28u, 1000u}) {
        KCellItem item(nullptr);
        item.AppendText(std::u16string(size, u'x'), 0, 0);
        EXPECT_GE(item.Text().capacity(), std::max<std::size_t>(32, size + 5));
    }
}

// The text is the same whether it was made a string early, late or never, and whatever its length.
TEST(CellItem, IsOneTextAsViewAndAsString) {
    for (const std::size_t askedAfter : {0u, 1u, 2u, 3u}) {
        KCellItem item(nullptr);
        std::u16string expected;
        const std::u16string runs[] = {u"one ", u"\n", std::u16string(1000, u'x') + u" \t"};
        for (std::size_t run = 0; run < std::size(runs); ++run) {
            item.AppendText(runs[run], 0, 0);
            expected += runs[run];
            if (run == askedAfter) {
                item.Text() += u'y';
                expected += u'y';
            }
            ASSERT_EQ(item.TextView(), expected) << askedAfter;
        }
        item.TrimText();
        expected.resize(expected.find_last_not_of(u" \t") + 1);
        EXPECT_EQ(item.TextView(), expected) << askedAfter;
        EXPECT_EQ(item.Text(), expected) << askedAfter;
    }
}

TEST(CellItemThread, SeveralMayAskForTheText) {
    KCellItem item(nullptr);
    item.AppendText(u"text", 0, 0);
    const KCellItem& read = item;
    const std::u16string* asked[4];
    std::vector<std::thread> threads;
    for (auto& text : asked)
        threads.emplace_back([&] { text = read.TextView() == u"text" ? &read.Text() : nullptr; });
    for (std::thread& thread : threads) thread.join();
    for (const std::u16string* const text : asked) EXPECT_EQ(text, &read.Text());
    EXPECT_EQ(read.Text(), u"text");
}

TEST(CellItem, ParagraphEndsInTwoLineFeeds) {
    struct Case {
        std::u16string text, paragraph;
    };
    const Case cases[] = {
        {u"word", u"word\n\n"},
        {u"word \u00A0\t", u"word\n\n"},
        {u"word\n\n", u"word\n\n"},
        {u"word\n\n\n\n", u"word\n\n"},
        {u" two words\r\n", u" two words\n\n"},
        // One fixed table of white space, whatever the platform's is.
        {u"word\u0085\u1680\u2000\u200A\u2028\u2029\u202F\u205F\u3000\v\f", u"word\n\n"},
        {u"word\u200B ", u"word\u200B\n\n"},
        {u"word\u180E", u"word\u180E\n\n"},
        {u" \u00A0 ", u""},
        {u"", u""},
    };
    for (const Case& c : cases) {
        KCellItem item(nullptr);
        item.AppendText(c.text, 3, 4);
        item.MakeParagraph();
        EXPECT_EQ(item.Text(), c.paragraph);
        item.MakeParagraph();
        EXPECT_EQ(item.Text(), c.paragraph);
        EXPECT_EQ(item.SourceLength(), c.text.empty() ? 0u : 4u);
    }
}

}  // namespace
}  // namespace QuillNS
