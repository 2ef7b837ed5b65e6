#include <gtest/gtest.h>
#include <ole/unimplemented.h>

// Hosts and the library call each other through virtual tables alone, so each function must stand where the
// published interface has it.

namespace {

// The first slot in which the virtual tables of two objects of `Count` functions differ; -1 for none.
template <int Count>
int DifferingSlot(const IUnknown& a, const IUnknown& b) {
    const auto* const first = *reinterpret_cast<void* const* const*>(&a);
    const auto* const second = *reinterpret_cast<void* const* const*>(&b);
    for (int i = 0; i < Count; ++i) {
        if (first[i] != second[i]) return i;
    }
    return -1;
}

template <class Base>
class Object : public Base {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
    ULONG STDMETHODCALLTYPE AddRef() override { return 1; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
};

#define OVERRIDING(Base, declaration)                                           \
    class : public Object<Base> {                                               \
    public:                                                                     \
        HRESULT STDMETHODCALLTYPE declaration override { return E_UNEXPECTED; } \
    }

TEST(Interfaces, FunctionsStandWhereTheyArePublished) {
    const Object<ole::UnimplementedHtmlDocument2> document;
    OVERRIDING(ole::UnimplementedHtmlDocument2, get_Script(IDispatch**)) const script;
    EXPECT_EQ(DifferingSlot<116>(document, script), 7);
    OVERRIDING(ole::UnimplementedHtmlDocument2, get_body(IHTMLElement**)) const body;
    EXPECT_EQ(DifferingSlot<116>(document, body), 9);
    OVERRIDING(ole::UnimplementedHtmlDocument2, get_mimeType(BSTR*)) const mime;
    EXPECT_EQ(DifferingSlot<116>(document, mime), 51);
    OVERRIDING(ole::UnimplementedHtmlDocument2, createStyleSheet(BSTR, LONG, IHTMLStyleSheet**)) const style;
    EXPECT_EQ(DifferingSlot<116>(document, style), 115);

    const Object<ole::UnimplementedHtmlElement> element;
    OVERRIDING(ole::UnimplementedHtmlElement, get_outerHTML(BSTR*)) const outer;
    EXPECT_EQ(DifferingSlot<94>(element, outer), 62);
    OVERRIDING(ole::UnimplementedHtmlElement, get_all(IDispatch**)) const all;
    EXPECT_EQ(DifferingSlot<94>(element, all), 93);

    const Object<ole::UnimplementedWebBrowser2> browser;
    OVERRIDING(ole::UnimplementedWebBrowser2, get_Document(IDispatch**)) const shown;
    EXPECT_EQ(DifferingSlot<71>(browser, shown), 18);
    OVERRIDING(ole::UnimplementedWebBrowser2, Quit()) const quit;
    EXPECT_EQ(DifferingSlot<71>(browser, quit), 32);
    OVERRIDING(ole::UnimplementedWebBrowser2, put_Resizable(VARIANT_BOOL)) const resizable;
    EXPECT_EQ(DifferingSlot<71>(browser, resizable), 70);
}

}  // namespace
