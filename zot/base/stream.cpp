#include <algorithm>
#include <bit>
#include <zot/stream.h>

namespace ZOT {

BinaryStreamBuf::~BinaryStreamBuf() = default;

bool BinaryStreamBuf::SafeGet(void* bytes, unsigned int count) {
    return vGet(bytes, count) == count;
}

BinaryStream::~BinaryStream() {
    if (owning_) delete buffer_;
}

namespace {

constexpr std::size_t kPieceUnits =
    4096;  // units swapped at a time where the high byte comes first in memory

// Writes the units as they stand in memory.
unsigned int PutUnits(BinaryStreamBuf& target, const char16_t* units, std::size_t count) {
    return target.vPut(units, static_cast<unsigned int>(count * sizeof(char16_t)));
}

unsigned int PutSwapped(BinaryStreamBuf& target, const char16_t* units, std::size_t count) {
    unsigned int written = 0;
    char16_t piece[kPieceUnits];
    for (std::size_t done = 0; done < count;) {
        const std::size_t now = std::min(kPieceUnits, count - done);
        std::transform(units + done, units + done + now, piece,
                       [](char16_t unit) { return static_cast<char16_t>((unit << 8) | (unit >> 8)); });
        const unsigned int put = PutUnits(target, piece, now);
        written += put;
        if (put != now * sizeof(char16_t)) break;
        done += now;
    }
    return written;
}

}  // namespace

unsigned int Copy(BinaryStreamBuf& target, std::u16string_view text, unsigned int count) {
    constexpr std::size_t kMost = kWholeStream / sizeof(char16_t);  // no stream holds more
    const std::size_t units = std::min({std::size_t{count}, text.size(), kMost});
    if (units == 0) return 0;
    constexpr bool kLowByteFirst = std::endian::native == std::endian::little;
    return kLowByteFirst ? PutUnits(target, text.data(), units) : PutSwapped(target, text.data(), units);
}

}  // namespace ZOT
