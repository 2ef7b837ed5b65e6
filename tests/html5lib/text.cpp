#include "text.h"

#include "utf8.h"

namespace html5lib {
namespace {

bool IsHighSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xD800;
}
bool IsLowSurrogate(char16_t unit) {
    return (unit & 0xFC00) == 0xDC00;
}

}  // namespace

std::string ToUtf8(std::u16string_view text) {
    std::string utf8;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t code = text[i];
        if (IsHighSurrogate(text[i]) && i + 1 < text.size() && IsLowSurrogate(text[i + 1])) {
            code = 0x10000 + ((code & 0x3FF) << 10 | (text[++i] & 0x3FFu));
        } else if (IsHighSurrogate(text[i]) || IsLowSurrogate(text[i])) {
            code = ZOTParser::kReplacementCharacter;
        }
        ZOTParser::AppendUtf8(code, utf8);
    }
    return utf8;
}

std::string Decoded(std::string_view source, ZOTParser::TextKind kind) {
    std::u16string text;
    ZOTParser::AppendDecodedText(source.data(), source.data() + source.size(), kind, text);
    return ToUtf8(text);
}

std::string DecodedName(std::string_view source) {
    std::string name = Decoded(source, ZOTParser::TextKind::kRaw);
    for (char& c : name) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c | 0x20);
    }
    return name;
}

std::string DecodedValue(std::string_view source) {
    std::string value;
    ZOTParser::AppendDecodedAttribute(source.data(), source.data() + source.size(), value);
    return value;
}

}  // namespace html5lib
