#pragma once

#include <emmintrin.h>

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace ZOTParser {

// Sixteen bytes in an SSE2 register, which every x86-64 has; see byte_vector_plain.h for what the operations
// mean.
class ByteVectorSse2 {
public:
    static constexpr std::size_t kSize = 16;

    static ByteVectorSse2 Load(const char* at) noexcept {
        return _mm_loadu_si128(reinterpret_cast<const __m128i*>(at));
    }

    // Two reads from both ends, which may overlap, instead of a loop.
    static ByteVectorSse2 LoadPart(const char* at, std::size_t count) noexcept {
        if (count > 8) {
            // The last eight bytes, shifted until those that the first eight hold already are gone.
            const std::uint64_t high = Read<std::uint64_t>(at + count - 8) >> (8 * (16 - count));
            return _mm_set_epi64x(static_cast<long long>(high),
                                  static_cast<long long>(Read<std::uint64_t>(at)));
        }
        return _mm_cvtsi64_si128(static_cast<long long>(LowPart(at, count)));
    }

    ByteVectorSse2 Equal(char c) const noexcept { return _mm_cmpeq_epi8(v_, _mm_set1_epi8(c)); }

    ByteVectorSse2 AtMost(char c) const noexcept {
        return _mm_cmpeq_epi8(_mm_min_epu8(v_, _mm_set1_epi8(c)), v_);
    }

    friend ByteVectorSse2 operator|(ByteVectorSse2 a, ByteVectorSse2 b) noexcept {
        return _mm_or_si128(a.v_, b.v_);
    }

    unsigned Mask() const noexcept { return static_cast<unsigned>(_mm_movemask_epi8(v_)); }

    void Widen(char16_t* to) const noexcept {
        const __m128i zero = _mm_setzero_si128();
        Store(to, _mm_unpacklo_epi8(v_, zero));
        Store(to + 8, _mm_unpackhi_epi8(v_, zero));
    }

    unsigned DecodePairs(char16_t* to) const noexcept {
        // Each 16-bit lane is 10tttttt110lllll, low byte first; the unit is lllll tttttt.
        const __m128i lead = _mm_and_si128(v_, _mm_set1_epi16(0x001F));
        const __m128i trail = _mm_and_si128(_mm_srli_epi16(v_, 8), _mm_set1_epi16(0x003F));
        Store(to, _mm_or_si128(_mm_slli_epi16(lead, 6), trail));
        // 0xC0 and 0xC1 lead to what one byte could say.
        const __m128i marks = _mm_and_si128(v_, _mm_set1_epi16(static_cast<short>(0xC0E0)));
        const __m128i shaped = _mm_cmpeq_epi16(marks, _mm_set1_epi16(static_cast<short>(0x80C0)));
        const __m128i good = _mm_and_si128(shaped, _mm_cmpgt_epi16(lead, _mm_set1_epi16(1)));
        return static_cast<unsigned>(std::countr_one(static_cast<unsigned>(_mm_movemask_epi8(good)))) / 2;
    }

private:
    ByteVectorSse2(__m128i v) noexcept : v_(v) {}

    template <typename T>
    static T Read(const char* at) noexcept {
        T value;
        std::memcpy(&value, at, sizeof value);
        return value;
    }

    // One to eight bytes.
    static std::uint64_t LowPart(const char* at, std::size_t count) noexcept {
        if (count >= 4) {
            const std::uint64_t high = Read<std::uint32_t>(at + count - 4);
            return Read<std::uint32_t>(at) | high << (8 * (count - 4));
        }
        // One to three bytes: first, middle and last cover them all.
        const std::uint64_t first = static_cast<unsigned char>(at[0]);
        const std::uint64_t middle = static_cast<unsigned char>(at[count / 2]);
        const std::uint64_t last = static_cast<unsigned char>(at[count - 1]);
        return first | middle << (8 * (count / 2)) | last << (8 * (count - 1));
    }

    static void Store(char16_t* to, __m128i units) noexcept {
        _mm_storeu_si128(reinterpret_cast<__m128i*>(to), units);
    }

    __m128i v_;
};

}  // namespace ZOTParser
