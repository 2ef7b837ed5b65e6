#include <gtest/gtest.h>

#include "ole/ole_text.h"

namespace {

TEST(Bstr, KeepsItsLengthInFrontAndANulBehind) {
    BSTR const string = SysAllocString(OLESTR("tide"));
    EXPECT_EQ(SysStringLen(string), 4u);
    EXPECT_EQ(SysStringByteLen(string), 8u);
    EXPECT_EQ(reinterpret_cast<const ULONG*>(string)[-1], 8u);
    EXPECT_EQ(string[4], OLECHAR{0});
    SysFreeString(string);
}

TEST(Bstr, HoldsNulsWhenTheLengthIsGiven) {
    BSTR const counted = SysAllocStringLen(OLESTR("a\0b"), 3);
    EXPECT_EQ(TextOf(counted), std::u16string(u"a\0b", 3));
    BSTR const cut = SysAllocString(counted);
    EXPECT_EQ(TextOf(cut), u"a");
    SysFreeString(cut);
    SysFreeString(counted);
}

TEST(Bstr, MayHoldAnOddNumberOfBytes) {
    BSTR const string = SysAllocStringByteLen("abc", 3);
    EXPECT_EQ(SysStringByteLen(string), 3u);
    EXPECT_EQ(SysStringLen(string), 1u);
    SysFreeString(string);
}

TEST(Bstr, NullIsAStringWithoutUnitsAndEmptyIsNotNull) {
    EXPECT_EQ(SysAllocString(nullptr), nullptr);
    EXPECT_EQ(SysStringLen(nullptr), 0u);
    SysFreeString(nullptr);
    BSTR const empty = SysAllocString(OLESTR(""));
    ASSERT_NE(empty, nullptr);
    EXPECT_EQ(SysStringLen(empty), 0u);
    EXPECT_EQ(empty[0], OLECHAR{0});
    SysFreeString(empty);
}

TEST(Bstr, ALengthThatDoesNotFitGivesNull) {
    EXPECT_EQ(SysAllocStringLen(nullptr, 0x80000000u), nullptr);
    EXPECT_EQ(SysAllocStringLen(nullptr, 0xFFFFFFFFu), nullptr);
}

}  // namespace
