#include "filter_to_ascii.h"

#include <string>

#include <gtest/gtest.h>
#include <zot/memory_buffer.h>

namespace QuillNS {
namespace {

std::string Filtered(const std::string& bytes) {
    ZOT::BinaryStream source(
        new ZOTFile::MemoryBuffer(bytes.data(), static_cast<unsigned int>(bytes.size()), 0), true);
    ZOT::BinaryStream target(new ZOTFile::MemoryBuffer(16), true);
    source.Buffer()->SeekG(0, ZOT::kFromEnd);
    FilterToAscii(source, target);
    std::string kept;
    target.Buffer()->Copy(kept, ZOT::kWholeStream);
    EXPECT_EQ(source.Buffer()->vTellG(), 0u);
    return kept;
}

// H stands for a high byte. The last ASCII byte is \177.
TEST(FilterToAscii, KeepsAsciiThatBelongsToNoHighByte) {
    struct Case {
        std::string source, kept;
    };
    const Case cases[] = {
        {"", "   "},           {"a", "a  "},         {"abc", "abc"},       {"abcdef", "abcdef"},
        {"abcHdef", "abcdef"}, {"aHbc", "bc "},      {"H", "  "},          {"Ha", "a "},
        {"HaH", ""},           {"HHa", ""},          {"aHH", ""},          {"aHa", "a"},
        {"abH", "ab"},         {"Habcd", "abcd"},    {"HHabc", "abc"},     {"HHHabc", "abc"},
        {"HaHabc", "abc"},     {"abHHcd", "abcd "},  {"abHcHde", "abde "}, {"aHHbcd", "bcd"},
        {"HHHHHH", ""},        {"a\177b", "a\177b"}, {"ab\200", "ab"},
    };
    for (const Case& c : cases) {
        std::string source = c.source;
        for (char& byte : source) {
            if (byte == 'H') byte = '\xE9';
        }
        EXPECT_EQ(Filtered(source), c.kept) << c.source;
    }
}

}  // namespace
}  // namespace QuillNS
