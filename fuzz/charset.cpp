// Conversion to UTF-8: vectors give what the plain blocks give, pieces give what the whole gives, and the
// result is valid UTF-8. The first byte chooses the encoding, the second the size of the pieces.

#include <algorithm>
#include <string>

#include <zot/conv.h>

#include "fuzz_target.h"
#include "plain/text_block.h"
#include "to_utf8.h"

namespace {

using ZOT::CHARSET;

constexpr CHARSET kEncodings[] = {
    ZOT::kCharsetUtf8,  ZOT::kCharsetUtf16Le, ZOT::kCharsetUtf16Be,   ZOT::kCharsetWindows1252,
    ZOT::kCharsetBig5,  ZOT::kCharsetGb18030, ZOT::kCharsetShiftJis,  ZOT::kCharsetEucJp,
    ZOT::kCharsetEucKr, ZOT::kCharsetKoi8R,   ZOT::kCharsetIso2022Jp, ZOT::kCharsetReplacement,
};

std::string Whole(CHARSET from, const unsigned char* bytes, std::size_t count) {
    ZOT::PoolBuffer utf8;
    Require(ZOTCharset::ToUtf8(from, bytes, count, utf8, 0), "memory suffices");
    Require(ZOTCharset::ValidUtf8(utf8.Data(), utf8.Size()) == utf8.Size(), "the result is valid");
    return {reinterpret_cast<const char*>(utf8.Data()), utf8.Size()};
}

// The two halves, shown `piece` bytes more at a time.
std::string InPieces(CHARSET from, const unsigned char* bytes, unsigned int count, unsigned int piece) {
    using ZOTCharset::Conv;
    ZOTCharset::ConversionClass convert(Conv::MbToWcConversionFunction(from),
                                        Conv::WcToMbConversionFunction(ZOT::kCharsetUtf8));
    std::string result;
    unsigned int done = 0;
    for (unsigned int seen = std::min(piece, count);;) {
        char target[16];
        unsigned int used = 0;
        unsigned int written = 0;
        convert(bytes + done, seen - done, used, target, sizeof target, written, seen == count);
        result.append(target, written);
        done += used;
        if (used != 0) continue;
        if (seen == count) break;
        seen = std::min(seen + piece, count);
    }
    Require(done == count, "all is consumed");
    return result;
}

std::string Plain(const unsigned char* bytes, std::size_t count) {
    std::string result(3 * count + ZOTCharset::kLongestUtf8, '\0');
    ZOTCharset::Bytes source(bytes, count);
    ZOTCharset::ByteRoom target(reinterpret_cast<unsigned char*>(result.data()), result.size());
    ZOTCharset::Utf8ToUtf8<ZOTCharset::PlainBlock>(source, target, true, false);
    Require(source.at == source.end, "all is consumed");
    result.resize(result.size() - target.Left());
    return result;
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2) return 0;
    const CHARSET from = kEncodings[data[0] % std::size(kEncodings)];
    const unsigned int piece = 1 + data[1] % 40;
    data += 2;
    size -= 2;
    const std::string whole = Whole(from, data, size);
    Require(whole == InPieces(from, data, static_cast<unsigned int>(size), piece), "pieces equal the whole");
    const std::size_t valid = ZOTCharset::ValidUtf8(data, size);
    Require(valid == ZOTCharset::ValidUtf8Beginning<ZOTCharset::PlainBlock>(data, size), "fast equals plain");
    if (from == ZOT::kCharsetUtf8) Require(whole == Plain(data, size), "fast equals plain");
    return 0;
}
