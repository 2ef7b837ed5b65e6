#include "select_winners.h"

#include <cmath>
#include <gtest/gtest.h>
#include <random>
#include <quill/text_extractor.h>
#include <zot/memory_buffer.h>

#include "content_tree.h"
#include "plain_selection.h"
#include "random_tree.h"

namespace QuillNS {
namespace {

struct Thresholds {
    double low, high, winnerLow;
};

// The names of the winners in alphabetical order, with a blank before each.
std::string Winners(const ContentTree& tree, const Thresholds& thresholds) {
    KStatistics totals;
    tree.Gather(totals);
    const ZOT::SmartPtr<KRankParameters> parameters(new KRankParameters, true);
    parameters->Init(thresholds.low, thresholds.high, 0.5, thresholds.winnerLow);
    ZOT::RefCount<TableSet> winners(new TableSet);
    SelectWinners(tree.Root(), totals, parameters, winners);
    std::string names;
    for (const auto& [name, table] : tree.Tables()) {
        if (winners->count(table) != 0) names += " " + name;
    }
    return names;
}

// A ranks best, then R, then B (all but one word in links), then X with 0.
const char* const kTree = "R{ (A{ 100(X{ 1/1 }) } B{ 100/99 }) }";

double RankOf(const ContentTree& tree, const char* name) {
    KStatistics totals;
    tree.Gather(totals);
    return tree.Table(name)->Rank(totals, ZOT::SmartPtr<KRankParameters>(new KRankParameters, true));
}

TEST(SelectWinners, ThresholdsAdmitWhatReachesThem) {
    const ContentTree tree(kTree);
    const double a = RankOf(tree, "A");
    const double b = RankOf(tree, "B");
    const double r = RankOf(tree, "R");
    const double x = RankOf(tree, "X");
    ASSERT_TRUE(a > r && r > b && b > x) << a << " " << r << " " << b << " " << x;
    const double above = 1e-9;
    struct Case {
        Thresholds thresholds;
        const char* winners;
    };
    const Case cases[] = {
        // Nobody reaches the low threshold; the best reaches it exactly.
        {{a + above, 1.0, 0.0}, ""},
        {{a, 1.0, 9.0}, " A"},
        {{r, 1.0, 9.0}, " A R"},
        {{r + above, 1.0, 9.0}, " A"},
        // Cutoff at the best rank, at 0.
        {{0.0, 0.0, 9.0}, " A"},
        {{0.0, 1.0, 9.0}, " A B R X"},
        // Tables below a top table need the winners' threshold alone. Those of a loser do not.
        {{a, 0.0, x}, " A X"},
        {{a, 0.0, x + above}, " A"},
        {{r, 1.0, x}, " A B R X"},
        {{r, 1.0, b}, " A B R"},
        {{r, 1.0, b + above}, " A R"},
        {{0.0, 0.0, 0.0}, " A X"},
        // No fraction of the best reaches above it.
        {{0.0, -1.0, 0.0}, ""},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(Winners(tree, c.thresholds), c.winners)
            << c.thresholds.low << " " << c.thresholds.high << " " << c.thresholds.winnerLow;
    }
}

TEST(SelectWinners, CutoffIsTheBestLessItsFraction) {
    const ContentTree tree("R{ (A{ 100 } B{ 50 }) }");
    const double a = RankOf(tree, "A");
    const double b = RankOf(tree, "B");
    const double fraction = 1.0 - b / a;
    EXPECT_EQ(Winners(tree, {0.4, fraction + 1e-9, 9.0}), " A B");
    EXPECT_EQ(Winners(tree, {0.4, fraction - 1e-9, 9.0}), " A");
}

TEST(SelectWinners, CutoffRoundsTheProductBeforeItIsSubtracted) {
    for (int words = 40; words < 90; ++words) {
        const ContentTree tree("R{ (A{ 100 } B{ " + std::to_string(words) + " }) }");
        const double a = RankOf(tree, "A");
        const double b = RankOf(tree, "B");
        double fraction = 1.0 - b / a - 1e-15;
        for (int step = 0; step < 30; ++step, fraction = std::nextafter(fraction, 1.0)) {
            const double product = fraction * a;
            EXPECT_EQ(Winners(tree, {b, fraction, 9.0}), b >= a - product ? " A B" : " A")
                << words << " " << step;
        }
    }
}

TEST(SelectWinners, TablesOfEqualRankWinTogether) {
    EXPECT_EQ(Winners(ContentTree("R{ (A{ 50 } B{ 50 } C{ 40 }) }"), {0.0, 0.0, 9.0}), " A B");
}

TEST(SelectWinners, TablesInCaptionsNeverWin) {
    const Thresholds everything = {0.0, 1.0, 0.0};
    EXPECT_EQ(Winners(ContentTree("R{ 5 ^5(C{ 50(D{ 50 }) }) $5(S{ 50 }) }"), everything), " R");
    EXPECT_EQ(Winners(ContentTree("R{ (A{ 5 ^5(C{ 50 }) }) }"), everything), " A R");
}

TEST(SelectWinners, KeepsWhatTheSetHolds) {
    const ContentTree tree("R{ 5 ^(C{ 50 }) }");
    KStatistics totals;
    tree.Gather(totals);
    ZOT::RefCount<TableSet> winners(new TableSet{tree.Table("C")});
    const ZOT::RefCount<TableSet> holder(winners);
    SelectWinners(tree.Root(), totals, ZOT::SmartPtr<KRankParameters>(new KRankParameters, true), winners);
    EXPECT_EQ(winners.Get(), holder.Get());
    EXPECT_EQ(winners->size(), 2u);
}

template <class Write>
std::string Written(Write write) {
    ZOTFile::MemoryBuffer out(4096);
    write(&out);
    std::u16string text;
    out.SeekG(0, ZOT::kFromBegin);  // the extractor reads back what it has written
    out.Copy(text, ZOT::kWholeStream);
    return Narrow(text);
}

std::string Extracted(const ContentTree& tree, std::vector<double>* tuning) {
    return Written(
        [&](ZOT::BinaryStreamBuf* out) { QuillTextExtractor(tree.Root(), false, tuning).GetText(out); });
}

TEST(SelectWinners, AreThoseOfThePlainRules) {
    std::mt19937 random(7);
    const Choose choose = [&random](unsigned int bound) { return random() % bound; };
    for (int round = 0; round < 500; ++round) {
        const std::string text = RandomTree(choose);
        const ContentTree tree(text);
        KStatistics totals;
        tree.Gather(totals);
        const ZOT::SmartPtr<KRankParameters> parameters(new KRankParameters, true);
        std::vector<double> ranks;
        for (const auto& [name, table] : tree.Tables())
            ranks.push_back(Plain::Rank(*table, totals, *parameters));
        std::vector<double> tuning = RandomTuning(choose, ranks);
        parameters->Init(tuning[0], tuning[1], tuning[2], tuning[3]);
        ZOT::RefCount<TableSet> winners(new TableSet);
        SelectWinners(tree.Root(), totals, parameters, winners);
        ASSERT_EQ(*winners, Plain::SelectWinners(tree.Root(), totals, *parameters)) << text;
        ASSERT_EQ(Extracted(tree, &tuning), Narrow(Plain::Text(tree.Root(), tuning))) << text;
    }
}

// Puts a cell of the last table nested in `root` into the root's last slot, too.
void RepeatInLastSlot(KTable& root) {
    ZOT::RefCountVector<KTable, ZOT::SmartPtr<KTable>> tables;
    root.FindAllTables(tables);
    if (tables.Size() == 0) return;
    const ZOT::SmartPtr<KCell> cell = *(*(tables.End() - 1))->Begin();
    root.SetCell(root.Cols() - 1, root.Rows() - 1, cell);
}

TEST(ExtractText, WritesWhatTheExtractorWrites) {
    std::mt19937 random(8);
    const Choose choose = [&random](unsigned int bound) { return random() % bound; };
    for (int round = 0; round < 3000; ++round) {
        const std::string text = round % 4 == 0 ? RandomTree(choose) : RandomPlainTree(choose);
        const ContentTree tree(text);
        if (round % 4 == 1) RepeatInLastSlot(*tree.Root());
        DocumentType type = LinkPage;
        const std::string written =
            Written([&](ZOT::BinaryStreamBuf* out) { ExtractText(tree.Root(), out, &type); });
        if (type == ContentPage) {
            ASSERT_EQ(written, Extracted(tree, nullptr)) << text;
        }
    }
}

// It wins below A alone, but it is one table: it is written below B, too.
TEST(ExtractText, WritesAWinnerWhereverItStands) {
    const ContentTree tree("{ (B{ 5000/5000('b') } A{ 10000('a' X{ 100('x' { 100('y') }) }) }) }");
    (*tree.Table("B")->Begin())->AddCellItem()->Table(tree.Table("X"));
    DocumentType type = LinkPage;
    EXPECT_EQ(Written([&](ZOT::BinaryStreamBuf* out) { ExtractText(tree.Root(), out, &type); }), "x\na\nx\n");
    EXPECT_EQ(Extracted(tree, nullptr), "x\na\nx\n");
}

// A page may nest hundreds of tables and hang thousands below the innermost one, or below each.
TEST(SelectWinners, TakesDeepAndWideTrees) {
    std::string open, close;
    for (int level = 0; level < 500; ++level) {
        open += "{ 1(";
        close += "{ 1/1 } { 2 }) }";
    }
    const ContentTree tree(open + "'x'" + close);
    KStatistics totals;
    tree.Gather(totals);
    const ZOT::SmartPtr<KRankParameters> parameters(new KRankParameters, true);
    parameters->Init(0.0, 1.0, 0.5, 0.0);
    ZOT::RefCount<TableSet> winners(new TableSet);
    SelectWinners(tree.Root(), totals, parameters, winners);
    EXPECT_EQ(winners->size(), 1500u);
}

}  // namespace
}  // namespace QuillNS
