#include "convert.h"

#include <algorithm>
#include <bit>
#include <cstring>
#include <zot/conv.h>

namespace QuillNS {
namespace {

constexpr unsigned int kPiece = 4096;  // bytes of the input and of the output buffer

// One conversion, by whichever converter there is.
class Converter {
public:
    Converter(ZOT::CHARSET from, ZOT::CHARSET to, bool flag)
        : fast_(ZOTCharset::Conv::FastConversionFunction(from, to)),
          halves_(fast_ == nullptr ? ZOTCharset::Conv::MbToWcConversionFunction(from) : nullptr,
                  fast_ == nullptr ? ZOTCharset::Conv::WcToMbConversionFunction(to) : nullptr),
          flag_(flag) {}

    // Hands what the source gives to `append(bytes, count)`, until nothing is left or nothing more is taken.
    // Returns the bytes taken.
    template <class Append>
    std::size_t ConvertAll(const unsigned char* source, std::size_t size, Append append) {
        std::size_t done = 0;
        while (done < size) {
            unsigned char output[kPiece];
            unsigned int used = 0;
            unsigned int produced = 0;
            const auto piece = static_cast<unsigned int>(std::min<std::size_t>(size - done, kMostAtOnce));
            Convert(source + done, piece, used, output, produced);
            append(output, produced);
            if (used == 0) break;
            done += used;
        }
        return done;
    }

private:
    static constexpr std::size_t kMostAtOnce = 1u << 30;  // bytes; converters count in 32 bits

    void Convert(const unsigned char* source, unsigned int size, unsigned int& used, unsigned char* output,
                 unsigned int& produced) {
        if (fast_ != nullptr) {
            fast_(source, size, used, output, kPiece, produced, flag_, false);
        } else {
            halves_(source, size, used, output, kPiece, produced, flag_);
        }
    }

    ZOTCharset::FastConversion fast_;
    ZOTCharset::ConversionClass halves_;
    bool flag_;
};

// The character set of wide text as it stands in memory, which callers know as its bytes, low byte first.
constexpr ZOT::CHARSET InMemory(ZOT::CHARSET charset) {
    constexpr bool kHighByteFirst = std::endian::native == std::endian::big;
    return kHighByteFirst && charset == ZOT::kCharsetUtf16Le ? ZOT::kCharsetUtf16Be : charset;
}

void ConvertUnits(ZOT::CHARSET from, ZOT::CHARSET to, const void* units, std::size_t count,
                  std::string& target, bool flag) {
    target.reserve(target.size() + count);
    if (count == 0) return;
    Converter converter(InMemory(from), to, flag);
    converter.ConvertAll(static_cast<const unsigned char*>(units), count * sizeof(char16_t),
                         [&target](const unsigned char* bytes, std::size_t size) {
                             target.append(reinterpret_cast<const char*>(bytes), size);
                         });
}

}  // namespace

void ConvertStream(ZOT::CHARSET from, ZOT::CHARSET to, ZOT::BinaryStreamBuf& source,
                   ZOT::BinaryStreamBuf& target, bool flag) {
    Converter converter(from, to, flag);
    unsigned char input[kPiece];
    unsigned int carried = 0;  // bytes at the front that the last pass did not take
    for (;;) {
        const unsigned int read = source.Get(input + carried, kPiece - carried);
        if (read == 0) return;
        const unsigned int available = carried + read;
        const auto taken = static_cast<unsigned int>(converter.ConvertAll(
            input, available,
            [&target](const unsigned char* bytes, unsigned int size) { target.vPut(bytes, size); }));
        carried = available - taken;
        std::memmove(input, input + taken, carried);
    }
}

void ConvertWideBuffer(ZOT::CHARSET from, ZOT::CHARSET to, const unsigned short* source, unsigned int length,
                       std::string& target, bool flag) {
    ConvertUnits(from, to, source, length, target, flag);
}

void ConvertWideString(ZOT::CHARSET from, ZOT::CHARSET to, const std::u16string& source, std::string& target,
                       bool flag) {
    ConvertUnits(from, to, source.data(), source.size(), target, flag);
}

}  // namespace QuillNS
