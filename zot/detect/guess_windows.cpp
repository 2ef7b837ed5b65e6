#include <algorithm>
#include <climits>

#include <mlang.h>
#include <objbase.h>

#include "guess.h"

namespace ZOT {

namespace {

constexpr std::size_t kGuessBytes = 64 * 1024;

// Declared by MinGW-w64, but in none of its libraries.
constexpr IID kMultiLanguage2 = {
    0xdccfc164, 0x2b38, 0x11d2, {0xb7, 0xec, 0x00, 0xc0, 0x4f, 0x8f, 0x5d, 0x9a}};

// COM for the calling thread, for as long as the object lives. A thread that has its own already keeps it.
class ComScope {
public:
    ComScope() : entered_(SUCCEEDED(CoInitializeEx(nullptr, COINIT_MULTITHREADED))) {}
    ComScope(const ComScope&) = delete;  // one object, one initialisation
    ComScope& operator=(const ComScope&) = delete;
    ~ComScope() {
        if (entered_) CoUninitialize();
    }

private:
    bool entered_;
};

CHARSET Known(UINT codePage) {
    const auto charset = static_cast<CHARSET>(codePage);
    // Windows means low byte first by 1200.
    if (codePage == 1200) return kCharsetUtf16Le;
    if (codePage == 1201) return kCharsetUtf16Be;
    return CharsetName(charset) == nullptr ? kCharsetNone : charset;
}

}  // namespace

CHARSET GuessEncoding(const unsigned char* bytes, std::size_t count) {
    const ComScope com;
    IMultiLanguage2* languages = nullptr;
    if (FAILED(CoCreateInstance(CLSID_CMultiLanguage, nullptr, CLSCTX_INPROC_SERVER, kMultiLanguage2,
                                reinterpret_cast<void**>(&languages)))) {
        return kCharsetNone;
    }
    auto size = static_cast<INT>(std::min(count, kGuessBytes));
    DetectEncodingInfo best = {};
    INT found = 1;
    // The interface takes its input as char*, but only reads it.
    auto* const text = const_cast<CHAR*>(reinterpret_cast<const CHAR*>(bytes));
    const HRESULT result = languages->DetectInputCodepage(MLDETECTCP_HTML, 0, text, &size, &best, &found);
    languages->Release();
    return result == S_OK && found > 0 ? Known(best.nCodePage) : kCharsetNone;
}

}  // namespace ZOT
