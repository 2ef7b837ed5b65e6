#include "page_offsets.h"

#include <algorithm>
#include <zot/conv.h>

namespace QuillTool {

namespace {

constexpr unsigned int kRoom = 16;  // units; more than any character needs
constexpr char16_t kReplacement = 0xFFFD;

unsigned int Utf8Size(const char16_t* units, unsigned int count) {
    unsigned int size = 0;
    for (const char16_t* unit = units; unit != units + count; ++unit) {
        const bool half_of_pair = (*unit & 0xF800) == 0xD800;  // a pair takes four bytes
        size += *unit < 0x80 ? 1 : *unit < 0x800 || half_of_pair ? 2 : 3;
    }
    return size;
}

ZOTCharset::MbToWcConversion DecoderOf(ZOT::CHARSET charset) {
    const auto decoder = ZOTCharset::Conv::MbToWcConversionFunction(charset);
    return decoder != nullptr ? decoder
                              : ZOTCharset::Conv::MbToWcConversionFunction(ZOT::kCharsetWindows1252);
}

// Goes through a page character by character, and knows where each one stands in the UTF-8 form.
class Reader {
public:
    Reader(std::string_view page, ZOT::CHARSET charset) : page_(page), decode_(DecoderOf(charset)) {}

    // Where the character that begins at this offset of the UTF-8 form begins in the page. Offsets rise.
    unsigned int InPage(unsigned int utf8_offset) {
        while (utf8_at_ < utf8_offset && at_ < page_.size()) StepOver();
        return static_cast<unsigned int>(at_);
    }

private:
    struct Decoded {
        unsigned int taken = 0;  // bytes
        unsigned int count = 0;
        char16_t units[kRoom];
    };

    Decoded Decode(std::size_t at, std::size_t shown, ZOTCharset::ConversionState& state) const {
        Decoded decoded;
        const bool last = at + shown == page_.size();
        decode_(state, reinterpret_cast<const unsigned char*>(page_.data() + at),
                static_cast<unsigned int>(shown), decoded.taken, decoded.units, kRoom, decoded.count, last);
        return decoded;
    }

    // A decoder takes no more than it is shown: one byte more each time, until it takes a character.
    void StepOver() {
        for (std::size_t shown = 1; shown <= page_.size() - at_; ++shown) {
            const ZOTCharset::ConversionState before = state_;
            const Decoded decoded = Decode(at_, shown, state_);
            if (decoded.taken == 0) continue;
            const bool broken = decoded.units[0] == kReplacement && decoded.count > 1;
            return broken ? StepOverBroken(decoded, before)
                          : Step(decoded.taken, decoded.units, decoded.count);
        }
        at_ = page_.size();
    }

    // That a character is broken shows at the first byte that is no part of it, and what begins with that
    // byte may be taken with it. The rest of the bytes is decoded once more to see where it begins.
    void StepOverBroken(const Decoded& decoded, ZOTCharset::ConversionState before) {
        for (unsigned int size = 1; size < decoded.taken; ++size) {
            state_ = before;
            const Decoded rest = Decode(at_ + size, decoded.taken - size, state_);
            const bool is_rest = size + rest.taken == decoded.taken &&
                                 std::equal(rest.units, rest.units + rest.count, decoded.units + 1,
                                            decoded.units + decoded.count);
            if (!is_rest) continue;
            state_ = before;
            return Step(size, decoded.units, 1);
        }
        Step(decoded.taken, decoded.units, decoded.count);
    }

    void Step(unsigned int bytes, const char16_t* units, unsigned int count) {
        at_ += bytes;
        utf8_at_ += Utf8Size(units, count);
    }

    std::string_view page_;
    ZOTCharset::MbToWcConversion decode_;
    ZOTCharset::ConversionState state_;
    std::size_t at_ = 0;        // in the page
    unsigned int utf8_at_ = 0;  // the same place in the UTF-8 form
};

}  // namespace

void ToPageOffsets(std::string_view page, ZOT::CHARSET charset, std::vector<ZOTParser::TextSpan>& spans) {
    if (charset == ZOT::kCharsetUtf8) return;
    std::vector<unsigned int*> offsets;
    for (ZOTParser::TextSpan& span : spans) {
        span.length += span.position;  // the end, until the way back
        offsets.push_back(&span.position);
        offsets.push_back(&span.length);
    }
    std::sort(offsets.begin(), offsets.end(),
              [](const unsigned int* a, const unsigned int* b) { return *a < *b; });
    Reader reader(page, charset);
    for (unsigned int* const offset : offsets) *offset = reader.InPage(*offset);
    for (ZOTParser::TextSpan& span : spans) span.length -= span.position;
}

}  // namespace QuillTool
