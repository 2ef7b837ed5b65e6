#pragma once

#include <string>
#include <zot/text.h>

namespace QuillNS {

// Takes the white space off the end.
inline void TrimEnd(std::u16string& text) {
    std::size_t size = text.size();
    while (size > 0 && ZOT::IsWhiteSpace(text[size - 1])) --size;
    text.resize(size);
}

}  // namespace QuillNS
