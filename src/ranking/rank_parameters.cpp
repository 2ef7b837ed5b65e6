#include <bit>
#include <cmath>
#include <cstdint>
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

// Powers of two, as exact as pow and without its cost: down to the least normal number one is its exponent.
double KRankParameters::DepthFactor(unsigned int depth) const {
    constexpr unsigned int kBias = 1023;
    constexpr unsigned int kMantissaBits = 52;
    if (depth < kBias) return std::bit_cast<double>(std::uint64_t{kBias - depth} << kMantissaBits);
    return 1.0 / std::ldexp(1.0, static_cast<int>(depth));
}

}  // namespace QuillNS
