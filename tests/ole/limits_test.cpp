#include <cstddef>

#include <gtest/gtest.h>
#include <ole/automation.h>

namespace {

TEST(SafeArrayLimits, SizesThatOverflowGiveNoArray) {
    SAFEARRAYBOUND square[] = {{0xFFFFFFFFu, 0}, {0xFFFFFFFFu, 0}};
    EXPECT_EQ(SafeArrayCreate(VT_VARIANT, 2, square), nullptr);
    SAFEARRAYBOUND cube[] = {{0x10000u, 0}, {0x1000000u, 0}, {0x1000000u, 0}};
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 3, cube), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 0, cube), nullptr);
    EXPECT_EQ(SafeArrayCreate(VT_UI1, 65536, cube), nullptr);
}

TEST(MemoryStreamLimits, AWriteFarBehindTheEndIsRefused) {
    IStream* stream = nullptr;
    ASSERT_EQ(CreateStreamOnHGlobal(nullptr, TRUE, &stream), S_OK);
    LARGE_INTEGER far;
    far.QuadPart = 0x7FFFFFFFFFFFFFFF;
    for (int i = 0; i < 2; ++i) {
        ASSERT_EQ(stream->Seek(far, STREAM_SEEK_CUR, nullptr), S_OK);
        EXPECT_EQ(stream->Write("x", 1, nullptr), STG_E_MEDIUMFULL);
    }
    far.QuadPart = 2;
    EXPECT_EQ(stream->Seek(far, STREAM_SEEK_CUR, nullptr), STG_E_INVALIDFUNCTION);
    STATSTG status;
    stream->Stat(&status, STATFLAG_NONAME);
    EXPECT_EQ(status.cbSize.QuadPart, 0u);
    EXPECT_EQ(stream->Release(), 0u);
}

TEST(GlobalMemoryLimits, ALockedBlockDoesNotMove) {
    HGLOBAL const memory = GlobalAlloc(GMEM_MOVEABLE, 8);
    GlobalLock(memory);
    EXPECT_EQ(GlobalReAlloc(memory, 1 << 20, GMEM_MOVEABLE), nullptr);
    EXPECT_EQ(GlobalReAlloc(memory, 4, GMEM_MOVEABLE), memory);
    EXPECT_EQ(GlobalSize(memory), 4u);
    EXPECT_EQ(GlobalAlloc(GMEM_FIXED, static_cast<SIZE_T>(-1)), nullptr);
    GlobalUnlock(memory);
    GlobalFree(memory);
}

}  // namespace
