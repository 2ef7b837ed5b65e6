#include <gtest/gtest.h>
#include <random>
#include <quill/rank_parameters.h>
#include <quill/statistics.h>
#include <quill/table.h>

#include "content_tree.h"
#include "plain_selection.h"
#include "random_tree.h"

namespace QuillNS {
namespace {

const ZOT::SmartPtr<KRankParameters> kDefaults(new KRankParameters, true);

TEST(CellRank, IsTheShareOfWordsOutsideLinks) {
    struct Case {
        const char* tree;
        double rank;
    };
    for (const Case& c :
         {Case{"{ 8/2 }", 0.75}, Case{"{ 8/8 }", 0.0}, Case{"{ 8 }", 1.0}, Case{"{ 0 }", 0.0},
          Case{"{ 100/57 }", 1.0 - 57.0 / 100.0}, Case{"{ 4294967295/1 }", 1.0 - 1.0 / 4294967295.0}}) {
        EXPECT_EQ((*ContentTree(c.tree).Root()->Begin())->Rank(), c.rank) << c.tree;
    }
}

TEST(TableRank, AddsThreeTermsPerLevel) {
    struct Case {
        const char* tree;
        double rank;  // of the root
    };
    const Case cases[] = {
        // No words, no cells with items.
        {"{}", 0.0},
        {"{ . ; . }", 0.0},
        {"{ 0 }", 0.0},
        {"{ 7() }", 0.0},
        // All three terms in full.
        {"{ 10 }", 1.0},
        {"{ 10 10 }", 1.0},
        {"{ ^10 }", 1.0},
        // Nothing lies outside links: no term is left.
        {"{ 10/10 }", 0.0},
        // Half of the words in links: density 1/2.
        {"{ 10/5 }", 0.15 + 0.3 + 0.4},
        // The best words per cell of the page is 30, and 10 of its 40 words are in the root.
        {"{ 10({ 30 }) }", (0.3 + 0.1 + 0.1) + (0.3 + 0.3 + 0.3) / 2},
        // A level is judged together: B's density is that of A and B, so that their order counts.
        {"{ (A{ 10 } B{ 10/10 }) }", 9.0 / 80 + 0.15 / 2 + (0.2 + 0.2) / 2},
        {"{ (B{ 10/10 } A{ 10 }) }", 3.0 / 80 + 0.15 / 2 + (0.0 + 0.2) / 2},
        // Column by column, so B stands before C.
        {"{ (A{ 0 }) (C{ 10 }) ; (B{ 10/10 }) (D{ 0 }) }",
         (0.5 + 0.5) * 0.15 / 4 + 0.15 / 4 + (0.2 + 0.2) / 4},
        // Tables that contribute nothing count in the average.
        {"{ ({} {} { 10 }) }", (0.15 + 0.15 + 0.2) / 3},
        // Each level counts half of the one above.
        {"{ ({ ({ ({ 10 }) }) }) }", 1.0 / 8},
        // Tables in a caption count for the totals, and nowhere else.
        {"{ 10 ^({ 30 }) }", 0.3 + 0.3 * 5 / 30 + 0.4 * 10 / 40},
    };
    for (const Case& c : cases) {
        const ContentTree tree(c.tree);
        KStatistics totals;
        tree.Gather(totals);
        EXPECT_NEAR(tree.Root()->Rank(totals, kDefaults), c.rank, 1e-12) << c.tree;
    }
}

TEST(TableRank, HoldsNoReferenceAndTakesTablesOutsideAnyPointer) {
    KTable table(nullptr, 1, 1, 0);
    const ZOT::SmartPtr<KCell> cell = table.CreateCell(0, 0);
    cell->AddCellItem();
    cell->AddWords(5);
    KStatistics totals;
    table.Statistics(totals, kAllLevels);
    EXPECT_NEAR(table.Rank(totals, kDefaults), 1.0, 1e-12);
    EXPECT_EQ(table.NbRef(), 0);
    EXPECT_EQ(totals.NbRef(), 0);
    EXPECT_EQ(kDefaults->NbRef(), 1);
}

TEST(TableRank, IsThatOfThePlainRulesToTheLastBit) {
    std::mt19937 random(20);
    for (int round = 0; round < 100; ++round) {
        const std::string text = RandomTree([&random](unsigned int bound) { return random() % bound; });
        const ContentTree tree(text);
        KStatistics totals;
        tree.Gather(totals);
        for (const auto& [name, table] : tree.Tables()) {
            ASSERT_EQ(table->Rank(totals, kDefaults), Plain::Rank(*table, totals, *kDefaults))
                << name << " of " << text;
        }
    }
}

}  // namespace
}  // namespace QuillNS
