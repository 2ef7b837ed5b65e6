#include <gtest/gtest.h>
#include <quill/exports.h>

#include "api/loaded_library.h"
#include "ole/ole_text.h"

namespace {

constexpr const char* kLibrary = QUILL_LIBRARY;

// One round of a host: load, call, unload.
void Round() {
    const LoadedLibrary library(kLibrary);
    ASSERT_TRUE(library.Loaded()) << "cannot load " << kLibrary;
    const auto beautify = library.Find<decltype(&GetBeautifiedTextFromString)>("GetBeautifiedTextFromString");
    EXPECT_NE(library.Find<void*>("GetBeautifiedText"), nullptr);
    VARIANT input, text, documentText;
    for (VARIANT* each : {&input, &text, &documentText}) VariantInit(each);
    input.vt = VT_BSTR;
    input.bstrVal = NewString(u"tide and moon");
    EXPECT_EQ(beautify(&input, &text, &documentText), S_OK);
    ASSERT_EQ(TextOf(text.bstrVal), u"tide and moon\n");
    for (VARIANT* each : {&input, &text, &documentText}) VariantClear(each);
}

TEST(Load, AHundredRoundsLeaveNothing) {
    for (int i = 0; i < 10; ++i) Round();  // the loader and the standard library keep some memory for later
    const std::size_t before = LoadedLibrary::HeapInUse();
    for (int i = 0; i < 100; ++i) {
        ASSERT_NO_FATAL_FAILURE(Round());
        ASSERT_FALSE(LoadedLibrary::StaysLoaded(kLibrary));
    }
    EXPECT_LT(LoadedLibrary::HeapInUse(), before + 100 * sizeof(void*));
}

}  // namespace
