// Sixteen units at a time: narrowed to bytes, compared with the separators, and every byte that is a
// separator behind one that is not begins a run.
//
//   units        h e l l o ,   w o r l d . . . x
//   separators   . . . . . 1 1 . . . . . 1 1 1 .
//   behind one   . . . . . . 1 1 . . . . . 1 1 1
//   run begins   . . . . . 1 . . . . . . 1 . . .

#include <emmintrin.h>

#include <algorithm>
#include <cstring>

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

// 0xFF in the first `count` bytes.
__m128i FirstBytes(std::size_t count) {
    alignas(kBlock) static constexpr unsigned char kMasks[2 * kBlock] = {
        0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(kMasks + kBlock - count));
}

class RunCounter {
public:
    void Add(__m128i block) {
        const __m128i separators = Separators(block);
        Count(separators, _mm_srli_si128(last_, kBlock - 1));
        last_ = separators;
        smallest_ = _mm_min_epu8(smallest_, block);
    }

    // A last block of which the first `known` units, at least one, were counted with the block before.
    void AddRest(__m128i block, std::size_t known) {
        Count(Separators(block), FirstBytes(known));
        smallest_ = _mm_min_epu8(smallest_, block);
    }

    // Moves the counts of the bytes into the sum, at the latest after kMaxBlocks blocks.
    void Flush() {
        runs_ += SumOfBytes(begins_);
        begins_ = _mm_setzero_si128();
    }

    unsigned int Runs() const { return runs_; }
    bool SawNul() const { return _mm_movemask_epi8(Equal(smallest_, 0)) != 0; }

private:
    // Counts the separators that stand behind none, but for those that `excluded` marks.
    void Count(__m128i separators, __m128i excluded) {
        const __m128i behind = _mm_or_si128(_mm_slli_si128(separators, 1), excluded);
        begins_ = _mm_sub_epi8(begins_, _mm_andnot_si128(behind, separators));  // minus 0xFF adds one
    }

    unsigned int runs_ = 0;
    __m128i begins_ = _mm_setzero_si128();
    __m128i last_ = _mm_setzero_si128();  // separators of the block before
    __m128i smallest_ = _mm_set1_epi8(-1);
};

// Fewer units than a block, with word characters behind them.
__m128i LoadShort(const char16_t* units, std::size_t size) {
    char16_t block[kBlock];
    __m128i* const halves = reinterpret_cast<__m128i*>(block);
    _mm_storeu_si128(halves, _mm_set1_epi16('a'));
    _mm_storeu_si128(halves + 1, _mm_set1_epi16('a'));
    std::memcpy(block, units, size * sizeof(char16_t));
    return LoadBlock(block);
}

}  // namespace

unsigned int CountSeparatorRuns(const char16_t* text, std::size_t size) noexcept {
    RunCounter counter;
    std::size_t done = 0;
    while (size - done >= kBlock) {
        const std::size_t blocks = std::min((size - done) / kBlock, kMaxBlocks);
        for (const std::size_t end = done + blocks * kBlock; done != end; done += kBlock) {
            counter.Add(LoadBlock(text + done));
        }
        counter.Flush();
    }
    if (size < kBlock) {
        counter.Add(LoadShort(text, size));
    } else if (done != size) {
        counter.AddRest(LoadBlock(text + size - kBlock), kBlock - (size - done));
    }
    counter.Flush();
    // A text with a U+0000 is rare, and ends there.
    return counter.SawNul() ? CountSeparatorRunsPlain(text, size) : counter.Runs();
}

}  // namespace QuillNS
