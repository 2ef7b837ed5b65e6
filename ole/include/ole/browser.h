#pragma once

// The interfaces through which a web browser control shows its document, with their published identifiers and
// virtual tables, for platforms that have none. On Windows the header of this name includes the platform's
// own. In C the interfaces are names alone.
//
// Objects of a browser are used on the thread that they live on. Whoever gets an interface or a BSTR through
// a pointer argument owns it.

#include <ole/automation.h>

typedef struct IBindCtx IBindCtx;
typedef struct IMoniker IMoniker;
typedef struct IEnumUnknown IEnumUnknown;
typedef struct IOleContainer IOleContainer;
typedef struct IPersistStreamInit IPersistStreamInit;
typedef struct IHTMLDocument2 IHTMLDocument2;
typedef struct IHTMLElement IHTMLElement;
typedef struct IHTMLElementCollection IHTMLElementCollection;
typedef struct IHTMLFiltersCollection IHTMLFiltersCollection;
typedef struct IHTMLFramesCollection2 IHTMLFramesCollection2;
typedef struct IHTMLLocation IHTMLLocation;
typedef struct IHTMLSelectionObject IHTMLSelectionObject;
typedef struct IHTMLStyle IHTMLStyle;
typedef struct IHTMLStyleSheet IHTMLStyleSheet;
typedef struct IHTMLStyleSheetsCollection IHTMLStyleSheetsCollection;
typedef struct IHTMLWindow2 IHTMLWindow2;
typedef struct IWebBrowser2 IWebBrowser2;

// Which objects a container lists.
enum { OLECONTF_EMBEDDINGS = 1, OLECONTF_LINKS = 2, OLECONTF_OTHERS = 4 };

enum READYSTATE {
    READYSTATE_UNINITIALIZED = 0,
    READYSTATE_LOADING = 1,
    READYSTATE_LOADED = 2,
    READYSTATE_INTERACTIVE = 3,
    READYSTATE_COMPLETE = 4
};

#ifdef __cplusplus

// Commands of a browser window. Their numbers are of no use here.
enum OLECMDID : int {};
enum OLECMDF : int {};
enum OLECMDEXECOPT : int {};

// Hands out a list of objects from a position that moves.
struct IEnumUnknown : IUnknown {
    // Up to `count` objects, each with a reference for the caller. S_FALSE when fewer are left. `fetched` may
    // be null when `count` is 1.
    virtual HRESULT STDMETHODCALLTYPE Next(ULONG count, IUnknown** objects, ULONG* fetched) = 0;
    virtual HRESULT STDMETHODCALLTYPE Skip(ULONG count) = 0;
    virtual HRESULT STDMETHODCALLTYPE Reset() = 0;
    virtual HRESULT STDMETHODCALLTYPE Clone(IEnumUnknown** clone) = 0;
};

struct IParseDisplayName : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx* context, LPOLESTR name, ULONG* eaten,
                                                       IMoniker** moniker) = 0;
};

// A document with objects in it.
struct IOleContainer : IParseDisplayName {
    virtual HRESULT STDMETHODCALLTYPE EnumObjects(DWORD flags, IEnumUnknown** objects) = 0;
    virtual HRESULT STDMETHODCALLTYPE LockContainer(BOOL lock) = 0;
};

struct IPersist : IUnknown {
    virtual HRESULT STDMETHODCALLTYPE GetClassID(CLSID* id) = 0;
};

// An object that can be written into a stream. Save writes at the stream's position.
struct IPersistStreamInit : IPersist {
    virtual HRESULT STDMETHODCALLTYPE IsDirty() = 0;
    virtual HRESULT STDMETHODCALLTYPE Load(IStream* stream) = 0;
    virtual HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL clearDirty) = 0;
    virtual HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) = 0;
    virtual HRESULT STDMETHODCALLTYPE InitNew() = 0;
};

#define OLE_METHOD(name, parameters) virtual HRESULT STDMETHODCALLTYPE name parameters = 0;

// A document of the browser: get_mimeType, get_body.
struct IHTMLDocument : IDispatch {
#include <ole/methods/html_document.inc>
};
struct IHTMLDocument2 : IHTMLDocument {
#include <ole/methods/html_document2.inc>
};

// An element of a document: get_outerHTML.
struct IHTMLElement : IDispatch {
#include <ole/methods/html_element.inc>
};

// A browser, a frame's as well: get_Document.
struct IWebBrowser : IDispatch {
#include <ole/methods/web_browser.inc>
};
struct IWebBrowserApp : IWebBrowser {
#include <ole/methods/web_browser_app.inc>
};
struct IWebBrowser2 : IWebBrowserApp {
#include <ole/methods/web_browser2.inc>
};

#undef OLE_METHOD

#endif

OLE_C_BEGIN
OLE_API extern const IID IID_IEnumUnknown;
OLE_API extern const IID IID_IHTMLDocument;
OLE_API extern const IID IID_IHTMLDocument2;
OLE_API extern const IID IID_IHTMLElement;
OLE_API extern const IID IID_IOleContainer;
OLE_API extern const IID IID_IPersist;
OLE_API extern const IID IID_IPersistStreamInit;
OLE_API extern const IID IID_IWebBrowser;
OLE_API extern const IID IID_IWebBrowser2;
OLE_API extern const IID IID_IWebBrowserApp;
OLE_C_END
