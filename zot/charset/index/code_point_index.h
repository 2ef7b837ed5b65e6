#pragma once

#include <cstddef>

// The indexes of https://encoding.spec.whatwg.org/#indexes: code points by pointer. Each is filled at its
// first use, by one thread, and stays for good. They come from the platform's conversion library; where that
// differs from the standard they are mended.
namespace ZOTCharset {

struct IndexView {
    const char32_t* points;  // 0 for a pointer without a character
    std::size_t size;

    char32_t operator[](std::size_t pointer) const { return pointer < size ? points[pointer] : 0; }
};

constexpr std::size_t kBig5Trails = 157;
constexpr std::size_t kGbTrails = 190;
constexpr std::size_t kEucKrTrails = 190;
constexpr std::size_t kShiftJisTrails = 188;
constexpr std::size_t kJisCells = 94;

IndexView Big5Index();
IndexView Gb18030Index();
IndexView EucKrIndex();
IndexView Jis0208Index();
IndexView Jis0212Index();

// The code points of the basic plane that gb18030 writes with four bytes.
IndexView Gb18030Ranges();

}  // namespace ZOTCharset
