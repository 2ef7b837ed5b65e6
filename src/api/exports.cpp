#include <quill/exports.h>

#include <new>
#include <stdexcept>
#include <string>

#include <quill/beautify.h>
#include <quill/partitions.h>
#include <zot/memory_buffer.h>

#include "capture.h"
#include "content_stream.h"
#include "convert.h"
#include "ole_holders.h"
#include "variant_text.h"

// Between OLE Automation and the class interface. Nothing is thrown across: the standard strings are the only
// ones to throw, when memory runs out.

namespace QuillNS {
namespace {

constexpr unsigned int kPageSize = 8192;  // first allocation of a single string's bytes

struct Texts {
    std::u16string text;
    std::u16string documentText;
    bool outOfMemory = false;  // an input was not read whole; there are no texts then
};

std::string ToUtf8(BSTR string) {
    const OleText text = UpToNul(string);
    std::string utf8;
    ConvertWideString(ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf8, std::u16string(text.begin(), text.end()), utf8,
                      false);
    return utf8;
}

// False when memory runs out.
bool Put(const std::string& bytes, ZOT::BinaryStreamBuf& stream) {
    const auto size = static_cast<unsigned int>(bytes.size());
    return size == bytes.size() && stream.SafePut(bytes.data(), size);
}

HRESULT BeautifyOne(BSTR string, Texts& texts) {
    if (string == nullptr) return S_NO_INPUT;
    ZOTFile::MemoryBuffer page(kPageSize);
    texts.outOfMemory = !Put(ToUtf8(string), page);
    if (!texts.outOfMemory) Beautify(page, ZOT::kCharsetUtf8, texts.text, &texts.documentText, nullptr);
    return S_OK;
}

// The first page becomes the content of `top`, every later one a child. False when memory runs out.
bool AddPage(const std::string& utf8, HtmlDocPartitions& top) {
    const ZOT::RefCount<ZOT::BinaryStream> stream = NewContentStream();
    if (!stream || !Put(utf8, *stream->Buffer())) return false;
    if (!top.stream) {
        top.stream = stream;
        top.charset = ZOT::kCharsetUtf8;
        return true;
    }
    const ZOT::RefCount<HtmlDocPartitions> child(
        new HtmlDocPartitions(stream, ZOT::kCharsetUtf8, HtmlDocPartitions::HtmlContent));
    return child && top.children.Append(child);
}

HRESULT BeautifyArray(const VARIANT& input, Texts& texts) {
    HtmlDocPartitions top;
    {
        const StringArray strings(input);
        if (!strings.Readable()) return E_UNSUPPORTED_INPUT;
        for (unsigned int i = 0; i < strings.Size() && !texts.outOfMemory; ++i) {
            if (!UpToNul(strings[i]).empty()) texts.outOfMemory = !AddPage(ToUtf8(strings[i]), top);
        }
    }
    if (texts.outOfMemory) return S_OK;
    if (!top.stream) return S_NO_INPUT;
    Beautify(top, texts.text, &texts.documentText, nullptr);
    return S_OK;
}

HRESULT BeautifyInput(const VARIANT& input, Texts& texts) {
    if ((input.vt & ~VT_BYREF) == VT_BSTR) return BeautifyOne(StringOf(input), texts);
    if (StringArray::Takes(input.vt)) return BeautifyArray(input, texts);
    return E_UNSUPPORTED_INPUT;
}

HRESULT BeautifyDocument(IHTMLDocument2* document, std::u16string& text) {
    HtmlDocPartitions partitions;
    {
        const ComPtr<IHTMLDocument2> held(document);
        const HRESULT result = CaptureDocumentTree(document, partitions);
        if (result != S_OK) return result;
    }
    Beautify(partitions, text, nullptr, nullptr);
    return S_OK;
}

// Runs `work` and tells whether memory sufficed.
template <class Work>
bool Completes(const Work& work) noexcept {
    try {
        work();
        return true;
    } catch (const std::bad_alloc&) {
    } catch (const std::length_error&) {
    }
    return false;
}

}  // namespace
}  // namespace QuillNS

using namespace QuillNS;

HRESULT STDAPICALLTYPE GetBeautifiedText(IHTMLDocument2* document, VARIANT* text) noexcept {
    if (document == nullptr || text == nullptr) return E_INVALIDARG;
    HRESULT result = S_OK;
    std::u16string found;
    if (!Completes([&] { result = BeautifyDocument(document, found); })) {
        FillVariantWithoutMemory(*text);
    } else if (result == S_OK) {
        FillVariant(found, *text);
    }
    return result;
}

HRESULT STDAPICALLTYPE GetBeautifiedTextFromString(VARIANT* input, VARIANT* text,
                                                   VARIANT* documentText) noexcept {
    if (input == nullptr || text == nullptr || documentText == nullptr) return E_INVALIDARG;
    HRESULT result = S_OK;
    Texts found;
    if (!Completes([&] { result = BeautifyInput(*input, found); }) || found.outOfMemory) {
        FillVariantWithoutMemory(*text);
    } else if (!found.text.empty()) {
        FillVariant(found.text, *text);
        FillVariant(found.documentText, *documentText);
    }
    return result;
}
