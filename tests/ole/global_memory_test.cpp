#include <cstring>

#include <gtest/gtest.h>
#include <ole/automation.h>

namespace {

TEST(GlobalMemory, AMoveableBlockKeepsItsHandleAndContentWhileItGrows) {
    HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, 5);
    std::memcpy(GlobalLock(memory), "tide", 5);
    EXPECT_FALSE(GlobalUnlock(memory));
    ASSERT_EQ(GlobalReAlloc(memory, 100000, GMEM_MOVEABLE | GMEM_ZEROINIT), memory);
    EXPECT_GE(GlobalSize(memory), 100000u);
    const char* const bytes = static_cast<const char*>(GlobalLock(memory));
    EXPECT_STREQ(bytes, "tide");
    EXPECT_EQ(bytes[99999], 0);
    GlobalUnlock(memory);
    EXPECT_EQ(GlobalFree(memory), nullptr);
}

TEST(GlobalMemory, LocksAreCounted) {
    HGLOBAL const memory = GlobalAlloc(GHND, 16);
    void* const bytes = GlobalLock(memory);
    EXPECT_EQ(GlobalLock(memory), bytes);
    EXPECT_TRUE(GlobalUnlock(memory));
    EXPECT_FALSE(GlobalUnlock(memory));
    GlobalFree(memory);
}

TEST(GlobalMemory, AFixedBlockIsItsOwnAddress) {
    HGLOBAL const memory = GlobalAlloc(GPTR, 16);
    EXPECT_EQ(GlobalLock(memory), memory);
    EXPECT_GE(GlobalSize(memory), 16u);
    EXPECT_EQ(static_cast<const char*>(memory)[15], 0);
    std::memcpy(memory, "tide", 5);
    HGLOBAL const grown = GlobalReAlloc(memory, 100000, GMEM_MOVEABLE);
    EXPECT_STREQ(static_cast<const char*>(grown), "tide");
    GlobalFree(grown);
}

TEST(GlobalMemory, AMoveableBlockWithoutBytesHasNoAddress) {
    HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, 0);
    ASSERT_NE(memory, nullptr);
    EXPECT_EQ(GlobalLock(memory), nullptr);
    GlobalFree(memory);
}

}  // namespace
