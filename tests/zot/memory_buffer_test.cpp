#include <algorithm>
#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <zot/memory_buffer.h>
#include <zot/stream_parser.h>

namespace {

using ZOT::kFromBegin;
using ZOT::kFromCurrent;
using ZOT::kFromEnd;
using ZOT::kWholeStream;
using ZOTFile::MemoryBuffer;

void Put(MemoryBuffer& buffer, const std::string& bytes) {
    EXPECT_EQ(buffer.vPut(bytes.data(), static_cast<unsigned int>(bytes.size())), bytes.size());
}

// What is left to read.
std::string Rest(MemoryBuffer& buffer) {
    std::string rest;
    buffer.Copy(rest, kWholeStream);
    return rest;
}

TEST(MemoryBuffer, ReadsAndWritesAtSeparatePositions) {
    MemoryBuffer buffer(4);
    Put(buffer, "abc");
    Put(buffer, std::string(100, 'x'));
    char got[3] = {};
    EXPECT_EQ(buffer.Get(got, 3), 3u);
    EXPECT_EQ(std::string(got, 3), "abc");
    EXPECT_TRUE(buffer.SeekP(1, kFromBegin));
    Put(buffer, "BC");
    EXPECT_EQ(buffer.vSize(), 103u);
    EXPECT_TRUE(buffer.SeekG(0, kFromEnd));
    buffer.vClearEnd();  // the read position stays inside
    EXPECT_TRUE(buffer.vEndOfFile());
    EXPECT_EQ(buffer.vTellG(), 3u);
    EXPECT_EQ(buffer.vTellP(), 3u);
    EXPECT_TRUE(buffer.SeekG(0, kFromBegin));
    EXPECT_EQ(Rest(buffer), "aBC");
    EXPECT_EQ(buffer.Get(got, 1), 0u);
    EXPECT_FALSE(buffer.SafeGet(got, 1));
    buffer.vClear();
    EXPECT_EQ(buffer.vSize(), 0u);
    Put(buffer, "new");
    buffer.vClearMemory();
    Put(buffer, "newer");
    EXPECT_EQ(Rest(buffer), "newer");
}

TEST(MemoryBuffer, SeeksInsideOnly) {
    MemoryBuffer buffer(16);
    Put(buffer, "0123456789");
    struct Case {
        int offset;
        ZOT::Direction from;
        bool moves;
        unsigned int position;
    };
    const Case cases[] = {
        {3, kFromBegin, true, 3},    {-1, kFromBegin, false, 3}, {11, kFromBegin, false, 3},
        {7, kFromCurrent, true, 10}, {-10, kFromEnd, true, 0},   {-11, kFromEnd, false, 0},
        {1, kFromEnd, false, 0},     {0, kFromEnd, true, 10},    {-4, kFromCurrent, true, 6},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(buffer.SeekG(c.offset, c.from), c.moves) << c.offset;
        EXPECT_EQ(buffer.vTellG(), c.position) << c.offset;
    }
    EXPECT_EQ(buffer.vTellP(), 10u);
}

TEST(MemoryBuffer, RefusesWhatA32BitSizeCannotHold) {
    MemoryBuffer buffer(16);
    Put(buffer, "0123456789");
    const char byte = 'x';
    EXPECT_EQ(buffer.vPut(&byte, kWholeStream), 0u);
    EXPECT_EQ(buffer.vPut(&byte, kWholeStream - 9), 0u);
    EXPECT_EQ(buffer.vSize(), 10u);
}

TEST(MemoryBuffer, AppendsItsOwnContent) {
    MemoryBuffer buffer(16);
    Put(buffer, "0123456789");
    EXPECT_EQ(buffer.Copy(buffer, kWholeStream), 10u);
    EXPECT_EQ(Rest(buffer), "0123456789");
    EXPECT_EQ(buffer.vSize(), 20u);
}

TEST(MemoryBuffer, ViewReadsInPlaceAndTakesNothing) {
    const std::string bytes = "view";
    MemoryBuffer view(bytes.data(), 4, 0);
    EXPECT_EQ(view.vPut("x", 1), 0u);
    EXPECT_FALSE(view.SafePut("x", 1));
    EXPECT_EQ(Rest(view), "view");
    MemoryBuffer nothing(nullptr, 0, 0);
    EXPECT_TRUE(nothing.vEndOfFile());
    EXPECT_EQ(Rest(nothing), "");
}

TEST(MemoryBuffer, HoldsUnitsLowByteFirst) {
    MemoryBuffer buffer(16);
    EXPECT_EQ(ZOT::Copy(buffer, u"\u20AC1", kWholeStream), 4u);
    EXPECT_EQ(ZOT::Copy(buffer, u"23", 1), 2u);
    Put(buffer, "odd");
    std::u16string text = u"=";
    EXPECT_EQ(buffer.Copy(text, kWholeStream), 8u);
    EXPECT_EQ(text, u"=\u20AC12\u646F");
    EXPECT_EQ(Rest(buffer), "d");
    EXPECT_TRUE(buffer.SeekG(0, kFromBegin));
    EXPECT_EQ(Rest(buffer).substr(0, 2), "\xAC\x20");
}

// Says nothing about its size and gives a few bytes at a time.
class Trickle : public MemoryBuffer {
public:
    using MemoryBuffer::MemoryBuffer;
    unsigned int vSize() const override { return 0; }
    unsigned int vGet(void* bytes, unsigned int count) override {
        return MemoryBuffer::vGet(bytes, std::min(count, 7u));
    }
};

TEST(BinaryStreamParser, ReadsToTheEndAndPads) {
    for (const std::size_t size : {0u, 1u, 4095u, 4096u, 100000u}) {
        const std::string bytes(size, 'z');
        MemoryBuffer view(bytes.data(), static_cast<unsigned int>(size), 0);
        Trickle trickle(bytes.data(), static_cast<unsigned int>(size), 0);
        for (ZOT::BinaryStreamBuf* stream :
             {static_cast<ZOT::BinaryStreamBuf*>(&view), static_cast<ZOT::BinaryStreamBuf*>(&trickle)}) {
            ZOTFile::BinaryStreamParser reader(*stream);
            ASSERT_TRUE(reader.ReadAll(4));
            ASSERT_EQ(reader.Size(), size);
            EXPECT_EQ(std::string(reinterpret_cast<const char*>(reader.Data()), size + 4),
                      bytes + std::string(4, '\0'));
            unsigned char* const mine = reader.Detach();
            EXPECT_EQ(reader.Size(), 0u);
            ZOT::PoolFree(mine);
        }
    }
}

}  // namespace
