#include "base64.h"

namespace QuillLive {

namespace {

constexpr std::string_view kDigits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
constexpr int kDigitBits = 6;
constexpr int kByteBits = 8;

}  // namespace

std::string DecodeBase64(std::string_view text) {
    std::string bytes;
    bytes.reserve(text.size() / 4 * 3 + 2);
    unsigned int bits = 0;
    int count = 0;  // of the lowest bits, those that belong to no byte yet
    for (const char c : text) {
        const std::size_t digit = kDigits.find(c);
        if (digit == std::string_view::npos) break;
        bits = bits << kDigitBits | static_cast<unsigned int>(digit);
        count += kDigitBits;
        if (count < kByteBits) continue;
        count -= kByteBits;
        bytes += static_cast<char>(bits >> count & 0xFF);
    }
    return bytes;
}

}  // namespace QuillLive
