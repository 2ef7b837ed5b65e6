#include "api/fake_browser.h"

#include <cstddef>

namespace {

// An object of the world with a count of references. QueryInterface asks the derived class.
template <class Interface>
class Fake : public Interface {
public:
    explicit Fake(FakeWorld& world) : world_(world) { world.Born(); }
    virtual ~Fake() { world_.Died(); }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID iid, void** object) override {
        *object = nullptr;
        if (world_.NextCallFails()) return E_FAIL;
        *object = Answer(iid);
        return *object == nullptr ? E_NOINTERFACE : S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }

protected:
    // The interface with a reference for the caller, or null.
    virtual void* Answer(REFIID) { return nullptr; }

    // The usual body of a call that hands something out.
    template <class Out, class Make>
    HRESULT HandOut(Out* out, const Make& make, HRESULT success = S_OK) {
        *out = nullptr;
        if (world_.NextCallFails()) return E_FAIL;
        *out = make();
        return success;
    }

    FakeWorld& world_;

private:
    ULONG references_ = 1;
};

class FakeElement final : public Fake<ole::UnimplementedHtmlElement> {
public:
    FakeElement(FakeWorld& world, const FakePage& page) : Fake(world), page_(page) {}
    HRESULT STDMETHODCALLTYPE get_outerHTML(BSTR* markup) override {
        return HandOut(
            markup, [&] { return NewString(*page_.body); }, page_.markupResult);
    }

private:
    const FakePage& page_;
};

class FakeSource final : public Fake<IPersistStreamInit> {
public:
    FakeSource(FakeWorld& world, const std::string& bytes) : Fake(world), bytes_(bytes) {}
    HRESULT STDMETHODCALLTYPE Save(IStream* stream, BOOL) override {
        if (world_.NextCallFails()) return E_FAIL;
        return stream->Write(bytes_.data(), static_cast<ULONG>(bytes_.size()), nullptr);
    }
    HRESULT STDMETHODCALLTYPE GetClassID(CLSID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE IsDirty() override { return S_FALSE; }
    HRESULT STDMETHODCALLTYPE Load(IStream*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetSizeMax(ULARGE_INTEGER*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE InitNew() override { return E_NOTIMPL; }

private:
    const std::string& bytes_;
};

class FakeBrowser final : public Fake<ole::UnimplementedWebBrowser2> {
public:
    FakeBrowser(FakeWorld& world, const FakePage::Embedded& embedded) : Fake(world), embedded_(embedded) {}
    HRESULT STDMETHODCALLTYPE get_Document(IDispatch** document) override {
        return HandOut(document,
                       [&] { return embedded_.hasDocument ? world_.Document(embedded_.page) : nullptr; });
    }

protected:
    void* Answer(REFIID iid) override {
        if (iid != IID_IWebBrowser2 || !embedded_.isBrowser) return nullptr;
        AddRef();
        return static_cast<IWebBrowser2*>(this);
    }

private:
    const FakePage::Embedded& embedded_;
};

class FakeList final : public Fake<IEnumUnknown> {
public:
    FakeList(FakeWorld& world, const FakePage& page) : Fake(world), page_(page) {}
    HRESULT STDMETHODCALLTYPE Next(ULONG count, IUnknown** objects, ULONG* fetched) override {
        objects[0] = nullptr;
        if (fetched != nullptr) *fetched = 0;
        if (world_.NextCallFails() || count != 1) return E_FAIL;
        if (next_ == page_.embedded.size()) return S_FALSE;
        objects[0] = new FakeBrowser(world_, page_.embedded[next_++]);
        if (fetched != nullptr) *fetched = 1;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Skip(ULONG) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Reset() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Clone(IEnumUnknown**) override { return E_NOTIMPL; }

private:
    const FakePage& page_;
    std::size_t next_ = 0;
};

class FakeContainer final : public Fake<IOleContainer> {
public:
    FakeContainer(FakeWorld& world, const FakePage& page) : Fake(world), page_(page) {}
    HRESULT STDMETHODCALLTYPE EnumObjects(DWORD flags, IEnumUnknown** list) override {
        if (flags != OLECONTF_EMBEDDINGS) return E_INVALIDARG;
        return HandOut(list, [&] { return new FakeList(world_, page_); });
    }
    HRESULT STDMETHODCALLTYPE ParseDisplayName(IBindCtx*, LPOLESTR, ULONG*, IMoniker**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE LockContainer(BOOL) override { return E_NOTIMPL; }

private:
    const FakePage& page_;
};

class FakeDocument final : public Fake<ole::UnimplementedHtmlDocument2> {
public:
    FakeDocument(FakeWorld& world, const FakePage& page) : Fake(world), page_(page) {}
    HRESULT STDMETHODCALLTYPE get_mimeType(BSTR* type) override {
        return HandOut(type, [&] { return NewString(page_.mime); });
    }
    HRESULT STDMETHODCALLTYPE get_body(IHTMLElement** body) override {
        return HandOut(
            body, [&] { return page_.body ? new FakeElement(world_, page_) : nullptr; }, page_.bodyResult);
    }

protected:
    void* Answer(REFIID iid) override {
        if (iid == IID_IPersistStreamInit && page_.source) {
            return static_cast<IPersistStreamInit*>(new FakeSource(world_, *page_.source));
        }
        if (iid == IID_IOleContainer && page_.container) {
            return static_cast<IOleContainer*>(new FakeContainer(world_, page_));
        }
        if (iid != IID_IHTMLDocument2) return nullptr;
        AddRef();
        return static_cast<IHTMLDocument2*>(this);
    }

private:
    const FakePage& page_;
};

}  // namespace

IHTMLDocument2* FakeWorld::Document(const FakePage& page) {
    return new FakeDocument(*this, page);
}
