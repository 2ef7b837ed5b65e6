#include <gtest/gtest.h>
#include <quill/statistics.h>
#include <quill/table.h>

#include "content_tree.h"

namespace QuillNS {
namespace {

TEST(Statistics, CountersWrapBothWays) {
    struct Counter {
        void (KStatistics::*add)(unsigned int) noexcept;
        void (KStatistics::*sub)(unsigned int) noexcept;
        unsigned int (KStatistics::*get)() const noexcept;
    };
    const Counter counters[] = {
        {&KStatistics::AddWords, &KStatistics::SubWords, &KStatistics::Words},
        {&KStatistics::AddWordsInLinksAndImages, &KStatistics::SubWordsInLinksAndImages,
         &KStatistics::WordsInLinksAndImages},
        {&KStatistics::AddLinks, &KStatistics::SubLinks, &KStatistics::Links},
        {&KStatistics::AddImages, &KStatistics::SubImages, &KStatistics::Images},
        {&KStatistics::AddTables, &KStatistics::SubTables, &KStatistics::Tables},
        {&KStatistics::AddCells, &KStatistics::SubCells, &KStatistics::Cells},
    };
    KStatistics statistics;
    unsigned int value = 10;
    for (const Counter& counter : counters) (statistics.*counter.add)(++value);
    value = 10;
    for (const Counter& counter : counters) {
        EXPECT_EQ((statistics.*counter.get)(), ++value);
        (statistics.*counter.sub)(value + 1);
        EXPECT_EQ((statistics.*counter.get)(), 4294967295u);
        (statistics.*counter.add)(2);
        EXPECT_EQ((statistics.*counter.get)(), 1u);
    }
}

TEST(Statistics, ClearKeepsTheHolders) {
    KStatistics statistics;
    statistics.AddRef();
    statistics.AddCells(3);
    statistics.MaxWordsPerCell(7.5);
    statistics.MaxWordsPerCell(2.5);
    EXPECT_EQ(statistics.MaxWordsPerCell(), 2.5);
    statistics.Clear();
    EXPECT_EQ(statistics.Cells(), 0u);
    EXPECT_EQ(statistics.MaxWordsPerCell(), 0.0);
    EXPECT_EQ(statistics.NbRef(), 1);
}

// words/linked, links, tables, cells, largest ratio
std::string Gathered(const KStatistics& s) {
    char text[100];
    std::snprintf(text, sizeof text, "%u/%u k%u t%u c%u max %g", s.Words(), s.WordsInLinksAndImages(),
                  s.Links(), s.Tables(), s.Cells(), s.MaxWordsPerCell());
    return text;
}

TEST(Statistics, GatherDownToADepth) {
    struct Case {
        const char* tree;
        unsigned int depth;
        const char* gathered;
        double wordsPerCell;
    };
    const char* const nested = "{ 10/4k2({ 9k1({ 20/1 }) }) 4 }";
    const Case cases[] = {
        {nested, 0, "14/4 k2 t1 c2 max 5", 5.0},
        {nested, 1, "23/4 k3 t2 c3 max 9", 5.0},
        {nested, 2, "43/5 k3 t2 c4 max 19", 5.0},
        {nested, kAllLevels, "43/5 k3 t2 c4 max 19", 5.0},
        // Cells without items do not count, whatever their counters say; cells without words do.
        {"{ 8() . ; () . }", kAllLevels, "0/0 k0 t0 c0 max 0", 0.0},
        {"{ 8 0 . 0 }", kAllLevels, "8/0 k0 t0 c3 max 2.66667", 8.0 / 3.0},
        // Captions and summaries count like grid cells, and so do the tables in them.
        {"{ 2 ^6/2({ 30 }) $9 }", kAllLevels, "47/2 k0 t1 c4 max 30", 5.0},
        {"{ ^6 $() . }", kAllLevels, "6/0 k0 t0 c1 max 6", 6.0},
        // The sum of a table's words outside links wraps like its parts.
        {"{ 1/2 3 }", kAllLevels, "4/2 k0 t0 c2 max 1", 1.0},
        {"{ 1/2 }", kAllLevels, "1/2 k0 t0 c1 max 4.29497e+09", 4294967295.0},
    };
    for (const Case& c : cases) {
        const ContentTree tree(c.tree);
        KStatistics statistics;
        tree.Root()->Statistics(statistics, c.depth);
        EXPECT_EQ(Gathered(statistics), c.gathered) << c.tree << " depth " << c.depth;
        EXPECT_EQ(tree.Root()->WordsPerCell(), c.wordsPerCell) << c.tree;
    }
}

TEST(Statistics, AddToWhatIsThereButKeepALargerRatio) {
    const ContentTree tree("{ 8/2k1 4 }");
    KStatistics statistics;
    for (int i = 0; i < 2; ++i) tree.Gather(statistics);
    EXPECT_EQ(Gathered(statistics), "24/4 k2 t0 c4 max 5");
    statistics.MaxWordsPerCell(5.5);
    tree.Gather(statistics);
    EXPECT_EQ(statistics.MaxWordsPerCell(), 5.5);
}

TEST(Statistics, OfACellCountItEvenWithoutItems) {
    const ContentTree tree("{ 3() 5({ 7 }) }");
    for (const unsigned int depth : {0u, 1u}) {
        KStatistics statistics;
        for (const ZOT::SmartPtr<KCell>& cell : *tree.Root()) cell->Statistics(statistics, depth);
        EXPECT_EQ(Gathered(statistics), depth == 0 ? "8/0 k0 t1 c2 max 0" : "15/0 k0 t1 c3 max 7");
    }
}

}  // namespace
}  // namespace QuillNS
