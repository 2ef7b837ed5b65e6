#pragma once

#include <bit>
#include <cstddef>
#include <emmintrin.h>

namespace ZOTCharset {

// PlainBlock on 128-bit vectors.
struct Sse2Block {
    static constexpr std::size_t kWidth = 16;

    static std::size_t Count(const unsigned char* source) { return LeadingAscii(Load(source)); }

    static std::size_t Copy(const unsigned char* source, unsigned char* target) {
        const __m128i bytes = Load(source);
        Store(target, bytes);
        return LeadingAscii(bytes);
    }

    static std::size_t Widen(const unsigned char* source, char16_t* target) {
        const __m128i bytes = Load(source);
        const __m128i zero = _mm_setzero_si128();
        Store(target, _mm_unpacklo_epi8(bytes, zero));
        Store(target + kWidth / 2, _mm_unpackhi_epi8(bytes, zero));
        return LeadingAscii(bytes);
    }

    template <bool kHighFirst>
    static std::size_t Narrow(const unsigned char* source, unsigned char* target) {
        const __m128i first = Units<kHighFirst>(Load(source));
        const __m128i second = Units<kHighFirst>(Load(source + kWidth));
        const __m128i bytes = _mm_packus_epi16(first, second);
        Store(target, bytes);
        const __m128i ascii = _mm_set1_epi16(0x7F);
        // Saturating subtraction leaves 0 for units up to 0x7F alone.
        const __m128i over = _mm_packs_epi16(_mm_subs_epu16(first, ascii), _mm_subs_epu16(second, ascii));
        const auto plain =
            static_cast<unsigned int>(_mm_movemask_epi8(_mm_cmpeq_epi8(over, _mm_setzero_si128())));
        return static_cast<std::size_t>(std::countr_one(plain));
    }

private:
    static __m128i Load(const unsigned char* source) {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(source));
    }
    static void Store(void* target, __m128i value) { _mm_storeu_si128(static_cast<__m128i*>(target), value); }

    static std::size_t LeadingAscii(__m128i bytes) {
        const auto high =
            static_cast<unsigned int>(_mm_movemask_epi8(bytes));  // bit i: byte i is 0x80 or more
        return high == 0 ? kWidth : static_cast<std::size_t>(std::countr_zero(high));
    }

    template <bool kHighFirst>
    static __m128i Units(__m128i units) {
        return kHighFirst ? _mm_or_si128(_mm_slli_epi16(units, 8), _mm_srli_epi16(units, 8)) : units;
    }
};

using NativeBlock = Sse2Block;

}  // namespace ZOTCharset
