#pragma once

#include <zot/counted.h>
#include <zot/fast_vector.h>

namespace QuillNS {

// The tunable numbers of the ranking: the weights of a table's rank by nesting depth, and the thresholds that
// decide which tables win and which of their cells are written. Set it up, share it through ZOT::SmartPtr,
// then only read it.
class QUILL_API KRankParameters : public ZOT::PoolObject {
public:
    // One weight each (0.3 link density, 0.3 words per cell, 0.4 word count) and the thresholds 0.2, 0.05,
    // 0.5, 0.3.
    KRankParameters();
    KRankParameters(const KRankParameters&) = delete;  // share it instead
    KRankParameters& operator=(const KRankParameters&) = delete;
    ~KRankParameters();

    // Sets the thresholds; the weights stay. Each is described at its accessor.
    void Init(double lowThreshold, double hiThreshold, double cellLowScore,
              double winnerLowThreshold) noexcept;

    // The weights of the three terms of a rank. `index` is a nesting depth modulo MaxDepth and is not
    // checked.
    double LinkDensity(unsigned int index) const noexcept { return linkDensity_[index]; }
    double WordsPerCell(unsigned int index) const noexcept { return wordsPerCell_[index]; }
    double WordCount(unsigned int index) const noexcept { return wordCount_[index]; }

    // Least rank of a candidate table. Raising it leaves fewer tables to choose from.
    double LowThreshold() const noexcept { return lowThreshold_; }
    // Fraction of the best rank, 0 to 1, by which a top table may fall short of the best. Raising it admits
    // more.
    double HiThreshold() const noexcept { return hiThreshold_; }
    // A cell is written only if its rank (its share of words outside links) lies strictly above this.
    double CellLowScore() const noexcept { return cellLowScore_; }
    // Least rank of a table nested in a top table for it to win too.
    double WinnerLowThreshold() const noexcept { return winnerLowThreshold_; }

    // Weights per term: 1, or 0 when memory ran out while the object was made; such a set ranks every table
    // 0.0.
    unsigned int MaxDepth() const noexcept;

    // What a table `depth` levels below the ranked one counts: 1.0, 0.5, 0.25, ... `depth` is below 2^31.
    double DepthFactor(unsigned int depth) const;

    // Holders; one more; one fewer, and the last one destroys the object. The new count is returned.
    long NbRef() const noexcept { return holders_.Get(); }
    long AddRef() const noexcept { return holders_.Add(); }
    long Release() const noexcept {
        const long left = holders_.Sub();
        if (left == 0) delete this;
        return left;
    }

private:
    // Whether the numbers differ by less than Epsilon. For inspection: no choice of the library rounds.
    static bool EQ(double a, double b) noexcept {
        constexpr double Epsilon = 0.00001;
        return b - Epsilon < a && a < b + Epsilon;
    }

    mutable ZOT::SPRefCounter holders_;
    ZOT::FastVector<double> linkDensity_;
    ZOT::FastVector<double> wordsPerCell_;
    ZOT::FastVector<double> wordCount_;
    double lowThreshold_ = 0.2;
    double hiThreshold_ = 0.05;
    double cellLowScore_ = 0.5;
    double winnerLowThreshold_ = 0.3;
};

}  // namespace QuillNS
