#pragma once

#include <cstddef>
#include <zot/text.h>

namespace ZOT {

// How many units at the beginning of `text` cleaning leaves as they are: units that are neither white space
// nor show nothing, and blanks in front of such a unit. Reads the `size` units at `text` and nothing else.
std::size_t StandingRun(const char16_t* text, std::size_t size) noexcept;

// The same, one unit at a time.
std::size_t StandingRunPlain(const char16_t* text, std::size_t size) noexcept;

}  // namespace ZOT
