// Sixteen units at a time: narrowed to bytes, compared with the separators, and every byte that is a
// separator behind one that is not begins a run.
//
//   units        h e l l o ,   w o r l d . . . x
//   separators   . . . . . 1 1 . . . . . 1 1 1 .
//   behind one   . . . . . . 1 1 . . . . . 1 1 1
//   run begins   . . . . . 1 . . . . . . 1 . . .

#include <cstring>
#include <emmintrin.h>

#include "word_scan.h"

namespace QuillNS {
namespace {

constexpr std::size_t kBlock = 16;       // units
constexpr std::size_t kMaxBlocks = 255;  // a byte counts at most one run in each

// Sixteen units as bytes. Signed saturation keeps 0 to 0x7F and moves every other unit to 0x7F or above 0x7F,
// where no separator stands; no unit but U+0000 becomes 0.
__m128i LoadBlock(const char16_t* units) {
    return _mm_packs_epi16(_mm_loadu_si128(reinterpret_cast<const __m128i*>(units)),
                           _mm_loadu_si128(reinterpret_cast<const __m128i*>(units + kBlock / 2)));
}

__m128i Equal(__m128i bytes, char value) {
    return _mm_cmpeq_epi8(bytes, _mm_set1_epi8(value));
}
__m128i With(__m128i bytes, char bits) {
    return _mm_or_si128(bytes, _mm_set1_epi8(bits));
}

// 0xFF for each separator. Separators that differ in one or two bits are compared once, with these bits set:
//   0x20 blank  0x24 $  0x28 (  0x2C ,   | 0x0C = 0x2C
//   0x21 !      0x25 %                   | 0x04 = 0x25
//   0x2A *      0x2E .                   | 0x04 = 0x2E
__m128i Separators(__m128i bytes) {
    const __m128i with4 = With(bytes, 0x04);
    const __m128i groups =
        _mm_or_si128(_mm_or_si128(Equal(With(bytes, 0x0C), 0x2C), Equal(with4, 0x25)), Equal(with4, 0x2E));
    const __m128i controls = _mm_or_si128(Equal(bytes, '\t'), Equal(bytes, '\n'));
    const __m128i signs = _mm_or_si128(_mm_or_si128(Equal(bytes, ')'), Equal(bytes, '#')),
                                       _mm_or_si128(Equal(bytes, '?'), Equal(bytes, '|')));
    return _mm_or_si128(groups, _mm_or_si128(controls, signs));
}

unsigned int SumOfBytes(__m128i bytes) {
    const __m128i halves = _mm_sad_epu8(bytes, _mm_setzero_si128());
    return static_cast<unsigned int>(_mm_cvtsi128_si32(halves) + _mm_extract_epi16(halves, 4));
}

class RunCounter {
public:
    // False, and nothing counted, when the block holds a U+0000.
    bool Add(__m128i block) {
        if (_mm_movemask_epi8(Equal(block, 0)) != 0) return false;
        const __m128i separators = Separators(block);
        const __m128i behind = _mm_or_si128(_mm_slli_si128(separators, 1), _mm_srli_si128(last_, 15));
        starts_ = _mm_sub_epi8(starts_, _mm_andnot_si128(behind, separators));  // minus 0xFF adds one
        last_ = separators;
        return true;
    }

    // Moves the counts of the bytes into the sum, at the latest after kMaxBlocks blocks.
    void Flush() {
        runs_ += SumOfBytes(starts_);
        starts_ = _mm_setzero_si128();
    }

    bool BehindSeparator() const { return (_mm_movemask_epi8(last_) & 0x8000) != 0; }
    unsigned int Runs() const { return runs_; }

private:
    unsigned int runs_ = 0;
    __m128i starts_ = _mm_setzero_si128();
    __m128i last_ = _mm_setzero_si128();  // separators of the block before
};

}  // namespace

unsigned int CountSeparatorRuns(const char16_t* text, std::size_t size) noexcept {
    RunCounter counter;
    std::size_t blocks = 0;
    while (size >= kBlock && counter.Add(LoadBlock(text))) {
        text += kBlock;
        size -= kBlock;
        if (++blocks % kMaxBlocks == 0) counter.Flush();
    }
    if (size < kBlock && size != 0) {
        char16_t rest[kBlock];
        std::memset(rest, 'a', sizeof rest);  // word characters behind the end
        std::memcpy(rest, text, size * sizeof(char16_t));
        counter.Flush();
        if (counter.Add(LoadBlock(rest))) size = 0;
    }
    counter.Flush();
    return counter.Runs() + CountSeparatorRunsPlain(text, size, counter.BehindSeparator());
}

}  // namespace QuillNS
