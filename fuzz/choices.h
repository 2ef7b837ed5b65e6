#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>

// Makes of each byte of an input one choice; the first one of a bound is made when none is left.
class Choices {
public:
    Choices(const std::uint8_t* data, std::size_t size) : next_(data), end_(data + size) {}

    // From 0 to `bound` - 1.
    unsigned int operator()(unsigned int bound) { return next_ == end_ ? 0 : *next_++ % bound; }

    // A byte says how many bytes follow.
    std::string Bytes() {
        const std::size_t size = operator()(256);
        const std::size_t taken = std::min(size, static_cast<std::size_t>(end_ - next_));
        const std::string bytes(reinterpret_cast<const char*>(next_), taken);
        next_ += taken;
        return bytes;
    }
    // The same as text: each unit a unit, high ones somewhere behind ASCII.
    std::u16string Text() {
        std::u16string text;
        for (const char c : Bytes()) {
            const auto unit = static_cast<unsigned char>(c);
            text += static_cast<char16_t>(unit < 0x80 ? unit : unit * 0x101);
        }
        return text;
    }

private:
    const std::uint8_t* next_;
    const std::uint8_t* end_;
};
