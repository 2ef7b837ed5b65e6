#include <algorithm>
#include <cstring>
#include <limits>

#include <zot/conv.h>

#include "native_block.h"
#include "to_utf8.h"

namespace ZOTCharset {

namespace {

constexpr std::size_t kPieceBytes = std::size_t{1} << 30;  // converters count in 32 bits
constexpr std::size_t kLeastRoom = 64;  // bytes of target with which every conversion moves on

// One text on its way through a converter: a fast one, or two halves.
class WholeText {
public:
    WholeText(ZOT::CHARSET from, ZOT::PoolBuffer& utf8, std::size_t padding)
        : fast_(Conv::FastConversionFunction(from, ZOT::kCharsetUtf8)),
          halves_(Conv::MbToWcConversionFunction(from), Conv::WcToMbConversionFunction(ZOT::kCharsetUtf8)),
          utf8_(utf8),
          padding_(padding) {}

    bool Convert(const unsigned char* bytes, std::size_t count) {
        for (std::size_t done = 0; done != count;) {
            const std::size_t left = count - done;
            if (utf8_.Capacity() - utf8_.Size() < padding_ + kLeastRoom && !Grow(left)) return false;
            const std::size_t used = Step(bytes + done, left);
            done += used;
            if (used == 0 && !Grow(left)) return false;
        }
        return true;
    }

private:
    // Room for a bit more than the rest at the rate of its own length, and never less than half as much again
    // as there is: a text that keeps growing is copied a few times only.
    bool Grow(std::size_t left) {
        const std::size_t size = utf8_.Size();
        return utf8_.Reserve(size + padding_ + std::max(left + left / 8, size / 2) + kLeastRoom);
    }

    std::size_t Step(const unsigned char* bytes, std::size_t left) {
        const auto source = static_cast<unsigned int>(std::min(left, kPieceBytes));
        const auto room =
            static_cast<unsigned int>(std::min(utf8_.Capacity() - utf8_.Size() - padding_, 2 * kPieceBytes));
        const bool last = source == left;
        unsigned char* const target = utf8_.Data() + utf8_.Size();
        unsigned int used = 0;
        unsigned int written = 0;
        if (fast_ != nullptr) {
            fast_(bytes, source, used, target, room, written, last, false);
        } else {
            halves_(bytes, source, used, target, room, written, last);
        }
        utf8_.SetSize(utf8_.Size() + written);
        return used;
    }

    FastConversion fast_;
    ConversionClass halves_;
    ZOT::PoolBuffer& utf8_;
    std::size_t padding_;
};

}  // namespace

bool ToUtf8(ZOT::CHARSET from, const unsigned char* bytes, std::size_t count, ZOT::PoolBuffer& utf8,
            std::size_t padding) {
    utf8 = ZOT::PoolBuffer();
    if (ZOT::CharsetName(from) == nullptr) from = ZOT::kCharsetWindows1252;
    const bool done = utf8.Reserve(count + count / 16 + padding + kLeastRoom) &&
                      WholeText(from, utf8, padding).Convert(bytes, count);
    if (!done) utf8 = ZOT::PoolBuffer();
    if (done && padding != 0) std::memset(utf8.Data() + utf8.Size(), 0, padding);
    return done;
}

std::size_t ValidUtf8(const unsigned char* bytes, std::size_t count) {
    return ValidUtf8Beginning<NativeBlock>(bytes, count);
}

}  // namespace ZOTCharset
