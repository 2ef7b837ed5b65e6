#include <gtest/gtest.h>
#include <quill/ranked_strategy.h>

#include "content_tree.h"

namespace QuillNS {
namespace {

using TableSet = std::set<ZOT::SmartPtr<KTable>>;

TEST(RankedStrategy, AdmitsCellsStrictlyAboveTheScore) {
    const ZOT::SmartPtr<KRankParameters> parameters(new KRankParameters, true);
    struct Case {
        const char* tree;
        double cellLowScore;
        bool good;
    };
    const Case cases[] = {
        {"{ 100/56 }", 0.436295, true}, {"{ 100/57 }", 0.436295, false}, {"{ 8/4 }", 0.5, false},
        {"{ 8/3 }", 0.5, true},         {"{ 0 }", 0.0, false},           {"{ 0 }", -0.1, true},
        {"{ 8/8 }", 0.0, false},
    };
    for (const Case& c : cases) {
        parameters->Init(0.0, 0.0, c.cellLowScore, 0.0);
        QuillRankedStrategy strategy(parameters, ZOT::RefCount<TableSet>());
        EXPECT_EQ(strategy.IsGoodCell(*ContentTree(c.tree).Root()->Begin()), c.good) << c.tree;
    }
}

TEST(RankedStrategy, AdmitsTheTablesOfTheSet) {
    const ZOT::SmartPtr<KRankParameters> parameters(new KRankParameters, true);
    const ContentTree tree("R{ (A{}) }");
    QuillRankedStrategy unrestricted(parameters, ZOT::RefCount<TableSet>());
    QuillRankedStrategy none(parameters, ZOT::RefCount<TableSet>(new TableSet));
    QuillRankedStrategy one(parameters, ZOT::RefCount<TableSet>(new TableSet{tree.Table("A")}));
    EXPECT_TRUE(unrestricted.IsGoodTable(tree.Root()) && unrestricted.IsGoodTable(tree.Table("A")));
    EXPECT_FALSE(none.IsGoodTable(tree.Root()) || none.IsGoodTable(tree.Table("A")));
    EXPECT_TRUE(!one.IsGoodTable(tree.Root()) && one.IsGoodTable(tree.Table("A")));
    EXPECT_TRUE(one.IsGoodCellItem(ZOT::SmartPtr<KCellItem>()));
}

TEST(RankedStrategy, CopiesShareParametersAndWinners) {
    const ZOT::SmartPtr<KRankParameters> parameters(new KRankParameters, true);
    ZOT::RefCount<TableSet> winners(new TableSet);
    const ZOT::SmartPtr<QuillRankedStrategy> strategy(new QuillRankedStrategy(parameters, winners), true);
    {
        QuillRankedStrategy copy(*strategy);
        EXPECT_EQ(copy.NbRef(), 0);
        EXPECT_EQ(strategy->NbRef(), 1);
        EXPECT_EQ(copy.Parameters(), parameters);
        EXPECT_EQ(parameters->NbRef(), 3);
        EXPECT_EQ(winners.NbRef(), 3);
        QuillRankedStrategy other(ZOT::SmartPtr<KRankParameters>(new KRankParameters, true),
                                  ZOT::RefCount<TableSet>());
        other.AddRef();
        other = copy;
        EXPECT_EQ(other.NbRef(), 1);
        EXPECT_EQ(parameters->NbRef(), 4);
        EXPECT_FALSE(other.IsGoodTable(ContentTree("{}").Root()));
    }
    EXPECT_EQ(parameters->NbRef(), 2);
    EXPECT_EQ(winners.NbRef(), 2);
}

}  // namespace
}  // namespace QuillNS
