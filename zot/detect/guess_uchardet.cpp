#include <algorithm>
#include <memory>
#include <string_view>

#include <uchardet.h>

#include "guess.h"

namespace ZOT {

namespace {

constexpr std::size_t kGuessBytes = 64 * 1024;

struct Delete {
    void operator()(uchardet_t detector) const { uchardet_delete(detector); }
};
using Detector = std::unique_ptr<uchardet, Delete>;

CHARSET FromName(std::string_view name) {
    if (name == "UHC") return kCharsetEucKr;
    CHARSET charset = kCharsetNone;
    CharsetFromLabel(name, charset);
    return charset;
}

}  // namespace

CHARSET GuessEncoding(const unsigned char* bytes, std::size_t count) {
    const Detector detector(uchardet_new());
    if (detector == nullptr) return kCharsetNone;
    const auto* const text = reinterpret_cast<const char*>(bytes);
    if (uchardet_handle_data(detector.get(), text, std::min(count, kGuessBytes)) != 0) return kCharsetNone;
    uchardet_data_end(detector.get());
    return FromName(uchardet_get_charset(detector.get()));
}

}  // namespace ZOT
