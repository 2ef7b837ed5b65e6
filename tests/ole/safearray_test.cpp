#include <cstddef>

#include <gtest/gtest.h>

#include "ole/ole_text.h"

namespace {

static_assert(offsetof(SAFEARRAY, cbElements) == 4 && offsetof(SAFEARRAY, pvData) == 16 &&
              offsetof(SAFEARRAY, rgsabound) == 24);

SAFEARRAY* Strings(std::initializer_list<const OLECHAR*> texts, LONG lowerBound) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_BSTR, lowerBound, static_cast<ULONG>(texts.size()));
    LONG index = lowerBound;
    for (const OLECHAR* text : texts) {
        BSTR const string = SysAllocString(text);
        EXPECT_EQ(SafeArrayPutElement(array, &index, string), S_OK);
        SysFreeString(string);
        ++index;
    }
    return array;
}

TEST(SafeArray, TellsItsShape) {
    SAFEARRAYBOUND bounds[] = {{2, 5}, {3, -1}};
    SAFEARRAY* const array = SafeArrayCreate(VT_I4, 2, bounds);
    EXPECT_EQ(SafeArrayGetDim(array), 2u);
    EXPECT_EQ(SafeArrayGetElemsize(array), 4u);
    struct Case {
        UINT dimension;
        LONG lower, upper;
    };
    for (const Case& c : {Case{1, 5, 6}, Case{2, -1, 1}}) {
        LONG lower = 0, upper = 0;
        EXPECT_EQ(SafeArrayGetLBound(array, c.dimension, &lower), S_OK);
        EXPECT_EQ(SafeArrayGetUBound(array, c.dimension, &upper), S_OK);
        EXPECT_EQ(lower, c.lower);
        EXPECT_EQ(upper, c.upper);
    }
    LONG bound = 0;
    EXPECT_EQ(SafeArrayGetLBound(array, 0, &bound), DISP_E_BADINDEX);
    EXPECT_EQ(SafeArrayGetUBound(array, 3, &bound), DISP_E_BADINDEX);
    VARTYPE type = VT_EMPTY;
    EXPECT_EQ(SafeArrayGetVartype(array, &type), S_OK);
    EXPECT_EQ(type, VT_I4);
    SafeArrayDestroy(array);
    EXPECT_EQ(SafeArrayGetDim(nullptr), 0u);
}

TEST(SafeArray, TheFirstIndexRunsFastest) {
    SAFEARRAYBOUND bounds[] = {{2, 0}, {3, 10}};
    SAFEARRAY* const array = SafeArrayCreate(VT_I4, 2, bounds);
    for (LONG i = 0; i < 2; ++i) {
        for (LONG j = 10; j < 13; ++j) {
            LONG indices[] = {i, j};
            LONG value = 100 * i + j;
            EXPECT_EQ(SafeArrayPutElement(array, indices, &value), S_OK);
        }
    }
    void* data = nullptr;
    ASSERT_EQ(SafeArrayAccessData(array, &data), S_OK);
    const LONG expected[] = {10, 110, 11, 111, 12, 112};
    for (int i = 0; i < 6; ++i) EXPECT_EQ(static_cast<const LONG*>(data)[i], expected[i]) << i;
    SafeArrayUnaccessData(array);
    LONG outside[] = {2, 10};
    LONG value = 0;
    EXPECT_EQ(SafeArrayGetElement(array, outside, &value), DISP_E_BADINDEX);
    SafeArrayDestroy(array);
}

TEST(SafeArray, OwnsCopiesOfItsStrings) {
    SAFEARRAY* const array = Strings({OLESTR("tide"), OLESTR("moon")}, 1);
    LONG index = 2;
    BSTR string = nullptr;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &string), S_OK);
    EXPECT_EQ(TextOf(string), u"moon");
    EXPECT_EQ(SafeArrayPutElement(array, &index, nullptr), S_OK);
    EXPECT_EQ(TextOf(string), u"moon");
    SysFreeString(string);
    EXPECT_EQ(SafeArrayGetElement(array, &index, &string), S_OK);
    EXPECT_EQ(SysStringLen(string), 0u);
    SysFreeString(string);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, CopiesAreDeep) {
    SAFEARRAY* const array = Strings({OLESTR("tide")}, -3);
    SAFEARRAY* copy = nullptr;
    ASSERT_EQ(SafeArrayCopy(array, &copy), S_OK);
    SafeArrayDestroy(array);
    LONG index = -3;
    BSTR string = nullptr;
    EXPECT_EQ(SafeArrayGetElement(copy, &index, &string), S_OK);
    EXPECT_EQ(TextOf(string), u"tide");
    SysFreeString(string);
    SafeArrayDestroy(copy);
}

TEST(SafeArray, StaysWhileItIsLocked) {
    SAFEARRAY* const array = Strings({OLESTR("tide")}, 0);
    void* data = nullptr;
    EXPECT_EQ(SafeArrayAccessData(array, &data), S_OK);
    EXPECT_EQ(SafeArrayLock(array), S_OK);
    EXPECT_EQ(array->cLocks, 2u);
    EXPECT_EQ(SafeArrayDestroy(array), DISP_E_ARRAYISLOCKED);
    EXPECT_EQ(TextOf(*static_cast<BSTR*>(data)), u"tide");
    EXPECT_EQ(SafeArrayUnlock(array), S_OK);
    EXPECT_EQ(SafeArrayUnaccessData(array), S_OK);
    EXPECT_EQ(SafeArrayUnlock(array), E_UNEXPECTED);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

TEST(SafeArray, TakesAsManyLocksAsFitIntoSixteenBits) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_UI1, 0, 1);
    array->cLocks = 0xFFFF;
    void* data = nullptr;
    EXPECT_EQ(SafeArrayAccessData(array, &data), E_UNEXPECTED);
    EXPECT_EQ(array->cLocks, 0xFFFFu);
    array->cLocks = 0;
    SafeArrayDestroy(array);
}

TEST(SafeArray, CannotBeMadeOfWhatIsNoElement) {
    EXPECT_EQ(SafeArrayCreateVector(VT_EMPTY, 0, 1), nullptr);
    EXPECT_EQ(SafeArrayCreateVector(VT_ARRAY | VT_BSTR, 0, 1), nullptr);
}

TEST(SafeArray, HoldsVariantsThatOwnStrings) {
    SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, 2);
    VARIANT value;
    VariantInit(&value);
    value.vt = VT_BSTR;
    value.bstrVal = SysAllocString(OLESTR("tide"));
    for (LONG index = 0; index < 2; ++index) EXPECT_EQ(SafeArrayPutElement(array, &index, &value), S_OK);
    VariantClear(&value);
    LONG index = 1;
    EXPECT_EQ(SafeArrayGetElement(array, &index, &value), S_OK);
    EXPECT_EQ(TextOf(value.bstrVal), u"tide");
    VariantClear(&value);
    EXPECT_EQ(SafeArrayDestroy(array), S_OK);
}

}  // namespace
