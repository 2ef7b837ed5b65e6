#include "convert.h"

#include <gtest/gtest.h>

#include <string>
#include <zot/memory_buffer.h>

namespace QuillNS {
namespace {

std::string Converted(ZOT::CHARSET from, ZOT::CHARSET to, const std::string& source,
                      std::string before = {}) {
    ZOTFile::MemoryBuffer in(source.data(), static_cast<unsigned int>(source.size()), 0);
    ZOTFile::MemoryBuffer out(16);
    out.vPut(before.data(), static_cast<unsigned int>(before.size()));
    ConvertStream(from, to, in, out, false);
    std::string target;
    out.SeekG(0, ZOT::kFromBegin);
    out.Copy(target, ZOT::kWholeStream);
    return target;
}

TEST(ConvertStream, AppendsTheConvertedText) {
    EXPECT_EQ(Converted(ZOT::kCharsetWindows1252, ZOT::kCharsetUtf8, "caf\xE9 \x80", "<"),
              "<caf\u00E9 \u20AC");
    EXPECT_EQ(Converted(ZOT::kCharsetUtf16Be, ZOT::kCharsetUtf8, std::string("\0a\x20\xAC", 4)), "a\u20AC");
    EXPECT_EQ(Converted(ZOT::kCharsetUtf8, ZOT::kCharsetUtf16Le, "a\u20AC"), std::string("a\0\xAC\x20", 4));
    EXPECT_EQ(Converted(ZOT::kCharsetUtf8, ZOT::kCharsetUtf8, "", "<"), "<");
    EXPECT_EQ(Converted(static_cast<ZOT::CHARSET>(4), ZOT::kCharsetUtf8, "abc", "<"), "<");
}

TEST(ConvertStream, CharactersOnTheBorderOfAPieceStayWhole) {
    for (std::size_t offset = 4090; offset < 4100; ++offset) {
        std::string source(offset, 'x');
        for (int i = 0; i < 2000; ++i) source += "\U0001F600\u20AC";
        const std::string wide = Converted(ZOT::kCharsetUtf8, ZOT::kCharsetUtf16Le, source);
        EXPECT_EQ(wide.size(), 2 * (offset + 3 * 2000));
        EXPECT_EQ(Converted(ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf8, wide), source);
        EXPECT_EQ(Converted(ZOT::kCharsetUtf8, ZOT::kCharsetWindows1252, source).substr(0, offset + 2),
                  std::string(offset, 'x') + "?\x80");
    }
}

TEST(ConvertStream, OnlyAnIncompleteTailIsLost) {
    EXPECT_EQ(Converted(ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf8, std::string("a\0b\0c", 5)), "ab");
    EXPECT_EQ(Converted(ZOT::kCharsetUtf8, ZOT::kCharsetUtf16Le, "a\xE2\x82"), std::string("a\0", 2));
}

TEST(ConvertWide, AppendsTheConvertedText) {
    std::string target = "<";
    ConvertWideString(ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf8, u"", target, false);
    EXPECT_EQ(target, "<");
    ConvertWideString(ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf8, u"a\u20AC\U0001F600", target, false);
    EXPECT_EQ(target, "<a\u20AC\U0001F600");
    const unsigned short units[] = {'b', 0x20AC};
    ConvertWideBuffer(ZOT::kCharsetUtf16Le, ZOT::kCharsetWindows1252, units, 2, target, false);
    EXPECT_EQ(target, "<a\u20AC\U0001F600b\x80");
}

TEST(ConvertWide, LongTextsAndLoneSurrogates) {
    std::u16string source;
    std::string expected;
    for (int i = 0; i < 5000; ++i) {
        source += u"\U0001F600\u20AC";
        expected += "\U0001F600\u20AC";
    }
    source += u'\xD83D';  // the beginning of a character
    std::string target;
    ConvertWideString(ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf8, source, target, false);
    EXPECT_EQ(target, expected);
}

}  // namespace
}  // namespace QuillNS
