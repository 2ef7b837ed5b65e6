#include <cstddef>

#include <gtest/gtest.h>

#include "ole/ole_text.h"

namespace {

static_assert(sizeof(VARIANT) == 24 && offsetof(VARIANT, vt) == 0 && offsetof(VARIANT, bstrVal) == 8);
static_assert(sizeof(DECIMAL) == 16 && sizeof(VARIANT_BOOL) == 2);

VARIANT StringVariant(const std::u16string& text) {
    VARIANT variant;
    VariantInit(&variant);
    variant.vt = VT_BSTR;
    variant.bstrVal = NewString(text);
    return variant;
}

TEST(Variant, ClearsToEmpty) {
    VARIANT variant = StringVariant(u"tide");
    EXPECT_EQ(VariantClear(&variant), S_OK);
    EXPECT_EQ(variant.vt, VT_EMPTY);
    EXPECT_EQ(VariantClear(&variant), S_OK);
}

TEST(Variant, CopiesOwnTheirStringsNulsIncluded) {
    VARIANT source = StringVariant(std::u16string(u"a\0b", 3));
    VARIANT copy = StringVariant(u"old");
    EXPECT_EQ(VariantCopy(&copy, &source), S_OK);
    EXPECT_NE(copy.bstrVal, source.bstrVal);
    VariantClear(&source);
    EXPECT_EQ(TextOf(copy.bstrVal), std::u16string(u"a\0b", 3));
    EXPECT_EQ(VariantCopy(&copy, &copy), S_OK);
    EXPECT_EQ(copy.vt, VT_BSTR);
    VariantClear(&copy);
}

TEST(Variant, ReferencesOwnNothing) {
    BSTR string = SysAllocString(OLESTR("tide"));
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_BYREF | VT_BSTR;
    reference.pbstrVal = &string;
    VARIANT copy;
    VariantInit(&copy);
    EXPECT_EQ(VariantCopy(&copy, &reference), S_OK);
    EXPECT_EQ(copy.pbstrVal, &string);
    VariantClear(&copy);
    VariantClear(&reference);
    EXPECT_EQ(TextOf(string), u"tide");
    SysFreeString(string);
}

TEST(Variant, OwnsItsArrayAndReference) {
    VARIANT array;
    VariantInit(&array);
    array.vt = VT_ARRAY | VT_UI1;
    array.parray = SafeArrayCreateVector(VT_UI1, 0, 3);
    VARIANT copy;
    VariantInit(&copy);
    EXPECT_EQ(VariantCopy(&copy, &array), S_OK);
    EXPECT_NE(copy.parray, array.parray);
    VariantClear(&copy);

    SafeArrayLock(array.parray);
    EXPECT_EQ(VariantClear(&array), DISP_E_ARRAYISLOCKED);
    SafeArrayUnlock(array.parray);
    array.vt = VT_ARRAY | VT_UI1;
    EXPECT_EQ(VariantClear(&array), S_OK);

    IStream* stream = nullptr;
    CreateStreamOnHGlobal(nullptr, TRUE, &stream);
    VARIANT reference;
    VariantInit(&reference);
    reference.vt = VT_UNKNOWN;
    reference.punkVal = stream;
    EXPECT_EQ(VariantCopy(&copy, &reference), S_OK);
    VariantClear(&copy);
    stream->AddRef();
    VariantClear(&reference);
    EXPECT_EQ(stream->Release(), 0u);
}

TEST(Variant, RefusesTypesThatItCannotHave) {
    for (const int type :
         {15, 24, VT_VECTOR | VT_I4, VT_RESERVED | VT_I4, VT_ARRAY | VT_EMPTY, VT_BYREF | VT_NULL}) {
        VARIANT variant;
        VariantInit(&variant);
        variant.vt = static_cast<VARTYPE>(type);
        EXPECT_EQ(VariantClear(&variant), DISP_E_BADVARTYPE) << type;
        EXPECT_EQ(variant.vt, type);
    }
}

}  // namespace
