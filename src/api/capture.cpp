#include "capture.h"

#include <string>

#include <quill/exports.h>
#include <zot/detect_stream.h>
#include <zot/memory_buffer.h>

#include "content_stream.h"
#include "convert.h"
#include "filter_to_ascii.h"
#include "ole_holders.h"

namespace QuillNS {
namespace {

constexpr unsigned int kMostFrames = 1000;
constexpr unsigned int kDeepestFrame = 100;

template <class Interface>
bool Ask(IUnknown* object, REFIID iid, ComPtr<Interface>& answer) {
    return object != nullptr && SUCCEEDED(object->QueryInterface(iid, answer.OutVoid())) && answer;
}

class TreeCapture {
public:
    HRESULT Capture(IHTMLDocument2* document, HtmlDocPartitions& partition, unsigned int depth);

private:
    void CaptureFrames(IOleContainer& container, HtmlDocPartitions& partition, unsigned int depth);
    void CaptureFrame(IUnknown* object, HtmlDocPartitions& partition, unsigned int depth);

    unsigned int frames_ = 0;
};

HRESULT TreeCapture::Capture(IHTMLDocument2* document, HtmlDocPartitions& partition, unsigned int depth) {
    const HRESULT result = CaptureDocument(document, partition);
    if (result != S_OK) return result;
    ComPtr<IOleContainer> container;
    if (depth < kDeepestFrame && Ask(document, IID_IOleContainer, container)) {
        CaptureFrames(*container.Get(), partition, depth + 1);
    }
    return S_OK;
}

void TreeCapture::CaptureFrames(IOleContainer& container, HtmlDocPartitions& partition, unsigned int depth) {
    ComPtr<IEnumUnknown> objects;
    if (FAILED(container.EnumObjects(OLECONTF_EMBEDDINGS, objects.Out())) || !objects) return;
    while (frames_ < kMostFrames) {
        ComPtr<IUnknown> object;
        ULONG fetched = 0;
        if (objects->Next(1, object.Out(), &fetched) != S_OK) return;
        CaptureFrame(object.Get(), partition, depth);
    }
}

// Passes over an object that is no browser with a document.
void TreeCapture::CaptureFrame(IUnknown* object, HtmlDocPartitions& partition, unsigned int depth) {
    ComPtr<IWebBrowser2> browser;
    if (!Ask(object, IID_IWebBrowser2, browser)) return;
    ComPtr<IDispatch> shown;
    if (FAILED(browser->get_Document(shown.Out()))) return;
    ComPtr<IHTMLDocument2> document;
    if (!Ask(shown.Get(), IID_IHTMLDocument2, document)) return;

    ++frames_;
    const ZOT::RefCount<HtmlDocPartitions> child(new HtmlDocPartitions);
    if (child && partition.children.Append(child)) Capture(document.Get(), *child, depth);
}

HtmlDocPartitions::ContentType ContentTypeOf(IHTMLDocument2& document) {
    OwnedBstr type;
    const bool isText =
        SUCCEEDED(document.get_mimeType(type.Out())) && type.Text() == OLESTR("Text Document");
    return isText ? HtmlDocPartitions::TextContent : HtmlDocPartitions::HtmlContent;
}

// The bytes of a memory stream in place, null when they cannot be reached.
class LockedMemory {
public:
    explicit LockedMemory(IStream* stream) {
        if (SUCCEEDED(GetHGlobalFromStream(stream, &memory_))) bytes_ = GlobalLock(memory_);
    }
    LockedMemory(const LockedMemory&) = delete;  // one lock, one unlock
    LockedMemory& operator=(const LockedMemory&) = delete;
    ~LockedMemory() {
        if (bytes_ != nullptr) GlobalUnlock(memory_);
    }

    const void* Bytes() const { return bytes_; }

private:
    HGLOBAL memory_ = nullptr;
    void* bytes_ = nullptr;
};

HRESULT CaptureSource(IPersistStreamInit& source, IStream* stream, HtmlDocPartitions& partition) {
    const HRESULT saved = source.Save(stream, FALSE);
    stream->Seek(LARGE_INTEGER{}, STREAM_SEEK_SET, nullptr);
    if (FAILED(saved)) return saved;

    ZOT::CHARSET charset = ZOT::kCharsetNone;
    if (DetectCharset(stream, &charset) != 0) return E_CHARSET_UNDETECTED;
    STATSTG status = {};  // its size stays 0 when it cannot be had
    const HRESULT result = stream->Stat(&status, STATFLAG_NONAME);
    const LockedMemory memory(stream);
    if (memory.Bytes() == nullptr) {
        partition.stream = NewContentStream();
    } else {
        FillFromSource(memory.Bytes(), static_cast<unsigned int>(status.cbSize.QuadPart), charset, partition);
    }
    return result;
}

HRESULT CaptureBody(IHTMLDocument2& document, HtmlDocPartitions& partition) {
    ComPtr<IHTMLElement> body;
    HRESULT result = document.get_body(body.Out());
    if (FAILED(result) || !body) return result;
    OwnedBstr markup;
    result = body->get_outerHTML(markup.Out());
    if (FAILED(result)) return result;

    const OleText text = markup.Text();
    std::string utf8;
    ConvertWideBuffer(ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf8,
                      reinterpret_cast<const unsigned short*>(text.data()),
                      static_cast<unsigned int>(text.size()), utf8, false);
    partition.charset = ZOT::kCharsetUtf8;
    partition.stream = NewContentStream();
    if (partition.stream) {
        partition.stream->Buffer()->vPut(utf8.data(), static_cast<unsigned int>(utf8.size()));
    }
    return result;
}

}  // namespace

HRESULT CaptureDocumentTree(IHTMLDocument2* document, HtmlDocPartitions& partition) {
    return TreeCapture().Capture(document, partition, 0);
}

HRESULT CaptureDocument(IHTMLDocument2* document, HtmlDocPartitions& partition) {
    partition.contentType = ContentTypeOf(*document);
    ComPtr<IPersistStreamInit> source;
    ComPtr<IStream> stream;
    // Where no stream can be made the body's markup does as well.
    if (Ask(document, IID_IPersistStreamInit, source) &&
        SUCCEEDED(CreateStreamOnHGlobal(nullptr, TRUE, stream.Out()))) {
        return CaptureSource(*source.Get(), stream.Get(), partition);
    }
    return CaptureBody(*document, partition);
}

void FillFromSource(const void* bytes, unsigned int size, ZOT::CHARSET detected,
                    HtmlDocPartitions& partition) {
    partition.stream = NewContentStream();
    if (!partition.stream) return;
    ZOTFile::MemoryBuffer reader(bytes, size, 0);
    ZOT::BinaryStream& content = *partition.stream;
    switch (detected) {
        case ZOT::kCharsetUtf16Le:
            ConvertStream(detected, ZOT::kCharsetUtf8, reader, *content.Buffer(), false);
            partition.charset = ZOT::kCharsetUtf8;
            break;
        case ZOT::kCharsetNone: {
            ZOT::BinaryStream source(&reader, false);
            FilterToAscii(source, content);
            partition.charset = ZOT::kCharsetWindows1252;
            break;
        }
        default: reader.Copy(*content.Buffer(), ZOT::kWholeStream); partition.charset = detected;
    }
}

}  // namespace QuillNS
