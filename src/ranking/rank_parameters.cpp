#include <cmath>
#include <quill/rank_parameters.h>

namespace QuillNS {

KRankParameters::KRankParameters() {
    const bool complete = linkDensity_.Append(0.3) && wordsPerCell_.Append(0.3) && wordCount_.Append(0.4);
    if (!complete) linkDensity_.Free();
}

KRankParameters::~KRankParameters() = default;

void KRankParameters::Init(double lowThreshold, double hiThreshold, double cellLowScore,
                           double winnerLowThreshold) noexcept {
    lowThreshold_ = lowThreshold;
    hiThreshold_ = hiThreshold;
    cellLowScore_ = cellLowScore;
    winnerLowThreshold_ = winnerLowThreshold;
}

unsigned int KRankParameters::MaxDepth() const noexcept {
    return static_cast<unsigned int>(linkDensity_.Size());
}

double KRankParameters::DepthFactor(unsigned int depth) const {
    return 1.0 /
           std::ldexp(1.0, static_cast<int>(depth));  // a power of two, as exact as pow and without its cost
}

}  // namespace QuillNS
