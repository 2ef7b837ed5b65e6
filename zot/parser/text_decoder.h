#pragma once

#include <cstddef>
#include <string>

namespace ZOTParser {

// How the tokenizer and the tree construction treat the characters of a text.
enum class TextKind : unsigned {
    kData,        // character references decoded, NUL dropped
    kReplaceNul,  // character references decoded, NUL gives U+FFFD: RCDATA and foreign content
    kRaw,         // no references, NUL gives U+FFFD: RAWTEXT, script, PLAINTEXT, CDATA sections
};

// Units that DecodeText may write behind the text.
constexpr std::size_t kDecodeSlack = 16;

// Writes the text that the source bytes [first, last) stand for to `units`, where a unit for each byte and
// kDecodeSlack more have room, and returns its end. The bytes are UTF-8; ill-formed ones give U+FFFD as the
// WHATWG Encoding Standard has it. CR LF and CR become LF, unless a character reference spells them out. A
// reference or a character that `last` cuts short is not completed from behind it.
char16_t* DecodeText(const char* first, const char* last, TextKind kind, char16_t* units) noexcept;

// Appends that text.
void AppendDecodedText(const char* first, const char* last, TextKind kind, std::u16string& out);

// Appends the value that the source bytes [first, last) of an attribute stand for, as UTF-8: character
// references decoded by the rules for attributes, NUL and ill-formed bytes replaced by U+FFFD, CR LF and CR
// by LF.
void AppendDecodedAttribute(const char* first, const char* last, std::string& out);

}  // namespace ZOTParser
