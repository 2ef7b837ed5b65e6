#include "text_measure.h"

#include <gtest/gtest.h>

#include <string>

namespace ZOTParser {
namespace {

TextMeasure MeasureOf(const std::string& text) {
    auto* const source = static_cast<unsigned char*>(ZOT::PoolAllocate(text.size() + kSourcePadding));
    std::memcpy(source, text.data(), text.size());
    std::memset(source + text.size(), ',', kSourcePadding);  // none of it belongs to the text
    NodeStore nodes;
    EXPECT_TRUE(nodes.Init(source, static_cast<unsigned int>(text.size())));
    return MeasureText(nodes, nodes.NewText(TextKind::kData, 0, static_cast<unsigned int>(text.size())));
}

// One byte at a time.
TextMeasure PlainMeasure(const std::string& text) {
    TextMeasure measure;
    bool inWord = false;
    for (const char c : text) {
        const bool dark = static_cast<unsigned char>(c) > ' ';
        measure.words += dark && !inWord;
        measure.bytes += dark;
        measure.commas += c == ',';
        measure.stops += c == '.' || c == '!' || c == '?';
        inWord = dark;
    }
    return measure;
}

TEST(TextMeasure, CountsLikeAReaderOfSingleBytes) {
    const std::string text =
        "\n  Dr. Who, said he, \xC3\xA9t\xC3\xA9?  No!\t\r\nIt is (perhaps) 12,5 &amp; more... end";
    for (std::size_t first = 0; first <= text.size(); ++first) {
        for (std::size_t size = 0; first + size <= text.size(); ++size) {
            const std::string part = text.substr(first, size);
            const TextMeasure got = MeasureOf(part);
            const TextMeasure want = PlainMeasure(part);
            EXPECT_EQ(got.words, want.words) << part;
            EXPECT_EQ(got.bytes, want.bytes) << part;
            EXPECT_EQ(got.commas, want.commas) << part;
            EXPECT_EQ(got.stops, want.stops) << part;
        }
    }
}

}  // namespace
}  // namespace ZOTParser
