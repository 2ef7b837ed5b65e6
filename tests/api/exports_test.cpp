#include <quill/exports.h>

#include <initializer_list>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "api/failing_new.h"
#include "api/fake_browser.h"
#include "api/fake_strings.h"
#include "failing_pool.h"
#include "ole/ole_text.h"

namespace {

// A variant that is cleared at the end.
class Variant {
public:
    Variant() { VariantInit(&variant_); }
    Variant(const Variant&) = delete;
    Variant& operator=(const Variant&) = delete;
    ~Variant() { VariantClear(&variant_); }

    VARIANT* operator->() { return &variant_; }
    VARIANT* Get() { return &variant_; }

private:
    VARIANT variant_;
};

void SetString(Variant& variant, const std::u16string& text) {
    VariantClear(variant.Get());
    variant->vt = VT_BSTR;
    variant->bstrVal = NewString(text);
}

void Put(SAFEARRAY* array, LONG index, const std::u16string& text) {
    BSTR const string = NewString(text);
    SafeArrayPutElement(array, &index, string);
    SysFreeString(string);
}

void SetStrings(Variant& variant, std::initializer_list<std::u16string> texts, LONG lowerBound = 0) {
    VariantClear(variant.Get());
    variant->vt = VT_ARRAY | VT_BSTR;
    variant->parray = SafeArrayCreateVector(VT_BSTR, lowerBound, static_cast<ULONG>(texts.size()));
    LONG index = lowerBound;
    for (const std::u16string& text : texts) Put(variant->parray, index++, text);
}

// The outputs before every call; "untouched" in a dump.
constexpr LONG kUntouched = 4711;

std::u16string Dump(Variant& output) {
    switch (output->vt) {
        case VT_BSTR: return TextOf(output->bstrVal);
        case VT_I4: return output->lVal == kUntouched ? u"untouched" : u"another number";
        case VT_ERROR: return output->scode == E_OUTOFMEMORY ? u"out of memory" : u"another error";
        default: return u"another type";
    }
}

class FromString : public ::testing::Test {
protected:
    void SetUp() override { strings_ = LiveStrings(); }

    HRESULT Send() {
        for (Variant* output : {&text_, &documentText_}) {
            VariantClear(output->Get());
            (*output)->vt = VT_I4;
            (*output)->lVal = kUntouched;
        }
        return GetBeautifiedTextFromString(input_.Get(), text_.Get(), documentText_.Get());
    }
    void ExpectUntouched() {
        EXPECT_EQ(Dump(text_), u"untouched");
        EXPECT_EQ(Dump(documentText_), u"untouched");
    }
    void ExpectTexts(const std::u16string& text, const std::u16string& documentText) {
        EXPECT_EQ(Dump(text_), text);
        EXPECT_EQ(Dump(documentText_), documentText);
    }

