#include "html_document.h"

#include <cstddef>
#include <new>
#include <string>

#include <ole/unimplemented.h>

#include "utf8.h"

namespace QuillLive {

namespace {

template <class Type, class Interface, class... Arguments>
HRESULT HandOut(Interface** object, Arguments&&... arguments) {
    *object = new (std::nothrow) Type(std::forward<Arguments>(arguments)...);
    return *object == nullptr ? E_OUTOFMEMORY : S_OK;
}

HRESULT HandOut(BSTR* string, const std::string& utf8) {
    const std::u16string text = QuillTool::ToUtf16(utf8);
    *string = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return *string == nullptr ? E_OUTOFMEMORY : S_OK;
}

// An object with a count of references, made with one. On one thread, as all of a browser's objects.
template <class Interface>
class Object : public Interface {
public:
    Object() = default;
    Object(const Object&) = delete;  // references are to this one
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (iid != IID_IUnknown && iid != Id()) return Other(iid, object);
        AddRef();
        *object = static_cast<Interface*>(this);
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    virtual const IID& Id() const = 0;
    // Any interface but the object's own.
    virtual HRESULT Other(REFIID, void**) { return E_NOINTERFACE; }

private:
    ULONG references_ = 1;
};

class Body final : public Object<ole::UnimplementedHtmlElement> {
public:
    explicit Body(const std::string& markup) : markup_(markup) {}
    HRESULT STDMETHODCALLTYPE get_outerHTML(BSTR* markup) override { return HandOut(markup, markup_); }

private:
    const IID& Id() const override { return IID_IHTMLElement; }

    const std::string& markup_;
};

class Source final : public Object<IPersistStreamInit> {
public:
    explicit Source(const std::string& bytes) : bytes_(bytes) {}
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL) override {
        return stream->Write(bytes_.data(), static_cast<ULONG>(bytes_.size()), nullptr);
    }
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER* size) override {
        size->QuadPart = bytes_.size();
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE IsDirty() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Load(IStream*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitNew() override { return E_NOTIMPL; }

private:
    const IID& Id() const override { return IID_IPersistStreamInit; }

    const std::string& bytes_;
};

class FrameBrowser final : public Object<ole::UnimplementedWebBrowser2> {
public:
    explicit FrameBrowser(const LiveDocument& document) : document_(document) {}
    HRESULT STDMETHODCALLTYPE get_Document(IDispatch** document) override {
        *document = NewHtmlDocument(document_);
        return *document == nullptr ? E_OUTOFMEMORY : S_OK;
    }

private:
    const IID& Id() const override { return IID_IWebBrowser2; }

    const LiveDocument& document_;
};

class FrameList final : public Object<IEnumUnknown> {
public:
    explicit FrameList(const LiveDocument& document, std::size_t next = 0)
        : document_(document), next_(next) {}

    HRESULT STDMETHODCALLTYPE Next(ULONG count, IUnknown** objects, ULONG* fetched) override {
        ULONG done = 0;
        while (done < count && next_ < document_.frames.size() &&
               HandOut<FrameBrowser>(&objects[done], document_.frames[next_]) == S_OK) {
            ++done;
            ++next_;
        }
        if (fetched != nullptr) *fetched = done;
        return done == count ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG count) override {
        const std::size_t left = document_.frames.size() - next_;
        next_ += count < left ? count : left;
        return count <= left ? S_OK : S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE Reset() override {
        next_ = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Clone(IEnumUnknown** clone) override {
        return HandOut<FrameList>(clone, document_, next_);
    }

private:
    const IID& Id() const override { return IID_IEnumUnknown; }

    const LiveDocument& document_;
    std::size_t next_;
};

class FrameContainer final : public Object<IOleContainer> {
public:
    explicit FrameContainer(const LiveDocument& document) : document_(document) {}
    HRESULT STDMETHODCALLTYPE EnumObjects(DWORD, IEnumUnknown** list) override {
        return HandOut<FrameList>(list, document_);
    }
    HRESULT STDMETHODCALLTYPE LockContainer(BOOL) override { return S_OK; }
    HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker**) override {
        return E_NOTIMPL;
    }

private:
    const IID& Id() const override { return IID_IOleContainer; }

    const LiveDocument& document_;
};

// The control's names for kinds of documents.
std::string KindOf(const std::string& mime_type) {
    if (mime_type == "text/plain") return "Text Document";
    if (mime_type == "text/html") return "HTML Document";
    return mime_type;
}

class Document final : public Object<ole::UnimplementedHtmlDocument2> {
public:
    explicit Document(const LiveDocument& document) : document_(document) {}
    HRESULT STDMETHODCALLTYPE get_mimeType(BSTR* type) override {
        return HandOut(type, KindOf(document_.mime_type));
    }
    HRESULT STDMETHODCALLTYPE get_body(IHTMLElement** body) override {
        *body = nullptr;
        return document_.body ? HandOut<Body>(body, *document_.body) : S_OK;
    }

private:
    const IID& Id() const override { return IID_IHTMLDocument2; }

    HRESULT Other(REFIID iid, void** object) override {
        if (iid == IID_IDispatch || iid == IID_IHTMLDocument) return QueryInterface(Id(), object);
        if (iid == IID_IOleContainer) {
            return HandOut<FrameContainer>(reinterpret_cast<IOleContainer**>(object), document_);
        }
        if (iid == IID_IPersistStreamInit && document_.source) {
            return HandOut<Source>(reinterpret_cast<IPersistStreamInit**>(object), *document_.source);
        }
        return E_NOINTERFACE;
    }

    const LiveDocument& document_;
};

}  // namespace

IHTMLDocument2* NewHtmlDocument(const LiveDocument& document) {
    return new (std::nothrow) Document(document);
}

}  // namespace QuillLive
