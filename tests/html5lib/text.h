#pragma once

#include <string>
#include <string_view>

#include "text_decoder.h"

namespace html5lib {

// UTF-8 of UTF-16; lone surrogates, which no page holds, become U+FFFD.
std::string ToUtf8(std::u16string_view text);

// The characters of a piece of the source.
std::string Decoded(std::string_view source, ZOTParser::TextKind kind);

// A name as the tokenizer emits it: NUL as U+FFFD, ASCII letters in lower case.
std::string DecodedName(std::string_view source);

// The value of an attribute.
std::string DecodedValue(std::string_view source);

}  // namespace html5lib
