#include "multi_byte.h"

#include "index/code_point_index.h"
#include "native_block.h"
#include "to_wide.h"

// Each decoder below tells what stands at the beginning of some bytes of which the first one is not ASCII.
// The standard gives a byte that is ASCII and ends a broken character back to the source; here such a byte is
// simply not counted.
namespace ZOTCharset {

namespace {

struct Decoded {
    std::size_t length;  // bytes taken; 0 when the end of the character is not there
    char32_t point = kReplacementCharacter;
    char32_t second = 0;  // a combining mark that comes with the character
};

constexpr Decoded kIncomplete = {0};

constexpr bool IsIn(unsigned int byte, unsigned int first, unsigned int last) {
    return byte >= first && byte <= last;
}

// A lead byte and `trail`: the character of the index, or a broken one.
Decoded TwoBytes(char32_t point, unsigned char trail) {
    if (point != 0) return {2, point};
    return {trail < 0x80 ? std::size_t{1} : std::size_t{2}};
}

template <class Next>
void DecodeEach(Bytes& source, UnitRoom& target, bool last, Next next) {
    constexpr std::size_t kMostUnits = 2;  // of one character and its mark
    do {
        WidenAscii<NativeBlock>(source, target);
        while (AtNonAscii(source)) {
            if (target.Left() < kMostUnits) return;
            const Decoded decoded = next(source);
            if (decoded.length == 0 && !last) return;
            target.at = PutUtf16(target.at, decoded.point);
            if (decoded.second != 0) target.at = PutUtf16(target.at, decoded.second);
            source.at = decoded.length == 0 ? source.end : source.at + decoded.length;
        }
    } while (source.at != source.end && target.at != target.end);
}

// https://encoding.spec.whatwg.org/#big5-decoder
Decoded NextBig5(const Bytes& source, const IndexView& index) {
    const unsigned int lead = source.at[0];
    if (!IsIn(lead, 0x81, 0xFE)) return {1};
    if (source.Left() < 2) return kIncomplete;
    const unsigned char trail = source.at[1];
    if (!IsIn(trail, 0x40, 0x7E) && !IsIn(trail, 0xA1, 0xFE)) return TwoBytes(0, trail);
    const std::size_t pointer = (lead - 0x81) * kBig5Trails + trail - (trail < 0x7F ? 0x40u : 0x62u);
    switch (pointer) {
        case 1133: return {2, 0x00CA, 0x0304};
        case 1135: return {2, 0x00CA, 0x030C};
        case 1164: return {2, 0x00EA, 0x0304};
        case 1166: return {2, 0x00EA, 0x030C};
        default: return TwoBytes(index[pointer], trail);
    }
}

// https://encoding.spec.whatwg.org/#index-gb18030-ranges-code-point; 0 for none.
char32_t RangesPoint(std::size_t pointer) {
    constexpr std::size_t kFirstOfPlanes = 189000;  // U+10000
    if (pointer >= kFirstOfPlanes + 0x100000) return 0;
    if (pointer >= kFirstOfPlanes) return static_cast<char32_t>(0x10000 + pointer - kFirstOfPlanes);
    return Gb18030Ranges()[pointer];
}

Decoded FourBytes(const Bytes& source) {
    if (source.Left() < 3) return kIncomplete;
    if (!IsIn(source.at[2], 0x81, 0xFE)) return {1};
    if (source.Left() < 4) return kIncomplete;
    if (!IsIn(source.at[3], 0x30, 0x39)) return {1};
    const std::size_t pointer = ((source.at[0] - 0x81u) * 10 + source.at[1] - 0x30u) * 1260 +
                                (source.at[2] - 0x81u) * 10 + source.at[3] - 0x30u;
    const char32_t point = RangesPoint(pointer);
    return {4, point == 0 ? kReplacementCharacter : point};
}

// https://encoding.spec.whatwg.org/#gb18030-decoder
Decoded NextGb18030(const Bytes& source, const IndexView& index) {
    const unsigned int lead = source.at[0];
    if (lead == 0x80) return {1, 0x20AC};
    if (lead == 0xFF) return {1};
    if (source.Left() < 2) return kIncomplete;
    const unsigned char trail = source.at[1];
    if (IsIn(trail, 0x30, 0x39)) return FourBytes(source);
    if (!IsIn(trail, 0x40, 0x7E) && !IsIn(trail, 0x80, 0xFE)) return TwoBytes(0, trail);
    return TwoBytes(index[(lead - 0x81) * kGbTrails + trail - (trail < 0x7F ? 0x40u : 0x41u)], trail);
}

// https://encoding.spec.whatwg.org/#euc-kr-decoder
Decoded NextEucKr(const Bytes& source, const IndexView& index) {
    const unsigned int lead = source.at[0];
    if (!IsIn(lead, 0x81, 0xFE)) return {1};
    if (source.Left() < 2) return kIncomplete;
    const unsigned char trail = source.at[1];
    if (!IsIn(trail, 0x41, 0xFE)) return TwoBytes(0, trail);
    return TwoBytes(index[(lead - 0x81) * kEucKrTrails + trail - 0x41], trail);
}

std::size_t JisPointer(unsigned int row, unsigned int cell, unsigned int first) {
    return (row - first) * kJisCells + cell - first;
}

constexpr char32_t kHalfWidthKatakana = 0xFF61;

// https://encoding.spec.whatwg.org/#euc-jp-decoder
Decoded NextEucJp(const Bytes& source, const IndexView& index) {
    const unsigned int lead = source.at[0];
    if (lead != 0x8E && lead != 0x8F && !IsIn(lead, 0xA1, 0xFE)) return {1};
    if (source.Left() < 2) return kIncomplete;
    const unsigned char trail = source.at[1];
    if (lead == 0x8E && IsIn(trail, 0xA1, 0xDF)) return {2, kHalfWidthKatakana + trail - 0xA1};
    if (lead == 0x8E || !IsIn(trail, 0xA1, 0xFE)) return TwoBytes(0, trail);
    if (lead != 0x8F) return TwoBytes(index[JisPointer(lead, trail, 0xA1)], trail);

    if (source.Left() < 3) return kIncomplete;
    const unsigned char third = source.at[2];
    const char32_t point = IsIn(third, 0xA1, 0xFE) ? Jis0212Index()[JisPointer(trail, third, 0xA1)] : 0;
    if (point != 0) return {3, point};
    return {third < 0x80 ? std::size_t{2} : std::size_t{3}};
}

// https://encoding.spec.whatwg.org/#shift_jis-decoder
Decoded NextShiftJis(const Bytes& source, const IndexView& index) {
    constexpr std::size_t kFirstOfUser = 8836;
    constexpr std::size_t kLastOfUser = 10715;
    const unsigned int lead = source.at[0];
    if (lead == 0x80) return {1, 0x80};
    if (IsIn(lead, 0xA1, 0xDF)) return {1, kHalfWidthKatakana + lead - 0xA1};
    if (lead == 0xA0 || lead > 0xFC) return {1};
    if (source.Left() < 2) return kIncomplete;
    const unsigned char trail = source.at[1];
    if (!IsIn(trail, 0x40, 0x7E) && !IsIn(trail, 0x80, 0xFC)) return TwoBytes(0, trail);
    const std::size_t pointer =
        (lead - (lead < 0xA0 ? 0x81u : 0xC1u)) * kShiftJisTrails + trail - (trail < 0x7F ? 0x40u : 0x41u);
    if (pointer >= kFirstOfUser && pointer <= kLastOfUser) {
        return {2, static_cast<char32_t>(0xE000 + pointer - kFirstOfUser)};
    }
    return TwoBytes(index[pointer], trail);
}

// https://encoding.spec.whatwg.org/#iso-2022-jp-decoder. The state of the text is the standard's output
// state; its other states last no longer than a character or an escape sequence, which is looked at as a
// whole.
class Iso2022Jp {
public:
    explicit Iso2022Jp(ConversionState& state) : state_(state), index_(Jis0208Index()) {}

