#include "text_measure.h"

#include <cstdint>

namespace ZOTParser {

namespace {

// Four counts of bits, one for each 16-bit lane.
std::uint64_t CountLanes(std::uint64_t lanes) noexcept {
    constexpr std::uint64_t kPairs = 0x5555555555555555u;
    constexpr std::uint64_t kNibbles = 0x3333333333333333u;
    constexpr std::uint64_t kBytes = 0x0F0F0F0F0F0F0F0Fu;
    constexpr std::uint64_t kLanes = 0x00FF00FF00FF00FFu;
    lanes -= lanes >> 1 & kPairs;
    lanes = (lanes & kNibbles) + (lanes >> 2 & kNibbles);
    lanes = (lanes + (lanes >> 4)) & kBytes;
    return (lanes & kLanes) + (lanes >> 8 & kLanes);
}

// Vectors whose lanes can be added before a lane of 16 bits might overflow.
constexpr unsigned int kMostVectors = 0xFFFF / 16;

void Add(std::uint64_t lanes, TextMeasure& measure) noexcept {
    measure.words += lanes & 0xFFFF;
    measure.bytes += lanes >> 16 & 0xFFFF;
    measure.commas += lanes >> 32 & 0xFFFF;
    measure.stops += static_cast<unsigned int>(lanes >> 48);
}

}  // namespace

// Sixteen bytes at a time; the four counts of a vector share one register. The source is padded, so the last
// load may reach behind the text.
TextMeasure MeasureText(const NodeStore& nodes, NodeIndex text) noexcept {
    const char* at = nodes.Source() + nodes[text].SourcePosition();
    const char* const end = at + nodes[text].SourceLength();
    TextMeasure measure;
    std::uint64_t before = 0;  // whether the byte before this vector was part of a word
    while (at < end) {
        std::uint64_t counts = 0;
        for (unsigned int vectors = 0; at < end && vectors < kMostVectors; ++vectors, at += 16) {
            const auto bytes = ByteVector::Load(at);
            const std::ptrdiff_t left = end - at;
            const std::uint64_t inside = left < 16 ? (1u << left) - 1 : 0xFFFFu;
            const std::uint64_t dark = ~bytes.AtMost(' ').Mask() & inside;
            const std::uint64_t starts = dark & ~(dark << 1 | before);
            const std::uint64_t commas = bytes.Equal(',').Mask() & inside;
            const std::uint64_t stops =
                (bytes.Equal('.') | bytes.Equal('!') | bytes.Equal('?')).Mask() & inside;
            counts += CountLanes(starts | dark << 16 | commas << 32 | stops << 48);
            before = dark >> 15 & 1;
        }
        Add(counts, measure);
    }
    return measure;
}

}  // namespace ZOTParser
