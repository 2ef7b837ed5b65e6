#include <gtest/gtest.h>
#include <quill/rank_parameters.h>

namespace QuillNS {
namespace {

TEST(RankParameters, StartWithTheDefaults) {
    const KRankParameters parameters;
    EXPECT_EQ(parameters.NbRef(), 0);
    EXPECT_EQ(parameters.MaxDepth(), 1u);
    EXPECT_EQ(parameters.LinkDensity(0), 0.3);
    EXPECT_EQ(parameters.WordsPerCell(0), 0.3);
    EXPECT_EQ(parameters.WordCount(0), 0.4);
    EXPECT_EQ(parameters.LowThreshold(), 0.2);
    EXPECT_EQ(parameters.HiThreshold(), 0.05);
    EXPECT_EQ(parameters.CellLowScore(), 0.5);
    EXPECT_EQ(parameters.WinnerLowThreshold(), 0.3);
}

TEST(RankParameters, InitSetsTheThresholdsAlone) {
    KRankParameters parameters;
    parameters.Init(1.0, 2.0, 3.0, 4.0);
    EXPECT_EQ(parameters.LowThreshold(), 1.0);
    EXPECT_EQ(parameters.HiThreshold(), 2.0);
    EXPECT_EQ(parameters.CellLowScore(), 3.0);
    EXPECT_EQ(parameters.WinnerLowThreshold(), 4.0);
    EXPECT_EQ(parameters.MaxDepth(), 1u);
    EXPECT_EQ(parameters.WordCount(0), 0.4);
}

TEST(RankParameters, DepthHalves) {
    const KRankParameters parameters;
    double factor = 1.0;
    for (unsigned int depth = 0; depth < 600; ++depth, factor /= 2) {
        EXPECT_EQ(parameters.DepthFactor(depth), factor) << depth;
    }
    EXPECT_EQ(parameters.DepthFactor(0x7FFFFFFF), 0.0);
}

// Reaches the private comparison: names in an explicit instantiation are not access-checked.
using Comparison = bool (*)(double, double);
Comparison TheComparison();
template <Comparison comparison>
struct Reach {
    friend Comparison TheComparison() { return comparison; }
};
template struct Reach<&KRankParameters::EQ>;

TEST(RankParameters, EqualityStopsShortOfEpsilon) {
    const Comparison equal = TheComparison();
    const double epsilon = 0.00001;
    EXPECT_TRUE(equal(1.0, 1.0));
    EXPECT_TRUE(equal(1.0 + epsilon / 2, 1.0));
    EXPECT_TRUE(equal(1.0 - epsilon / 2, 1.0));
    EXPECT_FALSE(equal(1.0 + epsilon, 1.0));
    EXPECT_FALSE(equal(1.0 - epsilon, 1.0));
}

}  // namespace
}  // namespace QuillNS