    void Decode(Bytes& source, UnitRoom& target, bool last) {
        while (source.at != source.end && target.at != target.end) {
            const Decoded decoded = *source.at == kEscape ? Escape(source, last) : Character(source);
            if (decoded.length == 0 && !last) return;
            if (decoded.point != kNothing) *target.at++ = static_cast<char16_t>(decoded.point);
            source.at = decoded.length == 0 ? source.end : source.at + decoded.length;
        }
    }

private:
    enum Mode : unsigned int { kAscii, kRoman, kKatakana, kTwoBytes };
    static constexpr unsigned int kModeBits = 3;
    static constexpr unsigned int kJustEscaped = 4;  // the standard's output flag
    static constexpr unsigned char kEscape = 0x1B;
    static constexpr char32_t kNothing = 0xFFFFFFFF;

    Decoded Escape(const Bytes& source, bool last) {
        const bool sawLead = source.Left() >= 2;
        const bool begins = !sawLead || source.at[1] == '$' || source.at[1] == '(';
        if (begins && source.Left() < 3) return last ? Broken() : kIncomplete;
        unsigned int mode = kModeBits + 1;
        if (begins && source.at[1] == '(') {
            if (source.at[2] == 'B') mode = kAscii;
            if (source.at[2] == 'J') mode = kRoman;
            if (source.at[2] == 'I') mode = kKatakana;
        } else if (begins && (source.at[2] == '@' || source.at[2] == 'B')) {
            mode = kTwoBytes;
        }
        if (mode > kModeBits) return Broken();
        const bool twice = (state_.decoder & kJustEscaped) != 0;
        state_.decoder = mode | kJustEscaped;
        return {3, twice ? kReplacementCharacter : kNothing};
    }

