#include "main_text.h"

#include <cmath>
#include <cstdint>

namespace ZOTParser {
namespace {

constexpr double kLeastMainShare = 0.5;  // of the weight of what the main text stands in
constexpr double kLeastOtherPart = 0.5;  // of its weight, from which on a text beside it is not much less

// A block with half as much text again as the main text is not less than it, whatever its text reads like.
bool HoldsMoreText(const TextBytes& block, const TextBytes& main) noexcept {
    return std::uint64_t{2} * (block.all - block.linked) > std::uint64_t{3} * main.all;
}

class MainText {
public:
    MainText(NodeStore& nodes, const PageOutline& page) noexcept
        : nodes_(nodes), blocks_(page.blocks), weights_(page.blocks.Size()) {}

    bool LeaveOutAfter(unsigned int root) noexcept {
        if (weights_.Size() == 0) return false;
        Weigh();
        for (unsigned int around = root; around != kNone;) around = LeaveOutAfterMainOf(around);
        return true;
    }

private:
    static constexpr unsigned int kNone = ~0u;

    // A block's weight is that of its own prose and of the blocks in it.
    void Weigh() noexcept {
        for (unsigned int index = 0; index < blocks_.Size(); ++index) {
            const double prose = blocks_[index].ownProse;
            weights_[index] = prose * std::sqrt(prose);
        }
        for (auto index = static_cast<unsigned int>(blocks_.Size()); --index > 0;) {
            if (!IsLeftOut(index)) weights_[blocks_[index].around] += weights_[index];
        }
    }

    // The block in `around` that holds the main text, kNone when none of them does.
    unsigned int LeaveOutAfterMainOf(unsigned int around) noexcept {
        const unsigned int main = Heaviest(around);
        if (main == kNone || weights_[main] < weights_[around] * kLeastMainShare) return kNone;
        for (unsigned int other = blocks_[main].end; other < blocks_[around].end;
             other = blocks_[other].end) {
            if (IsMuchLess(other, main)) nodes_.LeaveOut(blocks_[other].element, kKeywordClutter);
        }
        return main;
    }

    unsigned int Heaviest(unsigned int around) const noexcept {
        unsigned int heaviest = kNone;
        double weight = 0;
        for (unsigned int index = around + 1; index < blocks_[around].end; index = blocks_[index].end) {
            if (IsLeftOut(index) || weights_[index] <= weight) continue;
            heaviest = index;
            weight = weights_[index];
        }
        return heaviest;
    }

    bool IsMuchLess(unsigned int other, unsigned int main) const noexcept {
        return !IsLeftOut(other) && nodes_[blocks_[other].element].Keyword() != kKeywordParagraph &&
               weights_[other] < weights_[main] * kLeastOtherPart &&
               !HoldsMoreText(blocks_[other].bytes, blocks_[main].bytes);
    }

    bool IsLeftOut(unsigned int index) const noexcept { return nodes_.IsLeftOut(blocks_[index].element); }

    NodeStore& nodes_;
    const ZOT::FastVector<Block>& blocks_;
    ZOT::FastVector<double> weights_;
};

}  // namespace

bool LeaveOutAfterMainText(NodeStore& nodes, const PageOutline& page, unsigned int root) noexcept {
    return MainText(nodes, page).LeaveOutAfter(root);
}

}  // namespace ZOTParser
