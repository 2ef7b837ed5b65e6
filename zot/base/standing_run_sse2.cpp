// Sixteen units at a time, as two bit masks: the blanks, and all other units that do not stand for
// themselves. The run ends at one of the latter, or at a blank that has one of either behind it.
//
//   units     a r e   t w o     b l a n k s .
//   blanks    . . . 1 . . . 1 1 . . . . . . .
//   ends      . . . . . . . 1 . . . . . . . .

#include <emmintrin.h>

#include <algorithm>
#include <bit>
#include <cstring>

#include "standing_run.h"

namespace ZOT {

namespace {

constexpr std::size_t kBlock = 16;

__m128i Load(const char16_t* units) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(units));
}

__m128i Equal(__m128i units, int value) {
    return _mm_cmpeq_epi16(units, _mm_set1_epi16(static_cast<short>(value)));
}

// Units from `first` to `last`.
__m128i Between(__m128i units, int first, int last) {
    const __m128i fromFirst = _mm_sub_epi16(units, _mm_set1_epi16(static_cast<short>(first)));
    return _mm_cmpeq_epi16(_mm_subs_epu16(fromFirst, _mm_set1_epi16(static_cast<short>(last - first))),
                           _mm_setzero_si128());
}

unsigned int Mask(__m128i low, __m128i high) {
    return static_cast<unsigned int>(_mm_movemask_epi8(_mm_packs_epi16(low, high)));
}

// White space other than the blank, and what shows nothing.
__m128i ChangedOrDropped(__m128i units) {
    const __m128i latin =
        _mm_or_si128(_mm_or_si128(Between(units, 0x00, 0x1F), Equal(units, 0x7F)),
                     _mm_or_si128(_mm_or_si128(Equal(units, 0x85), Equal(units, 0xA0)), Equal(units, 0xAD)));
    const __m128i punctuation =
        _mm_or_si128(_mm_or_si128(Between(units, 0x2000, 0x200B), Between(units, 0x2028, 0x2029)),
                     _mm_or_si128(Equal(units, 0x202F), Equal(units, 0x205F)));
    const __m128i others =
        _mm_or_si128(_mm_or_si128(Equal(units, 0x1680), Equal(units, 0x3000)), Equal(units, 0xFEFF));
    return _mm_or_si128(latin, _mm_or_si128(punctuation, others));
}

struct Block {
    unsigned int ends;       // where a run cannot go on; the last unit's bit only when that is no blank
    unsigned int lastBlank;  // 1 when the last unit is a blank, whose successor is not in the block
};

Block Look(const char16_t* text) {
    const __m128i low = Load(text);
    const __m128i high = Load(text + kBlock / 2);
    const unsigned int blanks = Mask(Equal(low, ' '), Equal(high, ' '));
    // Most blocks are printable ASCII and need no closer look.
    const unsigned int ascii = Mask(Between(low, 0x20, 0x7E), Between(high, 0x20, 0x7E));
    const unsigned int others = ascii == 0xFFFF ? 0 : Mask(ChangedOrDropped(low), ChangedOrDropped(high));
    return {others | (blanks & ((blanks | others) >> 1)), blanks >> (kBlock - 1)};
}

// Fewer units than a block, with blanks behind them, which end the run.
Block LookAtShort(const char16_t* text, std::size_t size) {
    char16_t block[kBlock];
    __m128i* const halves = reinterpret_cast<__m128i*>(block);
    _mm_storeu_si128(halves, _mm_set1_epi16(' '));
    _mm_storeu_si128(halves + 1, _mm_set1_epi16(' '));
    std::memcpy(block, text, size * sizeof(char16_t));
    return Look(block);
}

std::size_t FirstEnd(unsigned int ends) {
    return static_cast<std::size_t>(std::countr_zero(ends));
}

}  // namespace

std::size_t StandingRun(const char16_t* text, std::size_t size) noexcept {
    std::size_t run = 0;
    while (size - run >= kBlock) {
        const Block block = Look(text + run);
        if (block.ends != 0) return run + FirstEnd(block.ends);
        run += kBlock - block.lastBlank;
    }
    const std::size_t rest = size - run;
    if (rest == 0) return run;
    if (size < kBlock) return std::min(rest, FirstEnd(LookAtShort(text, size).ends));
    // The last block of the text, without what was seen before. A blank at the very end ends the run.
    const Block block = Look(text + size - kBlock);
    const unsigned int ends = (block.ends | block.lastBlank << (kBlock - 1)) >> (kBlock - rest);
    return run + std::min(rest, FirstEnd(ends));
}

}  // namespace ZOT