    int strings_ = 0;
    Variant input_;
    Variant text_;
    Variant documentText_;
};

TEST_F(FromString, AStringIsAPage) {
    struct Case {
        std::u16string page, text;
    };
    const Case cases[] = {
        {u"tide and moon", u"tide and moon"},
        {u"caf\u00E9 \U0001F30A", u"caf\u00E9 \U0001F30A"},
        {std::u16string(u"tide\0moon", 9), u"tide"},
    };
    for (const Case& c : cases) {
        SetString(input_, c.page);
        EXPECT_EQ(Send(), S_OK);
        ExpectTexts(c.text + u"\n", c.text);

        BSTR string = NewString(c.page);
        VariantClear(input_.Get());
        input_->vt = VT_BSTR | VT_BYREF;
        input_->pbstrVal = &string;
        EXPECT_EQ(Send(), S_OK);
        ExpectTexts(c.text + u"\n", c.text);
        EXPECT_EQ(TextOf(string), c.page);
        SysFreeString(string);
    }
}

TEST_F(FromString, AStringWithoutTextLeavesTheOutputs) {
    for (const char16_t* page : {u"", u" ", u"<p></p>", u"<script>tide</script>"}) {
        SetString(input_, page);
        EXPECT_EQ(Send(), S_OK);
        ExpectUntouched();
    }
}

TEST_F(FromString, NoStringIsNoInput) {
    input_->vt = VT_BSTR;
    input_->bstrVal = nullptr;
    EXPECT_EQ(Send(), S_NO_INPUT);
    input_->vt = VT_BSTR | VT_BYREF;
    input_->pbstrVal = nullptr;
    EXPECT_EQ(Send(), S_NO_INPUT);
    SetStrings(input_, {u"", u"", std::u16string(u"\0tide", 5)});
    EXPECT_EQ(Send(), S_NO_INPUT);
    SetStrings(input_, {});
    EXPECT_EQ(Send(), S_NO_INPUT);
    ExpectUntouched();
}

TEST_F(FromString, StringsOfAnArrayAreOneDocument) {
    struct Case {
        std::initializer_list<std::u16string> pages;
        LONG lowerBound;
        std::u16string text, documentText;
    };
    const Case cases[] = {
        {{u"tide"}, 0, u"tide", u"tide"},
        {{u"tide", u"moon"}, 0, u"tide\nmoon", u"tide"},
        {{u"tide", u"moon"}, 1, u"tide\nmoon", u"tide"},
        {{u"tide", u"moon"}, -5, u"tide\nmoon", u"tide"},
        {{u"", u"tide", u"moon"}, 0, u"tide\nmoon", u"tide"},
        {{u"tide", u"", u"moon"}, 0, u"tide\nmoon", u"tide"},
        // The document text is the first page's alone, and may be empty.
        {{u"<script>", u"moon"}, 0, u"moon", u""},
    };
    for (const Case& c : cases) {
        SetStrings(input_, c.pages, c.lowerBound);
        EXPECT_EQ(Send(), S_OK);
        ExpectTexts(c.text + u"\n", c.documentText);
        EXPECT_EQ(input_->parray->cLocks, 0u);

        Variant reference;
        reference->vt = VT_BYREF | VT_ARRAY | VT_BSTR;
        reference->pparray = &input_->parray;
        EXPECT_EQ(GetBeautifiedTextFromString(reference.Get(), text_.Get(), documentText_.Get()), S_OK);
        ExpectTexts(c.text + u"\n", c.documentText);
    }
}

TEST_F(FromString, VariantsOfAnArrayThatAreNoStringsArePassedOver) {
    SAFEARRAY* array = SafeArrayCreateVector(VT_VARIANT, 1, 5);
    VARIANT* elements = nullptr;
    SafeArrayAccessData(array, reinterpret_cast<void**>(&elements));
    BSTR moon = NewString(u"moon");
    elements[0].vt = VT_I4;
    elements[1].vt = VT_BSTR;
    elements[1].bstrVal = NewString(u"tide");
    elements[2].vt = VT_BSTR | VT_BYREF;
    elements[2].pbstrVal = nullptr;
    elements[3].vt = VT_BSTR | VT_BYREF;
    elements[3].pbstrVal = &moon;
    elements[4].vt = VT_ARRAY | VT_BSTR;
    SafeArrayUnaccessData(array);
    input_->vt = VT_ARRAY | VT_VARIANT;
    input_->parray = array;
    EXPECT_EQ(Send(), S_OK);
    ExpectTexts(u"tide\nmoon\n", u"tide");

    Variant reference;
    reference->vt = VT_BYREF | VT_ARRAY | VT_VARIANT;
    reference->pparray = &array;
    EXPECT_EQ(GetBeautifiedTextFromString(reference.Get(), text_.Get(), documentText_.Get()), S_OK);
    ExpectTexts(u"tide\nmoon\n", u"tide");
    SysFreeString(moon);
}

TEST_F(FromString, RefusesOtherTypes) {
    for (const int type : {+VT_EMPTY, +VT_NULL, +VT_I4, +VT_UNKNOWN, VT_BYREF | VT_VARIANT, VT_BYREF | VT_I4,
                           VT_ARRAY | VT_BSTR, VT_ARRAY | VT_VARIANT, VT_BYREF | VT_ARRAY | VT_BSTR}) {
        VARIANT input = {};
        input.vt = static_cast<VARTYPE>(type);  // the value is null
        EXPECT_EQ(GetBeautifiedTextFromString(&input, text_.Get(), documentText_.Get()), E_UNSUPPORTED_INPUT)
            << type;
    }
    SAFEARRAY* none = nullptr;
    VARIANT input = {};
    input.vt = VT_BYREF | VT_ARRAY | VT_BSTR;
    input.pparray = &none;
    EXPECT_EQ(GetBeautifiedTextFromString(&input, text_.Get(), documentText_.Get()), E_UNSUPPORTED_INPUT);
}

TEST_F(FromString, RefusesOtherArrays) {
    SAFEARRAYBOUND bounds[] = {{1, 0}, {1, 0}};
    input_->vt = VT_ARRAY | VT_BSTR;
    input_->parray = SafeArrayCreate(VT_BSTR, 2, bounds);
    LONG first[] = {0, 0};
    BSTR const string = NewString(u"tide");
    SafeArrayPutElement(input_->parray, first, string);
    SysFreeString(string);
    EXPECT_EQ(Send(), E_UNSUPPORTED_INPUT);
    VariantClear(input_.Get());

    input_->vt = VT_ARRAY | VT_UI1;
    input_->parray = SafeArrayCreateVector(VT_UI1, 0, 8);
    EXPECT_EQ(Send(), E_UNSUPPORTED_INPUT);
    input_->vt = VT_ARRAY | VT_BSTR;  // a lie
    EXPECT_EQ(Send(), E_UNSUPPORTED_INPUT);
    input_->vt = VT_ARRAY | VT_UI1;
    ExpectUntouched();
}

TEST_F(FromString, RefusesAnArrayThatCannotBeLocked) {
    SetStrings(input_, {u"tide"});
    input_->parray->cLocks = 0xFFFF;
    EXPECT_EQ(Send(), E_UNSUPPORTED_INPUT);
    EXPECT_EQ(input_->parray->cLocks, 0xFFFFu);
    input_->parray->cLocks = 0;
    ExpectUntouched();
}

TEST_F(FromString, RefusesNullPointers) {
    SetString(input_, u"tide");
    EXPECT_EQ(GetBeautifiedTextFromString(nullptr, text_.Get(), documentText_.Get()), E_INVALIDARG);
    EXPECT_EQ(GetBeautifiedTextFromString(input_.Get(), nullptr, documentText_.Get()), E_INVALIDARG);
    EXPECT_EQ(GetBeautifiedTextFromString(input_.Get(), text_.Get(), nullptr), E_INVALIDARG);
    EXPECT_EQ(text_->vt, VT_EMPTY);
    EXPECT_EQ(documentText_->vt, VT_EMPTY);
}

TEST_F(FromString, OutputsAreClearedAndInputMayBeOutput) {
    SetString(text_, u"old");
    SetString(documentText_, u"old");
    SetString(input_, u"tide");
    EXPECT_EQ(GetBeautifiedTextFromString(input_.Get(), input_.Get(), documentText_.Get()), S_OK);
    EXPECT_EQ(Dump(input_), u"tide\n");
    EXPECT_EQ(Dump(documentText_), u"tide");
    for (Variant* each : {&input_, &text_, &documentText_}) VariantClear(each->Get());
    EXPECT_EQ(LiveStrings(), strings_);
}

TEST_F(FromString, AnOutputThatCannotBeClearedKeepsWhatItHeld) {
    SetString(input_, u"tide");
    SAFEARRAY* const held = SafeArrayCreateVector(VT_UI1, 0, 1);
    SafeArrayLock(held);
    text_->vt = VT_ARRAY | VT_UI1;
    text_->parray = held;
    EXPECT_EQ(GetBeautifiedTextFromString(input_.Get(), text_.Get(), documentText_.Get()), S_OK);
    EXPECT_EQ(text_->parray, held);
    EXPECT_EQ(Dump(documentText_), u"tide");
    SafeArrayUnlock(held);
    VariantInit(text_.Get());
    SafeArrayDestroy(held);
}

TEST_F(FromString, WithoutMemoryForTheResultTheOutputIsAnError) {
    SetString(input_, u"tide");
    if (!LetNewStringsFail(true)) GTEST_SKIP() << "strings cannot be made to fail on this platform";
    EXPECT_EQ(Send(), S_OK);
    LetNewStringsFail(false);
    ExpectTexts(u"out of memory", u"out of memory");
}

TEST_F(FromString, NothingIsThrownWhicheverNewFails) {
    SetStrings(input_, {u"tide and moon, tide and moon, tide and moon", u"moon"});
    for (int n = 1;; ++n) {
        HRESULT result;
        bool happened;
        {
            const FailNthNew failing(n);
            result = Send();
            happened = failing.Happened();
        }
        EXPECT_EQ(result, S_OK) << n;
        EXPECT_EQ(input_->parray->cLocks, 0u) << n;
        if (!happened) break;
        ASSERT_LT(n, 10000);
    }
    EXPECT_EQ(text_->vt, VT_BSTR);
}

// An array is read whole or not at all: a page that found no room must not leave its place to the next one.
TEST_F(FromString, WithoutRoomForThePagesThereIsNoText) {
    SetStrings(input_, {u"tide and moon", u"moon and tide"});
    bool outOfMemory = false;
    for (unsigned int n = 1;; ++n) {
        HRESULT result;
        bool happened;
        {
            const QuillNS::FailFromNthAllocation failing(n);
            result = Send();
            happened = failing.Happened();
        }
        EXPECT_EQ(result, S_OK) << n;
        if (!happened) break;
        EXPECT_TRUE(Dump(text_) == u"out of memory" || Dump(text_) == u"untouched") << n;
        outOfMemory |= Dump(text_) == u"out of memory";
    }
    EXPECT_TRUE(outOfMemory);
    ExpectTexts(u"tide and moon\nmoon and tide\n", u"tide and moon");
}

class FromBrowser : public ::testing::Test {
protected:
    void SetUp() override { strings_ = LiveStrings(); }
    void TearDown() override {
        VariantClear(text_.Get());
        EXPECT_EQ(world_.Live(), 0);
        EXPECT_EQ(LiveStrings(), strings_);
    }
    HRESULT Send(const FakePage& page) {
        IHTMLDocument2* const document = world_.Document(page);
        const HRESULT result = GetBeautifiedText(document, text_.Get());
        EXPECT_EQ(document->Release(), 0u);
        return result;
    }

