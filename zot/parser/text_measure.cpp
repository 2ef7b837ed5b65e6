#include "text_measure.h"

#include <bit>

namespace ZOTParser {

// Sixteen bytes at a time. The source is padded, so the last load may reach behind the text.
TextMeasure MeasureText(const NodeStore& nodes, NodeIndex text) noexcept {
    const char* at = nodes.Source() + nodes[text].SourcePosition();
    const char* const end = at + nodes[text].SourceLength();
    TextMeasure measure;
    unsigned int before = 0;  // whether the byte before this vector was part of a word
    for (; at < end; at += 16) {
        const auto bytes = ByteVector::Load(at);
        const std::ptrdiff_t left = end - at;
        const unsigned int inside = left < 16 ? (1u << left) - 1 : 0xFFFFu;
        const unsigned int dark = ~bytes.AtMost(' ').Mask() & inside;
        measure.words += static_cast<unsigned int>(std::popcount(dark & ~(dark << 1 | before)));
        measure.bytes += static_cast<unsigned int>(std::popcount(dark));
        measure.commas += static_cast<unsigned int>(std::popcount(bytes.Equal(',').Mask() & inside));
        const auto stops = bytes.Equal('.') | bytes.Equal('!') | bytes.Equal('?');
        measure.stops += static_cast<unsigned int>(std::popcount(stops.Mask() & inside));
        before = dark >> 15 & 1;
    }
    return measure;
}

}  // namespace ZOTParser
