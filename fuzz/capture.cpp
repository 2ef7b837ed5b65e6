// The exported function for browser documents, with documents whose every part is chosen by the input, and
// any one call into them failing.

#include <quill/exports.h>

#include "api/fake_browser.h"
#include "api/fake_strings.h"
#include "choices.h"
#include "fuzz_target.h"

namespace {

constexpr LONG kUntouched = 4711;

FakePage Page(Choices& choose, unsigned int depth) {
    FakePage page;
    if (choose(4) == 1) page.mime = choose(2) == 0 ? u"Text Document" : choose.Text();
    if (choose(3) != 1) page.source = choose.Bytes();
    if (choose(3) != 1) page.body = choose.Text();
    page.container = choose(4) != 1;
    for (unsigned int left = depth == 2 ? 0 : choose(3); left != 0; --left) {
        const unsigned int kind = choose(8);
        page.embedded.push_back({kind != 1, kind != 2, Page(choose, depth + 1)});
    }
    return page;
}

void RequireResult(HRESULT result, const VARIANT& text, bool failed) {
    if (result == S_OK) {
        Require(text.vt == VT_BSTR && text.bstrVal != nullptr, "a captured document has a text");
    } else {
        Require(failed && result == E_FAIL, "only a call that fails makes the capture fail, with its code");
        Require(text.vt == VT_I4 && text.lVal == kUntouched, "a failure leaves the output");
    }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const int strings = LiveStrings();
    Choices choose(data, size);
    FakeWorld world;
    const int failing = static_cast<int>(choose(64));
    const FakePage page = Page(choose, 0);

    VARIANT text;
    VariantInit(&text);
    text.vt = VT_I4;
    text.lVal = kUntouched;
    IHTMLDocument2* const document = world.Document(page);
    world.FailNthCall(failing);
    const HRESULT result = GetBeautifiedText(document, &text);
    RequireResult(result, text, world.Failed());
    VariantClear(&text);
    document->Release();
    Require(world.Live() == 0, "every object is released");
    Require(LiveStrings() == strings, "every string is freed once");
    return 0;
}