    int strings_ = 0;
    FakeWorld world_;
    Variant text_;
};

FakePage Saved(const std::string& source) {
    FakePage page;
    page.source = source;
    return page;
}

TEST_F(FromBrowser, ReadsThePageAndItsFrames) {
    FakePage page = Saved("tide");
    page.embedded = {{true, true, Saved("moon")}};
    EXPECT_EQ(Send(page), S_OK);
    EXPECT_EQ(Dump(text_), u"tide\nmoon\n");
}

TEST_F(FromBrowser, APageWithoutTextGivesAnEmptyString) {
    SetString(text_, u"old");
    EXPECT_EQ(Send(Saved("<script>")), S_OK);
    EXPECT_EQ(text_->vt, VT_BSTR);
    EXPECT_EQ(Dump(text_), u"");
    EXPECT_EQ(Send(FakePage()), S_OK);
    EXPECT_EQ(Dump(text_), u"");
}

TEST_F(FromBrowser, PassesTheBrowsersFailureOn) {
    SetString(text_, u"old");
    FakePage page;
    page.body = u"tide";
    world_.FailNthCall(3);  // after the type and the question for the source: the body
    EXPECT_EQ(Send(page), E_FAIL);
    EXPECT_EQ(Dump(text_), u"old");
}

// A success that captured nothing is passed on like a failure.
TEST_F(FromBrowser, PassesOtherSuccessesOn) {
    SetString(text_, u"old");
    FakePage page;
    page.bodyResult = S_FALSE;
    EXPECT_EQ(Send(page), S_FALSE);
    page.body = u"tide";
    page.bodyResult = S_OK;
    page.markupResult = S_FALSE;
    EXPECT_EQ(Send(page), S_FALSE);
    EXPECT_EQ(Dump(text_), u"old");
}

TEST_F(FromBrowser, ACharacterSetThatCannotBeFoundOutIsAFailure) {
    SetString(text_, u"old");
    const FakePage page = Saved("tide");
    const QuillNS::FailFromNthAllocation failing(
        2);  // behind the room for child partitions: the page's bytes
    EXPECT_EQ(Send(page), E_CHARSET_UNDETECTED);
    EXPECT_EQ(Dump(text_), u"old");
}

TEST_F(FromBrowser, RefusesNullPointers) {
    EXPECT_EQ(GetBeautifiedText(nullptr, text_.Get()), E_INVALIDARG);
    const FakePage page = Saved("tide");
    IHTMLDocument2* const document = world_.Document(page);
    EXPECT_EQ(GetBeautifiedText(document, nullptr), E_INVALIDARG);
    document->Release();
}

// The body's markup, and sources that say their encoding, one in a frame of the other.
std::vector<FakePage> CapturedPages() {
    FakePage body;
    body.body = u"tide and moon, tide and moon, tide and moon";
    FakePage page = Saved(std::string("\xFF\xFE<\0p\0>\0t\0i\0d\0e\0", 16));
    page.embedded = {{true, true, Saved("\xEF\xBB\xBF<p>sun")}};
    return {body, page};
}

// Encodings that nobody says are left out here: who finds them out may keep memory when a `new` of its own
// fails.
TEST_F(FromBrowser, NothingIsThrownWhicheverNewFails) {
    for (const FakePage& page : CapturedPages()) {
        IHTMLDocument2* const document = world_.Document(page);
        for (int n = 1;; ++n) {
            HRESULT result;
            bool happened;
            {
                const FailNthNew failing(n);
                result = GetBeautifiedText(document, text_.Get());
                happened = failing.Happened();
            }
            EXPECT_EQ(result, S_OK) << n;
            if (!happened) break;
            ASSERT_LT(n, 10000);
        }
        EXPECT_EQ(Dump(text_).substr(0, 4), u"tide");
        document->Release();
    }
}

TEST_F(FromBrowser, NothingIsLeftBehindWhicheverAllocationFails) {
    std::vector<FakePage> pages = CapturedPages();
    pages.push_back(Saved("tide \x81\xFF"));
    for (const FakePage& page : pages) {
        IHTMLDocument2* const document = world_.Document(page);
        for (unsigned int n = 1;; ++n) {
            const unsigned int live = QuillNS::LiveAllocations();
            SetString(text_, u"old");
            HRESULT result;
            bool happened;
            {
                const QuillNS::FailFromNthAllocation failing(n);
                result = GetBeautifiedText(document, text_.Get());
                happened = failing.Happened();
            }
            EXPECT_EQ(QuillNS::LiveAllocations(), live) << n;
            const std::u16string text = Dump(text_);
            if (result == S_OK) {
                EXPECT_TRUE(text == u"" || text.starts_with(u"tide")) << n;
            } else {
                EXPECT_EQ(result, E_CHARSET_UNDETECTED) << n;
                EXPECT_EQ(text, u"old") << n;
            }
            if (!happened) break;
        }
        document->Release();
    }
}

}  // namespace