    // Of a broken escape sequence the escape alone is taken.
    Decoded Broken() {
        state_.decoder &= kModeBits;
        return {1};
    }

    Decoded Character(const Bytes& source) {
        const unsigned int byte = source.at[0];
        const unsigned int mode = state_.decoder & kModeBits;
        state_.decoder = mode;
        if (mode == kTwoBytes) return TwoByteCharacter(source);
        if (mode == kKatakana) {
            return IsIn(byte, 0x21, 0x5F) ? Decoded{1, kHalfWidthKatakana + byte - 0x21} : Decoded{1};
        }
        if (byte >= 0x80 || byte == 0x0E || byte == 0x0F) return {1};
        if (mode == kRoman && byte == 0x5C) return {1, 0xA5};
        if (mode == kRoman && byte == 0x7E) return {1, 0x203E};
        return {1, byte};
    }

    Decoded TwoByteCharacter(const Bytes& source) {
        if (!IsIn(source.at[0], 0x21, 0x7E)) return {1};
        if (source.Left() < 2) return kIncomplete;
        const unsigned int trail = source.at[1];
        if (trail == kEscape) return {1};
        const char32_t point = IsIn(trail, 0x21, 0x7E) ? index_[JisPointer(source.at[0], trail, 0x21)] : 0;
        return {2, point == 0 ? kReplacementCharacter : point};
    }

    ConversionState& state_;
    IndexView index_;
};

}  // namespace

void DecodeBig5(ConversionState&, Bytes& source, UnitRoom& target, bool last) {
    DecodeEach(source, target, last,
               [index = Big5Index()](const Bytes& rest) { return NextBig5(rest, index); });
}

void DecodeGb18030(ConversionState&, Bytes& source, UnitRoom& target, bool last) {
    DecodeEach(source, target, last,
               [index = Gb18030Index()](const Bytes& rest) { return NextGb18030(rest, index); });
}

void DecodeEucKr(ConversionState&, Bytes& source, UnitRoom& target, bool last) {
    DecodeEach(source, target, last,
               [index = EucKrIndex()](const Bytes& rest) { return NextEucKr(rest, index); });
}

void DecodeEucJp(ConversionState&, Bytes& source, UnitRoom& target, bool last) {
    DecodeEach(source, target, last,
               [index = Jis0208Index()](const Bytes& rest) { return NextEucJp(rest, index); });
}

void DecodeShiftJis(ConversionState&, Bytes& source, UnitRoom& target, bool last) {
    DecodeEach(source, target, last,
               [index = Jis0208Index()](const Bytes& rest) { return NextShiftJis(rest, index); });
}

void DecodeIso2022Jp(ConversionState& state, Bytes& source, UnitRoom& target, bool last) {
    Iso2022Jp(state).Decode(source, target, last);
}

// https://encoding.spec.whatwg.org/#replacement-decoder
void DecodeReplacement(ConversionState& state, Bytes& source, UnitRoom& target, bool) {
    if (source.at == source.end || target.at == target.end) return;
    if (state.decoder == 0) *target.at++ = kReplacementCharacter;
    state.decoder = 1;
    source.at = source.end;
}

}  // namespace ZOTCharset
