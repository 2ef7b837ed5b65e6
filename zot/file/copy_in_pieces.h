#pragma once

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace ZOTFile {

constexpr std::size_t kPiece = 4096;  // bytes

// memcpy, but never more than a piece at a time: the C library hands larger ones to the processor's string
// instruction, whose speed depends on the processor, instead of its vector loop.
inline void CopyInPieces(void* to, const void* from, std::size_t count) {
    auto* target = static_cast<unsigned char*>(to);
    const auto* source = static_cast<const unsigned char*>(from);
    while (count != 0) {
        const std::size_t now = std::min(count, kPiece);
        std::memcpy(target, source, now);
        target += now;
        source += now;
        count -= now;
    }
}

}  // namespace ZOTFile
