#include <zot/conv.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <iterator>
#include <utility>

#include "encoding_number.h"
#include "from_wide.h"
#include "multi_byte.h"
#include "native_block.h"
#include "single_byte_tables.h"
#include "to_utf8.h"
#include "to_wide.h"

namespace ZOTCharset {

namespace {

// A conversion over spans, as the function that Conv gives out.
template <auto kConversion>
void Fast(const void* source, unsigned int sourceSize, unsigned int& sourceUsed, void* target,
          unsigned int targetSize, unsigned int& targetUsed, bool last, bool strict) {
    Bytes from(static_cast<const unsigned char*>(source), sourceSize);
    ByteRoom to(static_cast<unsigned char*>(target), targetSize);
    kConversion(from, to, last, strict);
    sourceUsed = sourceSize - static_cast<unsigned int>(from.Left());
    targetUsed = targetSize - static_cast<unsigned int>(to.Left());
}

template <auto kConversion>
void Decode(ConversionState& state, const unsigned char* source, unsigned int sourceSize,
            unsigned int& sourceUsed, char16_t* target, unsigned int targetUnits, unsigned int& targetUsed,
            bool last) {
    Bytes from(source, sourceSize);
    UnitRoom to(target, targetUnits);
    if constexpr (requires { kConversion(state, from, to, last); }) {
        kConversion(state, from, to, last);
    } else {
        kConversion(from, to, last);
    }
    sourceUsed = sourceSize - static_cast<unsigned int>(from.Left());
    targetUsed = targetUnits - static_cast<unsigned int>(to.Left());
}

template <auto kConversion>
void Encode(ConversionState&, const char16_t* source, unsigned int sourceUnits, unsigned int& sourceUsed,
            unsigned char* target, unsigned int targetSize, unsigned int& targetUsed, bool last) {
    Units from(source, sourceUnits);
    ByteRoom to(target, targetSize);
    kConversion(from, to, last);
    sourceUsed = sourceUnits - static_cast<unsigned int>(from.Left());
    targetUsed = targetSize - static_cast<unsigned int>(to.Left());
}

// The functions of one encoding; null where there is none.
struct Functions {
    FastConversion toUtf8 = nullptr;
    MbToWcConversion decode = nullptr;
    WcToMbConversion encode = nullptr;
};

template <bool kHighFirst>
constexpr Functions Utf16Functions() {
    return {Fast<Utf16ToUtf8<NativeBlock, kHighFirst>>, Decode<Utf16ToWide<kHighFirst>>,
            Encode<WideToUtf16<kHighFirst>>};
}

constexpr Functions kUtf8 = {Fast<Utf8ToUtf8<NativeBlock>>, Decode<Utf8ToWide<NativeBlock>>,
                             Encode<WideToUtf8<NativeBlock>>};
constexpr Functions kUtf16Be = Utf16Functions<true>();
constexpr Functions kUtf16Le = Utf16Functions<false>();

template <std::size_t kTable>
void TableToUtf8(Bytes& source, ByteRoom& target, bool, bool strict) {
    SingleByteToUtf8<NativeBlock>(kSingleByteTables[kTable].upper, source, target, strict);
}
template <std::size_t kTable>
void TableToWide(Bytes& source, UnitRoom& target, bool) {
    SingleByteToWide<NativeBlock>(kSingleByteTables[kTable].upper, source, target);
}
template <std::size_t kTable>
void WideToTable(Units& source, ByteRoom& target, bool last) {
    WideToSingleByte(kSingleByteTables[kTable].upper, source, target, last);
}

template <std::size_t... kTables>
constexpr std::array<Functions, sizeof...(kTables)> TableFunctions(std::index_sequence<kTables...>) {
    return {
        Functions{Fast<TableToUtf8<kTables>>, Decode<TableToWide<kTables>>, Encode<WideToTable<kTables>>}...};
}
constexpr auto kSingleByte = TableFunctions(std::make_index_sequence<kSingleByteEncodings>());

Functions SingleByteFunctions(ZOT::CHARSET charset) {
    if (charset == ZOT::kCharsetIso8859_8I) charset = ZOT::kCharsetIso8859_8;
    const SingleByteTable* const found =
        std::ranges::find(kSingleByteTables, charset, &SingleByteTable::charset);
    return found == std::end(kSingleByteTables)
               ? Functions()
               : kSingleByte[static_cast<std::size_t>(found - kSingleByteTables)];
}

template <auto kConversion>
constexpr Functions DecodeOnly() {
    return {nullptr, Decode<kConversion>, nullptr};
}

Functions FunctionsOf(ZOT::CHARSET charset) {
    switch (const ZOT::CHARSET encoding = EncodingNumber(charset)) {
        case ZOT::kCharsetUtf8: return kUtf8;
        case ZOT::kCharsetUtf16Be: return kUtf16Be;
        case ZOT::kCharsetUtf16Le: return kUtf16Le;
        case ZOT::kCharsetBig5: return DecodeOnly<DecodeBig5>();
        case ZOT::kCharsetGbk:
        case ZOT::kCharsetGb18030: return DecodeOnly<DecodeGb18030>();
        case ZOT::kCharsetEucKr: return DecodeOnly<DecodeEucKr>();
        case ZOT::kCharsetEucJp: return DecodeOnly<DecodeEucJp>();
        case ZOT::kCharsetShiftJis: return DecodeOnly<DecodeShiftJis>();
        case ZOT::kCharsetIso2022Jp: return DecodeOnly<DecodeIso2022Jp>();
        case ZOT::kCharsetReplacement: return DecodeOnly<DecodeReplacement>();
        default: return SingleByteFunctions(encoding);
    }
}

}  // namespace

FastConversion Conv::FastConversionFunction(ZOT::CHARSET from, ZOT::CHARSET to) {
    return to == ZOT::kCharsetUtf8 ? FunctionsOf(from).toUtf8 : nullptr;
}

MbToWcConversion Conv::MbToWcConversionFunction(ZOT::CHARSET from) {
    return FunctionsOf(from).decode;
}

WcToMbConversion Conv::WcToMbConversionFunction(ZOT::CHARSET to) {
    return FunctionsOf(to).encode;
}

void ConversionClass::operator()(const void* source, unsigned int sourceSize, unsigned int& sourceUsed,
                                 void* target, unsigned int targetSize, unsigned int& targetUsed, bool last) {
    constexpr unsigned int kPieceUnits = 512;
    constexpr unsigned int kLongest = 8;  // bytes that one unit takes at most, shift sequences included
    sourceUsed = targetUsed = 0;
    if (decode_ == nullptr || encode_ == nullptr) return;
    const auto* const from = static_cast<const unsigned char*>(source);
    auto* const to = static_cast<unsigned char*>(target);
    char16_t piece[kPieceUnits];
    for (;;) {
        // Whatever is decoded finds room.
        const unsigned int room = std::min(kPieceUnits, (targetSize - targetUsed) / kLongest);
        unsigned int used = 0;
        unsigned int units = 0;
        decode_(state_, from + sourceUsed, sourceSize - sourceUsed, used, piece, room, units, last);
        sourceUsed += used;
        if (used == 0 && units == 0) return;
        unsigned int encoded = 0;
        unsigned int written = 0;
        encode_(state_, piece, units, encoded, to + targetUsed, targetSize - targetUsed, written,
                last && sourceUsed == sourceSize);
        targetUsed += written;
    }
}

}  // namespace ZOTCharset
