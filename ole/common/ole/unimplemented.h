#pragma once

// Browser objects whose every operation answers E_NOTIMPL. A host that shows a document of its own to the
// library derives from these and overrides the operations that it has. The same on every platform. C++ alone.

#include <ole/browser.h>

namespace ole {

#define OLE_METHOD(name, parameters)                     \
    HRESULT STDMETHODCALLTYPE name parameters override { \
        return E_NOTIMPL;                                \
    }

class UnimplementedHtmlDocument2 : public IHTMLDocument2 {
public:
#include <ole/methods/dispatch.inc>
#include <ole/methods/html_document.inc>
#include <ole/methods/html_document2.inc>
};

class UnimplementedHtmlElement : public IHTMLElement {
public:
#include <ole/methods/dispatch.inc>
#include <ole/methods/html_element.inc>
};

class UnimplementedWebBrowser2 : public IWebBrowser2 {
public:
#include <ole/methods/dispatch.inc>
#include <ole/methods/web_browser.inc>
#include <ole/methods/web_browser2.inc>
#include <ole/methods/web_browser_app.inc>
};

#undef OLE_METHOD

}  // namespace ole
